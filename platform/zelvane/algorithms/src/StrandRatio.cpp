#include "detail/Grain.h"
#include "detail/StrandArrays.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <zelvane/algorithms/StrandRatio.h>

namespace Zelvane::GeometryAlgorithms {

bool computeStrandRatio(const Object& strands, Orsel::Array<float>& ratios,
                        const RuntimeServices*) {
    detail::StrandArrays arrays;
    if (!detail::readStrandArrays(strands, arrays)) {
        ratios.clear();
        return false;
    }
    ratios.resizeForOverwrite(arrays.pointCount());
    float* perPoint = ratios.data();
    using Range = tbb::blocked_range<std::size_t>;
    tbb::parallel_for(
        Range(0, arrays.strandCount(), detail::kStrandGrain),
        [&arrays, perPoint](const Range& range) {
            for (std::size_t s = range.begin(); s != range.end(); ++s) {
                const std::span<const Math::float3> points = arrays.strandPoints(s);
                float* out = perPoint + arrays.firstPoint(s);
                const double total = detail::walkArcLength(points, [](std::size_t, double) {});
                if (total > 0.0) {
                    detail::walkArcLength(points, [out, total](std::size_t i, double length) {
                        out[i] = static_cast<float>(length / total);
                    });
                } else {
                    const double last = points.size() > 1 ? double(points.size() - 1) : 1.0;
                    for (std::size_t i = 0; i < points.size(); ++i) {
                        out[i] = static_cast<float>(double(i) / last);
                    }
                }
            }
        });
    return true;
}

} // namespace Zelvane::GeometryAlgorithms
