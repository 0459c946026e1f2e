#pragma once

#include "BoardScene.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <kova/KFnNurbsCurve.h>
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
    void TearDown() override;

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

private:
    void* library_ = nullptr;
};

// Reading the strand object.
std::vector<float3> positionsOf(const Zelvane::Object& strands);
std::vector<std::uint32_t> offsetsOf(const Zelvane::Object& strands);
// The data of the geometry property `name` (empty when missing); its target in `target`.
std::vector<float> floatsOf(const Zelvane::Object& strands, const char* name,
                            std::string* target = nullptr);
std::vector<float3> vectorsOf(const Zelvane::Object& strands, const char* name);
// The members of the point tag "pointTag(<name>)", ascending; empty when there is no such tag.
std::vector<std::uint32_t> tagPoints(const Zelvane::Object& strands, const char* name);

// Matchers for points.
MATCHER_P2(NearPoint, expected, tolerance, "") {
    return std::abs(arg.x - expected.x) <= tolerance && std::abs(arg.y - expected.y) <= tolerance &&
           std::abs(arg.z - expected.z) <= tolerance;
}
