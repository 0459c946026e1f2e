#pragma once

#include <kova/KExport.h>
#include <string>

class KString;

// Result of a host call: a success flag plus an error code and an optional description.
// Converts to true on success, so `if (!status)` reads as "if it failed".
class KOVA_API KStatus {
public:
    enum KStatusCode {
        kSuccess = 0,
        kFailure = 1,
        kInsufficientMemory = 2,
        kInvalidParameter = 3,
        kLicenseFailure = 4,
        kUnknownParameter = 5,
        kNotImplemented = 6,
        kNotFound = 7,
        kEndOfFile = 8,
    };

    KStatus() = default;
    KStatus(KStatusCode code);
    KStatus(KStatusCode code, const KString& description);

    bool error() const { return code_ != kSuccess; }
    explicit operator bool() const { return code_ == kSuccess; }
    KStatusCode statusCode() const { return code_; }
    bool operator==(KStatusCode code) const { return code_ == code; }
    bool operator!=(KStatusCode code) const { return code_ != code; }

    // The description given at construction, or the standard text of the code.
    KString errorString() const;
    // Reports "<prefix>: <errorString>" as an error through the host's message sink.
    void perror(const KString& prefix) const;
    void clear();

private:
    KStatusCode code_ = kSuccess;
    std::string description_; // empty when the code's standard text applies
};
