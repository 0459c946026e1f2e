#include "ImageDigest.h"
#include "SdkKey.h"
#include "StampLookup.h"

#include <algorithm>
#include <kova/signing/VerifyPlugin.h>

namespace KovaSigning {

namespace {

using Status = VerifyResult::Status;

bool hasSignedLayout(const SignatureBlock& block) {
    return std::equal(kSignedMagic.begin(), kSignedMagic.end(), block.begin() + kMagicOffset) &&
           std::all_of(block.begin() + kReservedOffset, block.end(),
                       [](std::uint8_t byte) { return byte == 0; });
}

// Status of a stamp that is present and built for this host: is the block the SDK's signature
// of exactly this file?
Status checkSignature(const PluginFile& file, const PluginStamp& stamp, std::string* reason) {
    const SignatureBlock& block = stamp.signature;
    if (block == unsignedSignatureBlock()) {
        *reason = "the library was never signed";
        return Status::Unsigned;
    }
    if (!hasSignedLayout(block)) {
        *reason = "signature block is not in a known format";
        return Status::BadSignature;
    }
    if (!sodiumReady()) {
        *reason = "the signature checker cannot be initialised";
        return Status::BadSignature;
    }
    const auto image = file.readAll(reason);
    if (!image)
        return Status::Unreadable;
    const Digest digest = imageDigest(*image, stamp.signatureOffset);
    if (!std::equal(digest.begin(), digest.end(), block.begin() + kDigestOffset)) {
        *reason = "the library was modified after it was signed";
        return Status::Tampered;
    }
    const auto versionField =
        std::span(*image).subspan(stamp.versionOffset).first<kApiVersionFieldSize>();
    const auto signature = std::span(block).subspan(kSignatureOffset).first<kSignatureSize>();
    if (!verifyWithSdkKey(signedMessage(digest, versionField), signature)) {
        *reason = "signature was not issued for this SDK";
        return Status::BadSignature;
    }
    return Status::Ok;
}

} // namespace

VerifyResult verifyPlugin(const std::string& path, std::string_view hostApiVersion) {
    using Outcome = StampLookup::Outcome;
    const PluginFile file(path, PluginFile::Access::ReadOnly);
    const StampLookup lookup = lookupStamp(file);
    VerifyResult result;
    result.reason = lookup.error;
    switch (lookup.outcome) {
    case Outcome::Unreadable:
        result.status = Status::Unreadable;
        return result;
    case Outcome::NotAPlugin:
        result.status = Status::NotAPlugin;
        return result;
    case Outcome::SignatureMissing:
    case Outcome::SignatureMalformed:
    case Outcome::Found:
        break;
    }

    result.apiVersion = lookup.stamp.apiVersion;
    if (result.apiVersion != hostApiVersion) {
        result.status = Status::WrongApiVersion;
        result.reason = "built against API version " + result.apiVersion + ", this host has " +
                        std::string(hostApiVersion);
    } else if (lookup.outcome == Outcome::SignatureMissing) {
        result.status = Status::Unsigned;
        result.reason = "signature block is missing";
    } else if (lookup.outcome == Outcome::SignatureMalformed) {
        result.status = Status::NotAPlugin;
    } else {
        result.status = checkSignature(file, lookup.stamp, &result.reason);
    }
    return result;
}

} // namespace KovaSigning
