#include "ImageDigest.h"
#include "SdkKey.h"

#include <sodium.h>
#include <string_view>

namespace KovaSigning {

namespace {

// The development SDK's key pair is derived from this published 32-byte seed, so every build of
// the SDK signs identically. A release SDK would keep its seed out of the sources.
constexpr std::string_view kDevelopmentSeed = "Norvatek Kova SDK dev seed 2025!";
static_assert(kDevelopmentSeed.size() == crypto_sign_SEEDBYTES);
static_assert(kSignatureSize == crypto_sign_BYTES);

} // namespace

bool signWithSdkKey(std::span<const std::uint8_t> message,
                    std::span<std::uint8_t, kSignatureSize> signature) {
    if (!sodiumReady())
        return false;
    unsigned char publicKey[crypto_sign_PUBLICKEYBYTES];
    unsigned char secretKey[crypto_sign_SECRETKEYBYTES];
    const auto* seed = reinterpret_cast<const unsigned char*>(kDevelopmentSeed.data());
    const bool signedOk = crypto_sign_seed_keypair(publicKey, secretKey, seed) == 0 &&
                          crypto_sign_detached(signature.data(), nullptr, message.data(),
                                               message.size(), secretKey) == 0;
    sodium_memzero(secretKey, sizeof secretKey);
    return signedOk;
}

} // namespace KovaSigning
