#include "ImageDigest.h"

#include <algorithm>
#include <sodium.h>

namespace KovaSigning {

bool sodiumReady() {
    static const bool ready = sodium_init() >= 0;
    return ready;
}

Digest imageDigest(std::span<const std::uint8_t> image, std::uint64_t blockOffset) {
    static constexpr SignatureBlock kZeros{};
    const auto blockEnd = blockOffset + kSignatureBlockSize;
    crypto_generichash_state state;
    Digest digest{};
    crypto_generichash_init(&state, nullptr, 0, digest.size());
    crypto_generichash_update(&state, image.data(), blockOffset);
    crypto_generichash_update(&state, kZeros.data(), kZeros.size());
    crypto_generichash_update(&state, image.data() + blockEnd, image.size() - blockEnd);
    crypto_generichash_final(&state, digest.data(), digest.size());
    return digest;
}

SignedMessage signedMessage(const Digest& digest,
                            std::span<const std::uint8_t, kApiVersionFieldSize> versionField) {
    SignedMessage message{};
    auto out = std::copy(kSignedMagic.begin(), kSignedMagic.end(), message.begin());
    out = std::copy(digest.begin(), digest.end(), out);
    std::copy(versionField.begin(), versionField.end(), out);
    return message;
}

} // namespace KovaSigning
