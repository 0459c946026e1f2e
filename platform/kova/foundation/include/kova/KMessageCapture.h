#pragma once

#include <kova/KExport.h>
#include <kova/KMessageSink.h>
#include <kova/KString.h>
#include <memory>
#include <vector>

// Records every message reported while it is alive (for tests), instead of showing it, and
// puts the previous sink back when destroyed. Captures nest: an inner capture restores the
// outer one. Recording is thread-safe.
class KOVA_API KMessageCapture {
public:
    struct Entry {
        KMessageSink::Severity severity;
        KString text;
        bool operator==(const Entry&) const = default;
    };

    KMessageCapture();
    ~KMessageCapture();
    KMessageCapture(const KMessageCapture&) = delete;
    KMessageCapture& operator=(const KMessageCapture&) = delete;

    // Everything recorded so far, in reporting order.
    std::vector<Entry> entries() const;
    // The texts of one severity, in reporting order.
    std::vector<KString> texts(KMessageSink::Severity severity) const;
    std::vector<KString> errors() const { return texts(KMessageSink::kError); }
    std::vector<KString> warnings() const { return texts(KMessageSink::kWarning); }
    std::size_t size() const;
    void clear();

private:
    class Recorder;
    std::shared_ptr<Recorder> recorder_;
    std::shared_ptr<KMessageSink> previous_;
};
