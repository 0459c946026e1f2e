#include "curves_in/SampleCounts.h"

#include "curves_in/CurveData.h"

#include <algorithm>
#include <cmath>
#include <kova/KFnNurbsCurve.h>

namespace ZelvanePlugin::CurvesInput {

namespace {

using ZelvaneBoardInputByPath::CurveSampling;

// A whole, non-negative point count; anything beyond the layout's limit (or NaN) becomes
// kMaxStrandPoints + 1, which the count rule rejects.
std::uint64_t wholePoints(double count) {
    constexpr double kTooMany = static_cast<double>(kMaxStrandPoints) + 1.0;
    return count < kTooMany ? static_cast<std::uint64_t>(count) : kMaxStrandPoints + 1;
}

} // namespace

std::uint64_t countByCVCount(int numCVs, float sampleRate) {
    const float rounded = std::round(sampleRate * static_cast<float>(numCVs - 1));
    return wholePoints(std::max(2.0, static_cast<double>(rounded) + 1.0));
}

double effectiveSegmentLength(float segmentLength) {
    const double length = segmentLength;
    return length > kMinSegmentLength ? length : kMinSegmentLength;
}

std::uint64_t countBySegmentLength(double length, float segmentLength) {
    return wholePoints(std::trunc(std::max(1.0, length / effectiveSegmentLength(segmentLength))) +
                       1.0);
}

void countSamples(const std::vector<KDataHandle>& handles,
                  const ZelvaneBoardInputByPath::CurveOptions& options, std::size_t begin,
                  std::size_t end, std::span<std::uint32_t> counts, CurveFailures& failures) {
    for (std::size_t i = begin; i < end; ++i) {
        counts[i] = 0;
        KStatus status;
        const KFnNurbsCurve curve(curveData(handles, i), &status);
        if (!status) {
            failures.record(i, status);
            continue;
        }
        const int numCVs = curve.numCVs(&status);
        if (!status) {
            failures.record(i, status);
        }
        const double length = curve.length(kLengthTolerance, &status);
        if (!status) {
            failures.record(i, status);
        }
        std::uint64_t count = 0;
        switch (options.sampling) {
        case CurveSampling::ByCVCount:
            count = countByCVCount(numCVs, options.sampleRate);
            break;
        case CurveSampling::BySegmentLength:
            count = countBySegmentLength(length, options.segmentLength);
            break;
        default: // one point per CV, a periodic curve's overlapping CVs included
            count = static_cast<std::uint64_t>(std::max(numCVs, 0));
            break;
        }
        if (count > kMaxStrandPoints) {
            failures.record(i, KStatus(KStatus::kInvalidParameter,
                                       "the curve needs more points than a strand object holds"));
            continue;
        }
        counts[i] = static_cast<std::uint32_t>(count);
    }
}

std::size_t firstCurvePastPointLimit(std::span<const std::uint32_t> counts) {
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        total += counts[i];
        if (total > kMaxStrandPoints) {
            return i;
        }
    }
    return counts.size();
}

} // namespace ZelvanePlugin::CurvesInput
