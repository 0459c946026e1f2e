#pragma once

#include <cstdint>
#include <kova/signing/SignatureBlock.h>
#include <span>

namespace KovaSigning {

// Ed25519 signature of `message` with the SDK's development secret key (SdkSigningKey.cpp).
bool signWithSdkKey(std::span<const std::uint8_t> message,
                    std::span<std::uint8_t, kSignatureSize> signature);

// Whether `signature` is the SDK key's signature of `message`; needs only the public key
// (SdkPublicKey.cpp), which is all the loader side holds.
bool verifyWithSdkKey(std::span<const std::uint8_t> message,
                      std::span<const std::uint8_t, kSignatureSize> signature);

} // namespace KovaSigning
