#pragma once

#include "PluginFile.h"

#include <kova/signing/PluginStamp.h>
#include <string>

namespace KovaSigning {

// The stamp of an opened plug-in file, read in the order the loader judges it: first the version
// field, then the signature block. When the outcome is SignatureMissing or SignatureMalformed,
// `stamp.apiVersion` and `stamp.versionOffset` are already valid.
struct StampLookup {
    enum class Outcome { Found, Unreadable, NotAPlugin, SignatureMissing, SignatureMalformed };
    Outcome outcome = Outcome::Unreadable;
    std::string error; // what is wrong, without the path; empty when Found
    PluginStamp stamp;
};

StampLookup lookupStamp(const PluginFile& file);

} // namespace KovaSigning
