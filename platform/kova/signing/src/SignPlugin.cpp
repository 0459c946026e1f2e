#include "ImageDigest.h"
#include "SdkKey.h"
#include "StampLookup.h"

#include <algorithm>
#include <kova/signing/SignPlugin.h>

namespace KovaSigning {

bool signPlugin(const std::string& path, std::string* error) {
    auto fail = [&](const std::string& why) {
        if (error)
            *error = path + ": " + why;
        return false;
    };
    PluginFile file(path, PluginFile::Access::ReadWrite);
    const StampLookup lookup = lookupStamp(file);
    if (lookup.outcome != StampLookup::Outcome::Found)
        return fail(lookup.error);
    if (!sodiumReady())
        return fail("libsodium cannot be initialised");
    std::string why;
    const auto image = file.readAll(&why);
    if (!image)
        return fail(why);

    const PluginStamp& stamp = lookup.stamp;
    const Digest digest = imageDigest(*image, stamp.signatureOffset);
    const auto versionField =
        std::span(*image).subspan(stamp.versionOffset).first<kApiVersionFieldSize>();
    const SignedMessage message = signedMessage(digest, versionField);

    SignatureBlock block{};
    std::copy(kSignedMagic.begin(), kSignedMagic.end(), block.begin() + kMagicOffset);
    std::copy(digest.begin(), digest.end(), block.begin() + kDigestOffset);
    if (!signWithSdkKey(message,
                        std::span(block).subspan(kSignatureOffset).first<kSignatureSize>()))
        return fail("the signature cannot be computed");
    if (!file.write(stamp.signatureOffset, block, &why))
        return fail(why);
    return true;
}

} // namespace KovaSigning
