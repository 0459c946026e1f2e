#pragma once

#include <string_view>

/// Metadata keys of a port's input-by-path options. The options are the children of the
/// port metadata's child `kOptions` (or of the item handed to `Options::parse` directly);
/// each key's value is text. See docs/port-options.md for the full table.
namespace ZelvaneBoardInputByPath::Keys {

inline constexpr std::string_view kOptions = "inputByPath";

// Every port.
inline constexpr std::string_view kPaths = "paths";
inline constexpr std::string_view kNoShape = "noShape";

// Mesh inputs.
inline constexpr std::string_view kComponentTagFilter = "componentTagFilter";
inline constexpr std::string_view kFaceVertexNormals = "faceVertexNormals";
inline constexpr std::string_view kPointNormals = "pointNormals";
inline constexpr std::string_view kFaceNormals = "faceNormals";
inline constexpr std::string_view kChannelFilter = "channelFilter";

// Curve inputs.
inline constexpr std::string_view kComponentTags = "componentTags";
inline constexpr std::string_view kComputeTangents = "computeTangents";
inline constexpr std::string_view kAddLengths = "addLengths";
inline constexpr std::string_view kSampling = "sampling";
inline constexpr std::string_view kSampleRate = "sampleRate";
inline constexpr std::string_view kUniformByLength = "uniformByLength";
inline constexpr std::string_view kSegmentLength = "segmentLength";
inline constexpr std::string_view kEvenSegments = "evenSegments";
inline constexpr std::string_view kTagTransfer = "tagTransfer";

} // namespace ZelvaneBoardInputByPath::Keys
