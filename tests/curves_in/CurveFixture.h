#pragma once

#include "BoardScene.h"
#include "GraphObjectValues.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KMessageCapture.h>
#include <kova/KPoint.h>
#include <orsel/Ptr.h>
#include <string>
#include <vector>
#include <zelvane/Object.h>
#include <zelvane/inputbypath/CurveOptions.h>
#include <zelvane/math/Vector.h>

using Zelvane::Math::float3;
using ZelvaneBoardInputByPath::CurveOptions;
using ZelvaneBoardInputByPath::CurveSampling;
using ZelvaneBoardInputByPath::TagTransfer;

// Curve shapes and curve data of known geometry.
namespace curves {

struct Curve {
    std::vector<KPoint> cvs; // homogeneous for rational curves
    std::vector<double> knots;
    unsigned int degree;
    KFnNurbsCurve::Form form = KFnNurbsCurve::kOpen;
    bool rational = false;
};

// A degree-1 curve through `points`, one knot per point (0, 1, 2, ...).
Curve polyline(const std::vector<KPoint>& points);
// The circle of `radius` around the origin in the xy plane, counterclockwise from (radius, 0):
// a rational quadratic of 9 CVs, domain [0, 4], one quarter per unit.
Curve circle(double radius);
// A periodic uniform cubic over the 6 corners of a unit hexagon (the first 3 repeated as the
// overlap): 9 CVs, knots 0 .. 10, domain [2, 8].
Curve hexagon();

} // namespace curves

// The plug-in bound through the host's loaders, its exported curve converter, and a board with
// an object input "in" that names the input in messages.
class CurveConversion : public BoardScene {
protected:
    using Converter = Orsel::MutablePtr<Zelvane::Object> (*)(const std::vector<KPlug>&,
                                                             const std::vector<KDataHandle>&,
                                                             const CurveOptions&, bool, KPlug);

    void SetUp() override;

    // New curve data holding `curve`.
    static KObject curveData(const curves::Curve& curve);
    // A new transform (moved by `translation`) with a shape of `curve`; returns the shape.
    static KObject curveShape(const curves::Curve& curve, const KVector& translation = {});
    // Attaches a CV tag `name` to `data` holding `cvs`, or every CV when `complete`.
    static void tagCVs(const KObject& data, const char* name, const std::vector<int>& cvs,
                       bool complete = false);

    // Curve data held by new nodes "crv1", "crv2", ...: their plugs and values.
    struct Sources {
        std::vector<KPlug> plugs;
        std::vector<KDataHandle> handles;
    };
    Sources sources(const std::vector<KObject>& curveData) const;
    // Converts the sources' curves as feeding "board1.in" (the plugs are the curves' own).
    Orsel::Ptr<Zelvane::Object> convert(const Sources& sources,
                                        const CurveOptions& options = {}) const;
    Orsel::Ptr<Zelvane::Object> convert(const std::vector<KObject>& curveData,
                                        const CurveOptions& options = {}) const {
        return convert(sources(curveData), options);
    }
    // The source plug of a new node `name` holding `data`.
    KPlug curveSource(const std::string& name, const KObject& data) const;
    static KDataHandle valueOf(const KPlug& plug);

    Converter converter_ = nullptr;
};

// Options sampling by CV count at `step` samples per span (evenly in length when `even`, else
// in parameter) or by segment length `step` (spread evenly over the curve when `even`, else
// stepping exactly).
CurveOptions sampledBy(CurveSampling sampling, float step, bool even = false);
inline CurveOptions byCVCount(float rate, bool uniformByLength = false) {
    return sampledBy(CurveSampling::ByCVCount, rate, uniformByLength);
}
inline CurveOptions bySegmentLength(float segmentLength, bool even = false) {
    return sampledBy(CurveSampling::BySegmentLength, segmentLength, even);
}

// Reading the strand object.
inline std::vector<float3> positionsOf(const Zelvane::Object& strands) {
    return values<float3>(strands, Zelvane::Geometry::sPointPosition);
}
inline std::vector<std::uint32_t> offsetsOf(const Zelvane::Object& strands) {
    return values<std::uint32_t>(strands, Zelvane::Geometry::sStrandOffset);
}
// The members of the point tag "pointTag(<name>)", ascending; empty when there is no such tag.
std::vector<std::uint32_t> tagPoints(const Zelvane::Object& strands, const char* name);

// The texts of the errors captured.
std::vector<std::string> errorsOf(const KMessageCapture& capture);

// Matchers for points: one within `tolerance` of `expected`, and a pair within 2e-6 (for
// Pointwise).
MATCHER_P2(NearPoint, expected, tolerance, "") {
    return std::abs(arg.x - expected.x) <= tolerance && std::abs(arg.y - expected.y) <= tolerance &&
           std::abs(arg.z - expected.z) <= tolerance;
}
MATCHER(PointEq, "") {
    const auto& [actual, expected] = arg;
    return std::abs(actual.x - expected.x) <= 2e-6f && std::abs(actual.y - expected.y) <= 2e-6f &&
           std::abs(actual.z - expected.z) <= 2e-6f;
}
