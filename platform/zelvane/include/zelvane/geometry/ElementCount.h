#pragma once

#include <cstdint>
#include <orsel/String.h>
#include <string_view>
#include <zelvane/Export.h>
#include <zelvane/Object.h>

namespace Zelvane::Geometry {

/// Element counts of a geometry's components (points, faces, face-vertices, strands) live in
/// int64 properties named component + `sElementCountSuffix` ("pointCount", "faceCount", ...).

/// The property name that holds the element count of `component`.
ZELVANE_API Orsel::String elementCountName(std::string_view component);
/// Sets the element count of `component` on `geometry` (clamped to the int64 range); false
/// and nothing set for an empty component name.
ZELVANE_API bool setElementCount(const Orsel::String& component, std::uint64_t count,
                                 Object& geometry);
/// The element count of `component`, 0 when absent (or negative).
ZELVANE_API std::uint64_t getElementCount(const Object& geometry, std::string_view component);

} // namespace Zelvane::Geometry
