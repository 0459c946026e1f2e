#include "StampLookup.h"

#include <algorithm>
#include <array>

namespace KovaSigning {

namespace {

constexpr std::string_view kVersionSymbol = "KApiVersion";
constexpr std::string_view kSignatureSymbol = "NORV_PLUGIN_SIGNATURE";

StampLookup failed(StampLookup::Outcome outcome, std::string error,
                   PluginStamp stamp = PluginStamp{}) {
    return StampLookup{outcome, std::move(error), std::move(stamp)};
}

// Checks that a looked-up symbol is exported data of the expected size that the file holds;
// returns its file offset or sets `error`.
std::optional<std::uint64_t> locateField(const PluginFile& file, std::string_view name,
                                         const DynamicSymbol& symbol, std::uint64_t expectedSize,
                                         std::string* error) {
    const std::string label(name);
    if (!symbol.defined) {
        *error = label + " is imported, not defined by the library";
    } else if (!symbol.isObject) {
        *error = label + " is not a data object";
    } else if (symbol.size != expectedSize) {
        *error = label + " is " + std::to_string(symbol.size) + " bytes, expected " +
                 std::to_string(expectedSize);
    } else if (auto offset = file.fileOffset(symbol.address, symbol.size)) {
        return offset;
    } else {
        *error = label + " is not stored in the file's loadable data";
    }
    return std::nullopt;
}

} // namespace

StampLookup lookupStamp(const PluginFile& file) {
    using Outcome = StampLookup::Outcome;
    switch (file.state()) {
    case PluginFile::State::Unreadable:
        return failed(Outcome::Unreadable, file.error());
    case PluginFile::State::NotSharedObject:
        return failed(Outcome::NotAPlugin, file.error());
    case PluginFile::State::Open:
        break;
    }

    std::string error;
    const auto version = file.findDynamicSymbol(kVersionSymbol);
    if (!version)
        return failed(Outcome::NotAPlugin, "does not export KApiVersion");
    const auto versionOffset =
        locateField(file, kVersionSymbol, *version, kApiVersionFieldSize, &error);
    if (!versionOffset)
        return failed(Outcome::NotAPlugin, error);
    std::array<std::uint8_t, kApiVersionFieldSize> field{};
    if (!file.read(*versionOffset, field, &error))
        return failed(Outcome::Unreadable, error);
    const auto nul = std::find(field.begin(), field.end(), std::uint8_t{0});
    if (nul == field.end())
        return failed(Outcome::NotAPlugin, "KApiVersion is not NUL-terminated");

    PluginStamp stamp;
    stamp.apiVersion.assign(field.begin(), nul);
    stamp.versionOffset = *versionOffset;

    const auto signature = file.findDynamicSymbol(kSignatureSymbol);
    if (!signature)
        return failed(Outcome::SignatureMissing, "does not export NORV_PLUGIN_SIGNATURE",
                      std::move(stamp));
    const auto signatureOffset =
        locateField(file, kSignatureSymbol, *signature, kSignatureBlockSize, &error);
    if (!signatureOffset)
        return failed(Outcome::SignatureMalformed, error, std::move(stamp));
    if (signature->address != version->address + kApiVersionFieldSize ||
        *signatureOffset != *versionOffset + kApiVersionFieldSize)
        return failed(Outcome::SignatureMalformed,
                      "NORV_PLUGIN_SIGNATURE does not directly follow KApiVersion",
                      std::move(stamp));
    if (!file.read(*signatureOffset, stamp.signature, &error))
        return failed(Outcome::Unreadable, error, std::move(stamp));
    stamp.signatureOffset = *signatureOffset;
    return StampLookup{Outcome::Found, {}, std::move(stamp)};
}

std::optional<PluginStamp> readStamp(const std::string& path, std::string* error) {
    const PluginFile file(path, PluginFile::Access::ReadOnly);
    StampLookup lookup = lookupStamp(file);
    if (lookup.outcome == StampLookup::Outcome::Found)
        return std::move(lookup.stamp);
    if (error)
        *error = path + ": " + lookup.error;
    return std::nullopt;
}

} // namespace KovaSigning
