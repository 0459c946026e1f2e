#include <kova/KMessageSink.h>
#include <kova/KStatus.h>
#include <kova/KString.h>

namespace {

const char* standardText(KStatus::KStatusCode code) {
    switch (code) {
    case KStatus::kSuccess:
        return "Success";
    case KStatus::kFailure:
        return "Failure";
    case KStatus::kInsufficientMemory:
        return "Insufficient memory";
    case KStatus::kInvalidParameter:
        return "Invalid parameter";
    case KStatus::kLicenseFailure:
        return "License failure";
    case KStatus::kUnknownParameter:
        return "Unknown parameter";
    case KStatus::kNotImplemented:
        return "Not implemented";
    case KStatus::kNotFound:
        return "Not found";
    case KStatus::kEndOfFile:
        return "End of file";
    }
    return "Unknown status";
}

} // namespace

KStatus::KStatus(KStatusCode code) : code_(code) {}

KStatus::KStatus(KStatusCode code, const KString& description)
    : code_(code), description_(description.str()) {}

KString KStatus::errorString() const {
    return description_.empty() ? KString(standardText(code_)) : KString(description_);
}

void KStatus::perror(const KString& prefix) const {
    KMessages::error(prefix + ": " + errorString());
}

void KStatus::clear() {
    code_ = kSuccess;
    description_.clear();
}
