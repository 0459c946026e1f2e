#include "CurveFixture.h"

#include <cmath>
#include <kova/KDoubleArray.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnGeometryData.h>
#include <kova/KFnNurbsCurveData.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KFnTransform.h>
#include <kova/KIntArray.h>
#include <kova/KPointArray.h>
#include <numbers>
#include <zelvane/geometry/Names.h>

namespace curves {

Curve polyline(const std::vector<KPoint>& points) {
    Curve curve{points, {}, 1};
    for (std::size_t i = 0; i < points.size(); ++i) {
        curve.knots.push_back(static_cast<double>(i));
    }
    return curve;
}

Curve circle(double radius) {
    const double h = std::sqrt(0.5);
    const double xy[9][2] = {{1, 0},   {1, 1},  {0, 1},  {-1, 1}, {-1, 0},
                             {-1, -1}, {0, -1}, {1, -1}, {1, 0}};
    Curve curve{{}, {0, 0, 1, 1, 2, 2, 3, 3, 4, 4}, 2, KFnNurbsCurve::kOpen, true};
    for (int i = 0; i < 9; ++i) {
        const double w = i % 2 == 1 ? h : 1.0;
        curve.cvs.emplace_back(radius * xy[i][0] * w, radius * xy[i][1] * w, 0.0, w);
    }
    return curve;
}

Curve hexagon() {
    Curve curve{{}, {}, 3, KFnNurbsCurve::kPeriodic};
    for (int i = 0; i < 9; ++i) {
        const double angle = (i % 6) * std::numbers::pi / 3.0;
        curve.cvs.emplace_back(std::cos(angle), std::sin(angle), 0.0);
    }
    for (int k = 0; k <= 10; ++k) {
        curve.knots.push_back(k);
    }
    return curve;
}

} // namespace curves

namespace {

KObject create(const curves::Curve& curve, const KObject& owner) {
    KStatus status;
    KFnNurbsCurve fn;
    const KObject made = fn.create(KPointArray(curve.cvs.data(), unsigned(curve.cvs.size())),
                                   KDoubleArray(curve.knots.data(), unsigned(curve.knots.size())),
                                   curve.degree, curve.form, false, curve.rational, owner, &status);
    EXPECT_TRUE(status) << status.errorString();
    return owner.isNull() ? fn.object() : made;
}

} // namespace

void CurveConversion::SetUp() {
    BoardScene::SetUp();
    converter_ = pluginFunction<Converter>(
        "_Z18kovaCurvesToObjectRKSt6vectorI5KPlugSaIS0_EERKS_I11KDataHandleSaIS5_EERKN23Zelvane"
        "BoardInputByPath12CurveOptionsEbS0_");
    ASSERT_NE(converter_, nullptr);
    ASSERT_TRUE(addPort("in", ZelvaneGraph::Executor::PortDirection::Input, Zelvane::objectType()));
}

KObject CurveConversion::curveData(const curves::Curve& curve) {
    const KObject data = KFnNurbsCurveData().create();
    create(curve, data);
    return data;
}

KObject CurveConversion::curveShape(const curves::Curve& curve, const KVector& translation) {
    const KObject shape = create(curve, KObject());
    const KObject transform = KFnDagNode(shape).parent(0);
    EXPECT_TRUE(KFnTransform(transform).setTranslation(translation, KSpace::kTransform));
    return shape;
}

void CurveConversion::tagCVs(const KObject& data, const char* name, const std::vector<int>& cvs,
                             bool complete) {
    KFnSingleIndexedComponent component;
    const KObject contents = component.create(KFn::kCurveCVComponent);
    for (int cv : cvs) {
        ASSERT_TRUE(component.addElement(cv));
    }
    if (complete) {
        ASSERT_TRUE(component.setCompleteData(KFnNurbsCurve(data).numCVs()));
    }
    KFnGeometryData geometry(data);
    ASSERT_TRUE(geometry.addComponentTag(name));
    ASSERT_TRUE(geometry.setComponentTagContents(name, contents));
}

KPlug CurveConversion::curveSource(const std::string& name, const KObject& data) const {
    return dataSource(name.c_str(), "curve", KFnData::kNurbsCurve, data);
}

KDataHandle CurveConversion::valueOf(const KPlug& plug) {
    KDataHandle handle;
    EXPECT_TRUE(plug.getValue(handle));
    return handle;
}

CurveConversion::Sources CurveConversion::sources(const std::vector<KObject>& curveData) const {
    Sources made;
    for (std::size_t i = 0; i < curveData.size(); ++i) {
        made.plugs.push_back(curveSource("crv" + std::to_string(i + 1), curveData[i]));
        made.handles.push_back(valueOf(made.plugs.back()));
    }
    return made;
}

Orsel::Ptr<Zelvane::Object> CurveConversion::convert(const Sources& sources,
                                                     const CurveOptions& options) const {
    return converter_(sources.plugs, sources.handles, options, true, plug("board1.in"));
}

CurveOptions sampledBy(CurveSampling sampling, float step, bool even) {
    CurveOptions options;
    options.sampling = sampling;
    const bool byCount = sampling == CurveSampling::ByCVCount;
    (byCount ? options.sampleRate : options.segmentLength) = step;
    (byCount ? options.uniformByLength : options.evenSegments) = even;
    return options;
}

std::vector<std::string> errorsOf(const KMessageCapture& capture) {
    std::vector<std::string> texts;
    for (const KString& text : capture.errors()) {
        texts.emplace_back(text.view());
    }
    return texts;
}

std::vector<std::uint32_t> tagPoints(const Zelvane::Object& strands, const char* name) {
    const auto members = propertyData<bool>(strands, std::string("pointTag(") + name + ")");
    std::vector<std::uint32_t> points;
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (members[i]) {
            points.push_back(static_cast<std::uint32_t>(i));
        }
    }
    return points;
}
