#include "curves_in/StrandLengths.h"

#include "common/ProfilerCategories.h"

#include <kova/KProfilingScope.h>
#include <zelvane/algorithms/StrandLength.h>
#include <zelvane/algorithms/StrandRatio.h>

namespace ZelvanePlugin::CurvesInput {

StrandLengths computeLengths(const Zelvane::Object& strands) {
    const KProfilingScope scope(curveConverterCategory(), kProfilerColor, "computeLengths");
    StrandLengths lengths{Orsel::make<Orsel::Array<float>>(), Orsel::make<Orsel::Array<float>>()};
    lengths.computed = Zelvane::GeometryAlgorithms::computeStrandLength(
        strands, *lengths.strandLengths, *lengths.pointLengths, nullptr);
    return lengths;
}

PointRatios computePointRatios(const Zelvane::Object& strands) {
    const KProfilingScope scope(curveConverterCategory(), kProfilerColor, "computePointRatios");
    PointRatios ratios{Orsel::make<Orsel::Array<float>>()};
    ratios.computed =
        Zelvane::GeometryAlgorithms::computeStrandRatio(strands, *ratios.ratios, nullptr);
    return ratios;
}

} // namespace ZelvanePlugin::CurvesInput
