#include "detail/Double3.h"
#include "detail/FaceChunks.h"
#include "detail/FaceContributions.h"
#include "detail/Grain.h"
#include "detail/MeshArrays.h"
#include "detail/PointFaceVertices.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <zelvane/algorithms/MeshVertexNormals.h>

namespace Zelvane::GeometryAlgorithms {

namespace {

using Math::float3;
using Range = tbb::blocked_range<std::size_t>;

constexpr float3 kZero{0.0f, 0.0f, 0.0f};

// Points per task of the final pass: enough to amortise the scan over the chunk ranges.
constexpr std::size_t kPointBlock = 4096;

// `sum` scaled to unit length; (0, 0, 0) when it has no direction. Single precision when the
// squared length is a normal float, double precision otherwise, so that tiny and huge sums
// keep their direction.
inline float3 normalised(const float3& sum) {
    const float squared = Math::dot(sum, sum);
    if (squared >= std::numeric_limits<float>::min() &&
        squared <= std::numeric_limits<float>::max()) {
        return sum * (1.0f / std::sqrt(squared));
    }
    const detail::double3 wide = detail::widen(sum);
    const double norm = detail::length(wide);
    return norm > 0.0 && std::isfinite(norm) ? detail::narrow(wide * (1.0 / norm)) : kZero;
}

// Each chunk of faces sums its contributions per point into an accumulator over its own
// point range; then each point adds up the accumulators that cover it, in chunk order.
void sumByChunks(const detail::FaceChunks& chunks, const detail::FaceContributions& contribute,
                 bool normalize, std::size_t pointCount, float3* out) {
    Orsel::Array<float3> slotArray;
    slotArray.resizeForOverwrite(chunks.slotCount());
    float3* slots = slotArray.data();
    tbb::parallel_for(std::size_t(0), chunks.chunkCount(), [&](std::size_t c) {
        float3* sums = slots + chunks.slotOffsets[c];
        std::fill(sums, slots + chunks.slotOffsets[c + 1], kZero);
        const std::uint32_t firstPoint = chunks.firstPoints[c];
        for (std::size_t face = chunks.firstFaces[c]; face < chunks.firstFaces[c + 1]; ++face) {
            contribute(face,
                       [sums, firstPoint](std::size_t, std::uint32_t point, const float3& value) {
                           sums[point - firstPoint] += value;
                       });
        }
    });

    tbb::parallel_for(Range(0, pointCount, kPointBlock), [&](const Range& points) {
        std::fill(out + points.begin(), out + points.end(), kZero);
        for (std::size_t c = 0; c < chunks.chunkCount(); ++c) {
            const std::size_t first = std::max<std::size_t>(points.begin(), chunks.firstPoints[c]);
            const std::size_t end = std::min(points.end(), chunks.endPoint(c));
            const float3* sums = slots + chunks.slotOffsets[c];
            const std::uint32_t firstPoint = chunks.firstPoints[c];
            for (std::size_t p = first; p < end; ++p) {
                out[p] += sums[p - firstPoint];
            }
        }
        if (normalize) {
            for (std::size_t p = points.begin(); p != points.end(); ++p) {
                out[p] = normalised(out[p]);
            }
        }
    });
}

// For meshes whose chunks would need too many slots: the contributions are stored per
// face-vertex and each point adds up those of its face-vertices in ascending order.
void sumByPoint(const detail::MeshArrays& arrays, const detail::FaceContributions& contribute,
                bool normalize, float3* out) {
    Orsel::Array<float3> perCornerArray;
    perCornerArray.resizeForOverwrite(arrays.faceVertexCount());
    float3* perCorner = perCornerArray.data();
    tbb::parallel_for(Range(0, arrays.faceCount(), detail::kElementGrain), [&](const Range& faces) {
        for (std::size_t face = faces.begin(); face != faces.end(); ++face) {
            contribute(face, [perCorner](std::size_t faceVertex, std::uint32_t,
                                         const float3& value) { perCorner[faceVertex] = value; });
        }
    });

    Orsel::Array<std::uint32_t> pointOffsets;
    Orsel::Array<std::uint32_t> pointFaceVertices;
    detail::buildPointFaceVertices(arrays.faceVertices(), arrays.pointCount(), pointOffsets,
                                   pointFaceVertices);
    const std::uint32_t* offsets = pointOffsets.data();
    const std::uint32_t* grouped = pointFaceVertices.data();
    tbb::parallel_for(Range(0, arrays.pointCount(), detail::kElementGrain),
                      [&](const Range& points) {
                          for (std::size_t p = points.begin(); p != points.end(); ++p) {
                              float3 sum = kZero;
                              for (std::uint32_t k = offsets[p]; k != offsets[p + 1]; ++k) {
                                  sum += perCorner[grouped[k]];
                              }
                              out[p] = normalize ? normalised(sum) : sum;
                          }
                      });
}

} // namespace

bool computeMeshVertexNormals(const Object& mesh, bool weightByArea, bool normalize,
                              Orsel::Array<Math::float3>& normals) {
    // The point indices of the face-vertices are checked on the chunks' pass over them.
    detail::MeshArrays arrays;
    const bool laidOut = detail::readMeshLayout(mesh, arrays);
    const detail::FaceChunks chunks =
        laidOut ? detail::cutIntoFaceChunks(arrays) : detail::FaceChunks{};
    if (!laidOut || chunks.pointEnd > arrays.pointCount()) {
        normals.clear();
        return false;
    }
    const detail::FaceContributions contribute(arrays, weightByArea);
    normals.resizeForOverwrite(arrays.pointCount());
    // The chunk accumulators are used while they take no more memory than the per-face-vertex
    // contributions of the other way.
    if (chunks.slotCount() <= arrays.faceVertexCount()) {
        sumByChunks(chunks, contribute, normalize, arrays.pointCount(), normals.data());
    } else {
        sumByPoint(arrays, contribute, normalize, normals.data());
    }
    return true;
}

} // namespace Zelvane::GeometryAlgorithms
