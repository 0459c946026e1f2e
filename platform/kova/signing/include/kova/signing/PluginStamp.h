#pragma once

#include <cstdint>
#include <kova/signing/SignatureBlock.h>
#include <kova/signing/SigningExport.h>
#include <optional>
#include <string>

namespace KovaSigning {

// The stamp of a plug-in library as found in its file.
struct PluginStamp {
    std::string apiVersion;            // KApiVersion up to its NUL
    SignatureBlock signature{};        // the NORV_PLUGIN_SIGNATURE bytes
    std::uint64_t versionOffset = 0;   // file offset of KApiVersion
    std::uint64_t signatureOffset = 0; // file offset of NORV_PLUGIN_SIGNATURE (versionOffset + 16)
};

// Reads the stamp of the ELF shared object at `path` without loading it: both symbols are looked
// up in the dynamic symbol table (what `nm -D` lists) and mapped to file offsets through the
// loadable segments. The stamp is returned only if KApiVersion is a 16-byte, NUL-terminated field
// and NORV_PLUGIN_SIGNATURE is a 128-byte block directly after it. Otherwise returns nothing and,
// if `error` is not null, sets it to "<path>: <what is wrong>".
KOVA_SIGNING_API std::optional<PluginStamp> readStamp(const std::string& path, std::string* error);

} // namespace KovaSigning
