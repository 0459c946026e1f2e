#pragma once

#include <kova/signing/SigningExport.h>
#include <string>

namespace KovaSigning {

// Signs the stamped plug-in library at `path` in place with the SDK's development key: computes
// the signature block (see SignatureBlock.h) and writes it over NORV_PLUGIN_SIGNATURE. No other
// byte of the file changes. Signing is deterministic, so signing a signed library again leaves it
// as it is. Returns false and, if `error` is not null, sets it to "<path>: <what failed>" when the
// file cannot be read or written or carries no valid stamp; the file is then left unchanged.
KOVA_SIGNING_API bool signPlugin(const std::string& path, std::string* error);

} // namespace KovaSigning
