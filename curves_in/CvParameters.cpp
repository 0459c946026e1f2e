#include "curves_in/CvParameters.h"

#include <kova/KDoubleArray.h>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/partitioner.h>

namespace ZelvanePlugin::CurvesInput {

namespace {
constexpr std::size_t kCVGrain = 200;
} // namespace

std::vector<double> cvParameters(const KFnNurbsCurve& curve, int numCVs, int degree) {
    KDoubleArray knots;
    if (degree < 1 || numCVs < 1 || !curve.getKnots(knots) ||
        knots.length() < static_cast<unsigned int>(numCVs + degree - 1)) {
        return {};
    }
    std::vector<double> parameters(static_cast<std::size_t>(numCVs));
    tbb::parallel_for(
        tbb::blocked_range<std::size_t>(0, parameters.size(), kCVGrain),
        [&](const tbb::blocked_range<std::size_t>& range) {
            for (std::size_t j = range.begin(); j < range.end(); ++j) {
                double sum = 0.0;
                for (int k = 0; k < degree; ++k) {
                    sum += knots[static_cast<unsigned int>(j) + static_cast<unsigned int>(k)];
                }
                parameters[j] = sum / degree;
            }
        },
        tbb::auto_partitioner());
    return parameters;
}

} // namespace ZelvanePlugin::CurvesInput
