#include "curves_in/CurveSampling.h"

#include "curves_in/CurveData.h"
#include "curves_in/SampleCounts.h"

#include <algorithm>
#include <kova/KFnNurbsCurve.h>
#include <kova/KPointArray.h>
#include <zelvane/algorithms/StrandTangent.h>

namespace ZelvanePlugin::CurvesInput {

namespace {

using Zelvane::Math::float3;
using ZelvaneBoardInputByPath::CurveOptions;
using ZelvaneBoardInputByPath::CurveSampling;

float3 toFloat3(double x, double y, double z) {
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

// One curve's slice of the shared arrays.
struct Strand {
    std::span<float3> positions;
    std::span<float3> tangents; // empty: no analytic tangents
    std::span<double> params;   // empty: no parameters
};

KStatus copyCVs(const KFnNurbsCurve& curve, std::span<float3> positions) {
    KPointArray cvs;
    const KStatus status = curve.getCVs(cvs, KSpace::kWorld);
    if (!status) {
        return status;
    }
    if (cvs.length() < positions.size()) {
        return KStatus(KStatus::kInvalidParameter, "the curve lost CVs while it was sampled");
    }
    for (std::size_t j = 0; j < positions.size(); ++j) {
        KPoint cv = cvs[static_cast<unsigned int>(j)];
        cv.cartesianize();
        positions[j] = toFloat3(cv.x, cv.y, cv.z);
    }
    return status;
}

// The curve parameter of sample j of n, before clamping to the domain.
class SampleParameters {
public:
    SampleParameters(const KFnNurbsCurve& curve, const CurveOptions& options, double length,
                     double start, double end, std::size_t n)
        : curve_(curve),
          byLength_(options.sampling == CurveSampling::BySegmentLength || options.uniformByLength),
          start_(start) {
        const double segments = static_cast<double>(n - 1);
        if (!byLength_) {
            step_ = (end - start) / segments;
        } else if (options.sampling == CurveSampling::BySegmentLength && !options.evenSegments) {
            step_ = effectiveSegmentLength(options.segmentLength);
        } else {
            step_ = length / segments;
        }
    }

    double operator()(std::size_t j, KStatus& status) const {
        const double distance = static_cast<double>(j) * step_;
        return byLength_ ? curve_.findParamFromLength(distance, &status) : start_ + distance;
    }

private:
    const KFnNurbsCurve& curve_;
    bool byLength_;
    double start_;
    double step_ = 0.0;
};

// Sample j at parameter t: its point, and its parameter and tangent when they are wanted.
KStatus takeSample(const KFnNurbsCurve& curve, double t, const Strand& strand, std::size_t j) {
    KPoint point;
    if (const KStatus status = curve.getPointAtParam(t, point, KSpace::kWorld); !status) {
        return status;
    }
    point.cartesianize();
    strand.positions[j] = toFloat3(point.x, point.y, point.z);
    if (!strand.params.empty()) {
        strand.params[j] = t;
    }
    KStatus status;
    if (!strand.tangents.empty()) {
        const KVector direction = curve.tangent(t, KSpace::kWorld, &status).normal();
        strand.tangents[j] = toFloat3(direction.x, direction.y, direction.z);
    }
    return status;
}

// A sample that can't be read fails the curve, once every other sample has been taken.
KStatus samplePoints(const KFnNurbsCurve& curve, const CurveOptions& options, double length,
                     const Strand& strand) {
    double start = 0.0;
    double end = 0.0;
    if (const KStatus status = curve.getKnotDomain(start, end); !status) {
        return status;
    }
    const SampleParameters parameterOf(curve, options, length, start, end, strand.positions.size());
    KStatus failure;
    for (std::size_t j = 0; j < strand.positions.size(); ++j) {
        KStatus status;
        const double t = parameterOf(j, status);
        if (status) {
            status = takeSample(curve, std::min(std::max(t, start), end), strand, j);
        }
        if (!status) {
            failure = status;
        }
    }
    return failure;
}

void sampleCurve(const std::vector<KDataHandle>& handles, const CurveOptions& options,
                 const StrandSlices& slices, std::size_t i, CurveFailures& failures) {
    const std::size_t first = slices.offsets[i];
    const std::size_t count = slices.offsets[i + 1] - first;
    KStatus status;
    const KFnNurbsCurve curve(curveData(handles, i), &status);
    const double length = status ? curve.length(kLengthTolerance, &status) : 0.0;
    if (!status) {
        failures.record(i, status);
        return;
    }
    const std::span<float3> positions = slices.positions.subspan(first, count);
    const bool wantTangents = !slices.tangents.empty();
    const bool sampled = options.sampling != CurveSampling::CVs;
    const bool analyticTangents = wantTangents && sampled && curve.degree() > 1;
    if (sampled) {
        const Strand strand{
            positions,
            analyticTangents ? slices.tangents.subspan(first, count) : std::span<float3>(),
            slices.params.empty() ? std::span<double>() : slices.params.subspan(first, count)};
        status = samplePoints(curve, options, length, strand);
    } else {
        status = copyCVs(curve, positions);
    }
    if (!status) {
        failures.record(i, status);
        return;
    }
    if (wantTangents && !analyticTangents) {
        Zelvane::GeometryAlgorithms::computeStrandTangent(
            positions.data(), positions.data() + count, slices.tangents.data() + first);
    }
}

} // namespace

void sampleCurves(const std::vector<KDataHandle>& handles, const CurveOptions& options,
                  const StrandSlices& slices, std::size_t begin, std::size_t end,
                  CurveFailures& failures) {
    for (std::size_t i = begin; i < end; ++i) {
        sampleCurve(handles, options, slices, i, failures);
    }
}

} // namespace ZelvanePlugin::CurvesInput
