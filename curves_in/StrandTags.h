#pragma once

#include <cstddef>
#include <cstdint>
#include <kova/KDataHandle.h>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <span>
#include <unordered_map>
#include <vector>
#include <zelvane/Object.h>
#include <zelvane/inputbypath/CurveOptions.h>

// CV component tags of the curves as point tags of the strand object.
namespace ZelvanePlugin::CurvesInput {

// Wanted tags by name, each with the strand points it covers (null until converted).
using TagMap = std::unordered_map<Orsel::String, Orsel::Ptr<Orsel::Array<std::uint32_t>>>;

// Enters every component tag name of curves [0, curveCount) that the channel expression
// `expression` accepts into `tagMap`, with no points yet; curves whose geometry data can't be
// read are skipped. When some tag is wanted, `pointParams` is sized to `pointCount` (zeros) so
// that the sampler records the parameter of every point.
void gatherTags(const std::vector<KDataHandle>& handles, std::size_t curveCount,
                const Orsel::String& expression, std::size_t pointCount, TagMap& tagMap,
                std::vector<double>& pointParams);

// Finds the strand points each tag of `tagMap` covers and stores them, ascending. Only CV tags
// (category 2) count; a complete tag covers its whole strand. One point per CV: CV j marks
// point j of the strand. Sampled points take their CV through `options.tagTransfer`: nearest
// CV, or both neighbours (curves with at least two CVs); any other value transfers nothing.
// Curves without CV parameters (degree below 1, too few knots) or readable geometry data add
// nothing. Parallel over curves, tags and CVs.
void convertTagData(const std::vector<KDataHandle>& handles,
                    const ZelvaneBoardInputByPath::CurveOptions& options,
                    std::span<const std::uint32_t> offsets, std::span<const double> pointParams,
                    TagMap& tagMap);

// Sets one point tag property per entry on `strands` ("pointTag(<name>)", numbered when the
// name is taken), in the map's order. The point lists are moved out of the map.
void addTagProperties(TagMap& tagMap, std::uint64_t pointCount, Zelvane::Object& strands);

} // namespace ZelvanePlugin::CurvesInput
