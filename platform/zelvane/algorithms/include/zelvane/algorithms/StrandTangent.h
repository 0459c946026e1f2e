#pragma once

#include <zelvane/algorithms/Export.h>
#include <zelvane/math/Vector.h>

namespace Zelvane::GeometryAlgorithms {

/// Writes the unit tangent of each point of the polyline `[begin, end)` to `output` (which
/// receives `end - begin` values and must not overlap the input).
///
/// The tangent of point i is the normalised difference of its neighbours, p[i+1] - p[i-1]
/// (central difference), and p[1] - p[0] and p[n-1] - p[n-2] at the ends (one-sided).
/// Coincident points are looked through: the neighbours used are the nearest points before
/// and after i that differ from p[i], so repeated points share the tangent of their position.
/// Where those neighbours coincide with each other (the tip of a hairpin), the tangent points
/// towards the next distinct point. A run of one point, or a run whose points all coincide,
/// has no direction: its tangents are (0, 0, 0). Never produces NaN from finite input.
///
/// Returns false, writing nothing, when `end` precedes `begin`, or when the run is not empty
/// and a pointer is null; an empty run succeeds and writes nothing.
ZELVANE_ALGORITHMS_API bool computeStrandTangent(const Math::float3* begin, const Math::float3* end,
                                                 Math::float3* output);

} // namespace Zelvane::GeometryAlgorithms
