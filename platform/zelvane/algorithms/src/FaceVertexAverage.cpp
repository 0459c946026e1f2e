#include "detail/Grain.h"
#include "detail/Validation.h"

#include <array>
#include <bit>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <zelvane/algorithms/FaceVertexAverage.h>

namespace Zelvane::GeometryAlgorithms {

namespace {

// `T` seen as its flat float components (float, float2, float3 and float4 are plain floats
// without padding).
template <class T>
constexpr std::size_t kComponents = sizeof(T) / sizeof(float);

template <class T>
using Components = std::array<float, kComponents<T>>;

template <class T>
bool average(const FaceVertexAdjacency& adjacency, const T* faceVertexValues, T* pointValues,
             const T& isolatedValue) {
    const std::size_t pointCount = adjacency.pointCount();
    const std::size_t faceVertexCount = adjacency.faceVertexCount();
    if (adjacency.pointOffsets.empty() || (pointCount > 0 && !pointValues) ||
        (faceVertexCount > 0 && !faceVertexValues) ||
        !detail::isPrefixSum(adjacency.pointOffsets.span(), faceVertexCount) ||
        !detail::allBelow(adjacency.pointFaceVertices.span(), faceVertexCount)) {
        return false;
    }
    const std::uint32_t* offsets = adjacency.pointOffsets.data();
    const std::uint32_t* grouped = adjacency.pointFaceVertices.data();
    using Range = tbb::blocked_range<std::size_t>;
    tbb::parallel_for(Range(0, pointCount, detail::kElementGrain), [&](const Range& points) {
        for (std::size_t p = points.begin(); p != points.end(); ++p) {
            const std::uint32_t first = offsets[p];
            const std::uint32_t last = offsets[p + 1];
            if (first == last) {
                pointValues[p] = isolatedValue;
                continue;
            }
            std::array<double, kComponents<T>> sum{};
            for (std::uint32_t k = first; k != last; ++k) {
                const auto value = std::bit_cast<Components<T>>(faceVertexValues[grouped[k]]);
                for (std::size_t c = 0; c < sum.size(); ++c) {
                    sum[c] += value[c];
                }
            }
            Components<T> mean;
            for (std::size_t c = 0; c < sum.size(); ++c) {
                mean[c] = static_cast<float>(sum[c] / double(last - first));
            }
            pointValues[p] = std::bit_cast<T>(mean);
        }
    });
    return true;
}

} // namespace

bool averageFaceVertexToPoints(const FaceVertexAdjacency& adjacency, const float* faceVertexValues,
                               float* pointValues, float isolatedValue) {
    return average(adjacency, faceVertexValues, pointValues, isolatedValue);
}

bool averageFaceVertexToPoints(const FaceVertexAdjacency& adjacency,
                               const Math::float2* faceVertexValues, Math::float2* pointValues,
                               Math::float2 isolatedValue) {
    return average(adjacency, faceVertexValues, pointValues, isolatedValue);
}

bool averageFaceVertexToPoints(const FaceVertexAdjacency& adjacency,
                               const Math::float3* faceVertexValues, Math::float3* pointValues,
                               Math::float3 isolatedValue) {
    return average(adjacency, faceVertexValues, pointValues, isolatedValue);
}

bool averageFaceVertexToPoints(const FaceVertexAdjacency& adjacency,
                               const Math::float4* faceVertexValues, Math::float4* pointValues,
                               Math::float4 isolatedValue) {
    return average(adjacency, faceVertexValues, pointValues, isolatedValue);
}

} // namespace Zelvane::GeometryAlgorithms
