#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <kova/KPluginStamp.h>
#include <string_view>

// Layout of the 128-byte NORV_PLUGIN_SIGNATURE block.
//
// A signed block is
//   [  0,   8)  magic "NORVSIG\x01"
//   [  8,  40)  BLAKE2b-256 digest of the whole library file, with these 128 bytes read as zeros
//   [ 40, 104)  Ed25519 signature by the SDK key over magic || digest || the 16-byte KApiVersion
//               field as stored in the file
//   [104, 128)  reserved, zero
// An unsigned block is "UNSIGNED" repeated 16 times, as KOVA_PLUGIN_STAMP() writes it.
namespace KovaSigning {

inline constexpr std::size_t kApiVersionFieldSize = KOVA_API_VERSION_FIELD_SIZE;
inline constexpr std::size_t kSignatureBlockSize = KOVA_PLUGIN_SIGNATURE_SIZE;

inline constexpr std::size_t kMagicOffset = 0;
inline constexpr std::size_t kMagicSize = 8;
inline constexpr std::size_t kDigestOffset = kMagicOffset + kMagicSize;
inline constexpr std::size_t kDigestSize = 32;
inline constexpr std::size_t kSignatureOffset = kDigestOffset + kDigestSize;
inline constexpr std::size_t kSignatureSize = 64;
inline constexpr std::size_t kReservedOffset = kSignatureOffset + kSignatureSize;
static_assert(kReservedOffset <= kSignatureBlockSize);

inline constexpr std::array<std::uint8_t, kMagicSize> kSignedMagic = {'N', 'O', 'R', 'V',
                                                                      'S', 'I', 'G', 0x01};

using SignatureBlock = std::array<std::uint8_t, kSignatureBlockSize>;

// The block of a stamped library that was never signed.
constexpr SignatureBlock unsignedSignatureBlock() {
    constexpr std::string_view word = KOVA_PLUGIN_UNSIGNED_WORD;
    static_assert(kSignatureBlockSize % word.size() == 0);
    SignatureBlock block{};
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = static_cast<std::uint8_t>(word[i % word.size()]);
    return block;
}

} // namespace KovaSigning
