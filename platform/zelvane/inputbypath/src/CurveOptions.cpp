#include "OptionFields.h"

#include <array>
#include <zelvane/inputbypath/CurveOptions.h>
#include <zelvane/inputbypath/OptionKeys.h>

namespace ZelvaneBoardInputByPath {

namespace {

// Names by enumeration value.
constexpr std::array<std::string_view, 3> kSamplingNames{"cvs", "byCVCount", "bySegmentLength"};
constexpr std::array<std::string_view, 2> kTagTransferNames{"nearestCV", "bothNeighbours"};

template <std::size_t N, class Enum>
Orsel::String nameOf(const std::array<std::string_view, N>& names, Enum value) {
    return Orsel::String(names[static_cast<std::size_t>(value)]);
}

} // namespace

CurveOptions::CurveOptions() = default;
CurveOptions::CurveOptions(const CurveOptions& other) = default;
CurveOptions& CurveOptions::operator=(const CurveOptions& other) = default;
CurveOptions::~CurveOptions() = default;

bool CurveOptions::parseAttributes(const Orsel::MetadataItem& options) {
    bool ok = Options::parseAttributes(options);
    ok &= detail::readExpression(options, Keys::kComponentTags, componentTags);
    ok &= detail::readBool(options, Keys::kComputeTangents, computeTangents);
    ok &= detail::readBool(options, Keys::kAddLengths, addLengths);
    ok &= detail::readEnum(options, Keys::kSampling, kSamplingNames, sampling);
    ok &= detail::readFloat(options, Keys::kSampleRate, sampleRate);
    ok &= detail::readBool(options, Keys::kUniformByLength, uniformByLength);
    ok &= detail::readFloat(options, Keys::kSegmentLength, segmentLength);
    ok &= detail::readBool(options, Keys::kEvenSegments, evenSegments);
    ok &= detail::readEnum(options, Keys::kTagTransfer, kTagTransferNames, tagTransfer);
    return ok;
}

void CurveOptions::storeAttributes(Orsel::MetadataItem& options) const {
    Options::storeAttributes(options);
    detail::writeText(options, Keys::kComponentTags, componentTags);
    detail::writeBool(options, Keys::kComputeTangents, computeTangents);
    detail::writeBool(options, Keys::kAddLengths, addLengths);
    detail::writeText(options, Keys::kSampling, nameOf(kSamplingNames, sampling));
    detail::writeFloat(options, Keys::kSampleRate, sampleRate);
    detail::writeBool(options, Keys::kUniformByLength, uniformByLength);
    detail::writeFloat(options, Keys::kSegmentLength, segmentLength);
    detail::writeBool(options, Keys::kEvenSegments, evenSegments);
    detail::writeText(options, Keys::kTagTransfer, nameOf(kTagTransferNames, tagTransfer));
}

} // namespace ZelvaneBoardInputByPath
