#pragma once

#include <kova/KExport.h>
#include <kova/KString.h>
#include <memory>

// Where the host's messages to the user go. One sink is installed per process; it is called
// from whichever thread reports, so implementations must be thread-safe.
class KOVA_API KMessageSink {
public:
    enum Severity { kError, kWarning, kInfo };

    virtual ~KMessageSink() = default;
    virtual void message(Severity severity, const KString& text) = 0;
};

// The process-wide message channel. The default sink writes one line per message to the
// standard error stream: "// Error: text", "// Warning: text", or the plain text for info.
// All functions are thread-safe; the sink is called outside any lock, so a sink may report or
// swap sinks itself.
class KOVA_API KMessages {
public:
    // Installs `sink` (null restores the default) and returns the sink it replaces.
    static std::shared_ptr<KMessageSink> setSink(std::shared_ptr<KMessageSink> sink);
    static std::shared_ptr<KMessageSink> sink();

    static void error(const KString& text);
    static void warning(const KString& text);
    static void info(const KString& text);
    static void report(KMessageSink::Severity severity, const KString& text);
};
