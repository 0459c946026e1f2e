#include <iostream>
#include <kova/KMessageSink.h>
#include <mutex>

namespace {

// Writes each message as one line on the standard error stream.
class StderrSink final : public KMessageSink {
public:
    void message(Severity severity, const KString& text) override {
        const char* prefix = severity == kError     ? "// Error: "
                             : severity == kWarning ? "// Warning: "
                                                    : "";
        std::lock_guard lock(mutex_);
        std::cerr << prefix << text.str() << '\n' << std::flush;
    }

private:
    std::mutex mutex_;
};

struct SinkSlot {
    std::mutex mutex;
    std::shared_ptr<KMessageSink> defaultSink = std::make_shared<StderrSink>();
    std::shared_ptr<KMessageSink> current = defaultSink;
};

// Never destroyed, so that messages reported during static destruction still have a sink.
SinkSlot& slot() {
    static SinkSlot* instance = new SinkSlot;
    return *instance;
}

} // namespace

std::shared_ptr<KMessageSink> KMessages::setSink(std::shared_ptr<KMessageSink> sink) {
    SinkSlot& s = slot();
    std::lock_guard lock(s.mutex);
    std::shared_ptr<KMessageSink> previous = std::move(s.current);
    s.current = sink ? std::move(sink) : s.defaultSink;
    return previous;
}

std::shared_ptr<KMessageSink> KMessages::sink() {
    SinkSlot& s = slot();
    std::lock_guard lock(s.mutex);
    return s.current;
}

void KMessages::report(KMessageSink::Severity severity, const KString& text) {
    // Called outside the lock so that a sink may itself report or swap sinks.
    sink()->message(severity, text);
}

void KMessages::error(const KString& text) {
    report(KMessageSink::kError, text);
}

void KMessages::warning(const KString& text) {
    report(KMessageSink::kWarning, text);
}

void KMessages::info(const KString& text) {
    report(KMessageSink::kInfo, text);
}
