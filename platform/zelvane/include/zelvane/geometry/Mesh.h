#pragma once

#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <zelvane/Export.h>
#include <zelvane/Object.h>
#include <zelvane/math/Vector.h>

/// The mesh layout: element counts on `sPointComp`, `sFaceComp` and `sFaceVertexComp`;
/// `sPointPosition` holds one float3 per point; `sFaceOffset` holds faces + 1 uint32 entries,
/// an exclusive prefix sum starting at 0 whose last entry is the face-vertex count (face i
/// uses face-vertices offset[i] .. offset[i+1]-1); `sFaceVertex` holds the point index of
/// every face-vertex. The prototype is `getMeshPrototype()`.
namespace Zelvane::Geometry {

/// The process-wide mesh prototype (an object whose `sPrototypeName` is "mesh"); never null.
ZELVANE_API const Orsel::Ptr<Object>& getMeshPrototype();

/// Gives `mesh` the empty mesh layout: the mesh prototype, all three counts 0, an empty
/// position array, face offsets [0] and an empty face-vertex array. Other properties stay.
ZELVANE_API void populateMesh(Object& mesh);

/// Makes `mesh` a mesh of the given arrays, which are shared, not copied (e.g. a temporary
/// mesh for an algorithm). Null arrays count as empty, and null or empty offsets as "no
/// faces" (stored as [0]). Counts are taken from the arrays.
/// Returns false and leaves `mesh` unchanged when the arrays do not form a mesh: offsets not
/// starting at 0, decreasing, or not ending at the face-vertex count, or a face-vertex
/// naming a point that does not exist.
ZELVANE_API bool populateMesh(Orsel::Ptr<Orsel::Array<Math::float3>> positions,
                              Orsel::Ptr<Orsel::Array<std::uint32_t>> faceVertex,
                              Orsel::Ptr<Orsel::Array<std::uint32_t>> faceOffset, Object& mesh);

} // namespace Zelvane::Geometry
