#pragma once

#include <array>
#include <cstdint>
#include <kova/signing/SignatureBlock.h>
#include <span>

namespace KovaSigning {

using Digest = std::array<std::uint8_t, kDigestSize>;
using SignedMessage = std::array<std::uint8_t, kMagicSize + kDigestSize + kApiVersionFieldSize>;

// Initialises libsodium once per process; false if it cannot be used.
bool sodiumReady();

// BLAKE2b-256 of a whole library file with its signature block, which must lie inside the image,
// read as zeros: the digest does not depend on the block, so signing does not change it.
Digest imageDigest(std::span<const std::uint8_t> image, std::uint64_t blockOffset);

// The bytes the SDK key signs: magic || digest || the 16-byte KApiVersion field.
SignedMessage signedMessage(const Digest& digest,
                            std::span<const std::uint8_t, kApiVersionFieldSize> versionField);

} // namespace KovaSigning
