#pragma once

#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <string_view>
#include <zelvane/Export.h>
#include <zelvane/Object.h>

/// Index ("range") properties of indexed face-vertex data: a sub-object with `sTarget` =
/// `sFaceVertexComp` and `sIndices`, one uint32 per face-vertex pointing into the `sData` of
/// the data property whose target names it. It is stored under data name + `sIndexSuffix`.
namespace Zelvane::Geometry {

/// `name` + `sIndexSuffix`, the name of the index property of the data property `name`.
ZELVANE_API Orsel::String getGeoPropRangeName(std::string_view name);

/// Makes `property` an index property over face-vertices holding `indices` (null becomes an
/// empty array).
ZELVANE_API void populateRangeGeoProperty(Object& property,
                                          Orsel::Ptr<Orsel::Array<std::uint32_t>> indices);

/// The `sIndices` of the sub-object `rangePropName` of `geometry`; null when absent.
ZELVANE_API Orsel::Ptr<Orsel::Array<std::uint32_t>>
getRangeGeoPropIndices(const Object& geometry, std::string_view rangePropName);

/// The identity indices 0 .. count-1; null when `count` exceeds what uint32 indices can
/// address (2^32).
ZELVANE_API Orsel::Ptr<Orsel::Array<std::uint32_t>>
populateTrivialRangeIndices(std::uint64_t count);

} // namespace Zelvane::Geometry
