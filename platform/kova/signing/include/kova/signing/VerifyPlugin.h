#pragma once

#include <kova/signing/SigningExport.h>
#include <string>
#include <string_view>

namespace KovaSigning {

// What the host's loader learns about a plug-in library before it loads it.
struct VerifyResult {
    enum class Status {
        Ok,              // stamped for this host's API version and signed by the SDK
        Unreadable,      // the file cannot be opened or read
        NotAPlugin,      // not an ELF shared object, or no well-formed KApiVersion stamp
        WrongApiVersion, // built against another API version
        Unsigned,        // the signature block is missing or was never filled in
        Tampered,        // the file differs from the one that was signed
        BadSignature,    // the block is malformed or was not signed with the SDK key
    };
    Status status = Status::Unreadable;
    std::string apiVersion; // the library's KApiVersion text, when it could be read
    std::string reason;     // short human text for any status but Ok, without the path
};

// Checks the plug-in library at `path` against the host's API version. The file is only read,
// never loaded, so nothing of a refused library runs. Checks in order: the file is readable, it is
// an ELF shared object exporting a well-formed KApiVersion, the version equals `hostApiVersion`,
// the signature block exists and is signed, the file's digest matches the one in the block (a
// block copied from another library fails here), and the block's signature verifies with the SDK
// public key.
KOVA_SIGNING_API VerifyResult verifyPlugin(const std::string& path,
                                           std::string_view hostApiVersion);

} // namespace KovaSigning
