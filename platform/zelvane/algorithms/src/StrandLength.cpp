#include "detail/Grain.h"
#include "detail/StrandArrays.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <zelvane/algorithms/StrandLength.h>

namespace Zelvane::GeometryAlgorithms {

bool computeStrandLength(const Object& strands, Orsel::Array<float>& strandLengths,
                         Orsel::Array<float>& pointLengths, const RuntimeServices*) {
    detail::StrandArrays arrays;
    if (!detail::readStrandArrays(strands, arrays)) {
        strandLengths.clear();
        pointLengths.clear();
        return false;
    }
    strandLengths.resizeForOverwrite(arrays.strandCount());
    pointLengths.resizeForOverwrite(arrays.pointCount());
    float* perStrand = strandLengths.data();
    float* perPoint = pointLengths.data();
    using Range = tbb::blocked_range<std::size_t>;
    tbb::parallel_for(Range(0, arrays.strandCount(), detail::kStrandGrain),
                      [&arrays, perStrand, perPoint](const Range& range) {
                          for (std::size_t s = range.begin(); s != range.end(); ++s) {
                              float* out = perPoint + arrays.firstPoint(s);
                              perStrand[s] = static_cast<float>(detail::walkArcLength(
                                  arrays.strandPoints(s), [out](std::size_t i, double length) {
                                      out[i] = static_cast<float>(length);
                                  }));
                          }
                      });
    return true;
}

} // namespace Zelvane::GeometryAlgorithms
