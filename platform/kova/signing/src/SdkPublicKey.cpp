#include "ImageDigest.h"
#include "SdkKey.h"

#include <array>
#include <sodium.h>

namespace KovaSigning {

namespace {

// Public half of the development SDK key (crypto_sign_seed_keypair of the seed in
// SdkSigningKey.cpp).
constexpr std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> kSdkPublicKey = {
    0xb1, 0xfb, 0xb1, 0x96, 0x05, 0xed, 0xe3, 0x6b, 0x48, 0xe3, 0x21, 0xe1, 0x35, 0x66, 0xb2, 0x3d,
    0xd6, 0xce, 0xd1, 0x4a, 0x6f, 0x41, 0xc3, 0x66, 0xa7, 0x58, 0x64, 0x11, 0xfd, 0x96, 0x8b, 0x1f,
};

} // namespace

bool verifyWithSdkKey(std::span<const std::uint8_t> message,
                      std::span<const std::uint8_t, kSignatureSize> signature) {
    return sodiumReady() && crypto_sign_verify_detached(signature.data(), message.data(),
                                                        message.size(), kSdkPublicKey.data()) == 0;
}

} // namespace KovaSigning
