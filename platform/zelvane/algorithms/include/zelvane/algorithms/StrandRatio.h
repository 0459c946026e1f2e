#pragma once

#include <orsel/Array.h>
#include <zelvane/Object.h>
#include <zelvane/algorithms/Export.h>
#include <zelvane/algorithms/RuntimeServices.h>

namespace Zelvane::GeometryAlgorithms {

/// Computes, for each point of `strands`, how far along its strand it lies, from 0 to 1.
///
/// `strands` must carry the strand layout exactly as `computeStrandLength` requires;
/// otherwise the result is false and `ratios` is left empty.
///
/// On success `ratios` holds one value per point: its arc length from the strand's first point
/// divided by the strand's length (computed in double precision), so the first point of every
/// strand has 0 and the last point of a strand of positive length has exactly 1. The points of
/// a strand of zero length (all points coincident) are spread evenly by index instead,
/// i / (n - 1), so they still run from 0 to 1; a single-point strand's point has 0.
/// Parallel over strands with oneTBB. `services` may be null; it is not used.
ZELVANE_ALGORITHMS_API bool computeStrandRatio(const Object& strands, Orsel::Array<float>& ratios,
                                               const RuntimeServices* services);

} // namespace Zelvane::GeometryAlgorithms
