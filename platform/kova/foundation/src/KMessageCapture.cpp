#include <kova/KMessageCapture.h>
#include <mutex>

class KMessageCapture::Recorder final : public KMessageSink {
public:
    void message(Severity severity, const KString& text) override {
        std::lock_guard lock(mutex);
        entries.push_back({severity, text});
    }

    mutable std::mutex mutex;
    std::vector<Entry> entries;
};

KMessageCapture::KMessageCapture()
    : recorder_(std::make_shared<Recorder>()), previous_(KMessages::setSink(recorder_)) {}

KMessageCapture::~KMessageCapture() {
    KMessages::setSink(previous_);
}

std::vector<KMessageCapture::Entry> KMessageCapture::entries() const {
    std::lock_guard lock(recorder_->mutex);
    return recorder_->entries;
}

std::vector<KString> KMessageCapture::texts(KMessageSink::Severity severity) const {
    std::lock_guard lock(recorder_->mutex);
    std::vector<KString> result;
    for (const Entry& entry : recorder_->entries) {
        if (entry.severity == severity) {
            result.push_back(entry.text);
        }
    }
    return result;
}

std::size_t KMessageCapture::size() const {
    std::lock_guard lock(recorder_->mutex);
    return recorder_->entries.size();
}

void KMessageCapture::clear() {
    std::lock_guard lock(recorder_->mutex);
    recorder_->entries.clear();
}
