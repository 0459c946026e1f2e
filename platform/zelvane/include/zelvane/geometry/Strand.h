#pragma once

#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <zelvane/Export.h>
#include <zelvane/Object.h>
#include <zelvane/math/Vector.h>

/// The strand layout: element counts on `sPointComp` and `sStrandComp`; `sPointPosition`
/// holds one float3 per point; `sStrandOffset` holds strands + 1 uint32 entries, first 0 and
/// last the point count (strand i uses points offset[i] .. offset[i+1]-1). The prototype is
/// `getStrandPrototype()`.
namespace Zelvane::Geometry {

/// The process-wide strand prototype (an object whose `sPrototypeName` is "strand"); never
/// null.
ZELVANE_API const Orsel::Ptr<Object>& getStrandPrototype();

/// Makes `strands` a strand object of the given arrays (shared, not copied; null positions
/// count as empty). Returns false and leaves `strands` unchanged when `offsets` is null or
/// empty, does not start at 0, decreases, or does not end at the number of positions.
ZELVANE_API bool populateStrand(Orsel::Ptr<Orsel::Array<Math::float3>> positions,
                                Orsel::Ptr<Orsel::Array<std::uint32_t>> offsets, Object& strands);

} // namespace Zelvane::Geometry
