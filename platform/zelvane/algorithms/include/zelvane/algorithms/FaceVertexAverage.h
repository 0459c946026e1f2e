#pragma once

#include <zelvane/algorithms/Export.h>
#include <zelvane/algorithms/FaceVertexAdjacency.h>
#include <zelvane/math/Vector.h>

namespace Zelvane::GeometryAlgorithms {

/// Turns face-vertex data into point data: each point gets the mean of the values of the
/// face-vertices that use it (component-wise, summed in double precision in ascending
/// face-vertex order, so equal values average to exactly that value); a point that no
/// face-vertex uses gets `isolatedValue`.
///
/// `faceVertexValues` holds `adjacency.faceVertexCount()` values; `pointValues` receives
/// `adjacency.pointCount()` values and must not overlap the input. Either may be null when
/// its count is 0. Returns false, writing nothing, when `adjacency` was not built (no point
/// offsets), when its point offsets or face-vertex indices are inconsistent (checked before
/// anything is read through the pointers), or when a pointer is null while its count is not 0.
/// Parallel over points with oneTBB; the result does not depend on the number of threads.
ZELVANE_ALGORITHMS_API bool averageFaceVertexToPoints(const FaceVertexAdjacency& adjacency,
                                                      const float* faceVertexValues,
                                                      float* pointValues, float isolatedValue);
ZELVANE_ALGORITHMS_API bool averageFaceVertexToPoints(const FaceVertexAdjacency& adjacency,
                                                      const Math::float2* faceVertexValues,
                                                      Math::float2* pointValues,
                                                      Math::float2 isolatedValue);
ZELVANE_ALGORITHMS_API bool averageFaceVertexToPoints(const FaceVertexAdjacency& adjacency,
                                                      const Math::float3* faceVertexValues,
                                                      Math::float3* pointValues,
                                                      Math::float3 isolatedValue);
ZELVANE_ALGORITHMS_API bool averageFaceVertexToPoints(const FaceVertexAdjacency& adjacency,
                                                      const Math::float4* faceVertexValues,
                                                      Math::float4* pointValues,
                                                      Math::float4 isolatedValue);

} // namespace Zelvane::GeometryAlgorithms
