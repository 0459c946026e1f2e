// Host calls of input translation and of the geometry dispatcher made to fail, as the board
// translates its input ports before an evaluation: a source, element or value that can't be
// read is skipped or gives no value; nothing is reported but a curve that can't be read. What
// the graph then sees on the port is written as text: "none" for no value, "{a,b}" for an
// object with properties a and b (its points counted: "P[3]"), "[...]" for an array of
// objects, "time", "transforms" or "scene" for the other port types.

#include "../curves_in/CurveFixture.h"
#include "InjectedFailure.h"

#include <algorithm>
#include <kova/KDoubleArray.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnMesh.h>
#include <kova/KFnMeshData.h>
#include <kova/KFnVectorArrayData.h>
#include <kova/KVectorArray.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/simulation/Time.h>

using ZelvaneGraph::Executor::PortDirection;

namespace {

std::string describe(const Orsel::Ptr<Orsel::Class>& entry) {
    const auto object = Orsel::dynamicPtrCast<Zelvane::Object>(entry);
    if (!object) {
        return "null";
    }
    std::vector<std::string> names;
    for (const Orsel::String& name : object->propertyNames()) {
        names.push_back(name.toStdString());
    }
    // Points are counted, so that empty geometry shows.
    if (const auto points =
            object->getArray<Zelvane::Math::float3>(Zelvane::Geometry::sPointPosition)) {
        std::replace(names.begin(), names.end(), std::string(Zelvane::Geometry::sPointPosition),
                     "P[" + std::to_string(points->size()) + "]");
    }
    std::sort(names.begin(), names.end());
    std::string text = "{";
    for (const std::string& name : names) {
        text += (text.size() > 1 ? "," : "") + name;
    }
    return text + "}";
}

// What the graph sees on a port.
std::string describe(const Orsel::Value& value) {
    if (value.empty()) {
        return "none";
    }
    if (value.get<Zelvane::Simulation::Time>()) {
        return "time";
    }
    if (value.get<Zelvane::Geometry::Transform::GraphTransforms>()) {
        return "transforms";
    }
    if (value.get<Zelvane::File::Project::SceneInfo>()) {
        return "scene";
    }
    if (value.type().isArray()) {
        std::string text = "[";
        if (const auto objects = value.getOpaqueArray()) {
            for (const Orsel::Ptr<Orsel::Class>& entry : *objects) {
                text += (text.size() > 1 ? "," : "") + describe(entry);
            }
        }
        return text + "]";
    }
    return describe(value.getOrselClass<Orsel::Class>());
}

enum class Port {
    doubles, // "in" fed by a double array "w"
    vectors, // "in" fed by a vector array "v"
    mesh,    // "in" fed by a triangle mesh
    curve,   // "in" fed by a circle
    array,   // "many", an array of objects, fed by "w" and "v"
    merged,  // "merged", an object on an array attribute, fed by two circles
    time,    // "now", following the scene's time
    transforms,
    scene,
};
using enum Port;

struct UnreadableInput : FailureRow {
    Port port;
    Injection injection;
    const char* seen;         // what the graph sees on the port
    const char* message = ""; // the one error reported; "" for none
};

class UnreadableInputs : public CurveConversion,
                         public ::testing::WithParamInterface<UnreadableInput> {
protected:
    void SetUp() override {
        CurveConversion::SetUp();
        watch(feed(GetParam().port));
    }

    // Makes the port and its sources; returns the port's name.
    std::string feed(Port port) {
        switch (port) {
        case doubles:
            connect(doublesSource(), plug("board1.in"));
            return "in";
        case vectors:
            connect(vectorsSource(), plug("board1.in"));
            return "in";
        case mesh:
            connect(triangle(), plug("board1.in"));
            return "in";
        case curve:
            connect(curveSource("crv", curveData(curves::circle(1.0))), plug("board1.in"));
            return "in";
        case array:
            EXPECT_TRUE(
                addPort("many", PortDirection::Input, Orsel::Type::arrayOf(Zelvane::objectType())));
            connect(doublesSource(), plug("board1.many").elementByLogicalIndex(0));
            connect(vectorsSource(), plug("board1.many").elementByLogicalIndex(1));
            return "many";
        case merged:
            addArrayAttribute(board_, "merged", {KFnData::kNurbsCurve});
            EXPECT_TRUE(addPort("merged", PortDirection::Input, Zelvane::objectType()));
            connect(curveSource("crv1", curveData(curves::circle(1.0))),
                    plug("board1.merged").elementByLogicalIndex(0));
            connect(curveSource("crv2", curveData(curves::hexagon())),
                    plug("board1.merged").elementByLogicalIndex(1));
            return "merged";
        case time:
            EXPECT_TRUE(addPort("now", PortDirection::Input, Zelvane::Simulation::timeType()));
            return "now";
        case transforms:
            EXPECT_TRUE(addPort("xf", PortDirection::Input,
                                Zelvane::Geometry::Transform::graphTransformsType()));
            return "xf";
        case scene:
            EXPECT_TRUE(
                addPort("scene", PortDirection::Input, Zelvane::File::Project::sceneInfoType()));
            return "scene";
        }
        return {};
    }
    KPlug doublesSource() const {
        KFnDoubleArrayData fnData;
        return dataSource("dbl", "w", KFnData::kDoubleArray,
                          fnData.create(KDoubleArray({1.5, 2.5})));
    }
    KPlug vectorsSource() const {
        KFnVectorArrayData fnData;
        return dataSource("vec", "v", KFnData::kVectorArray,
                          fnData.create(KVectorArray({KVector(1, 2, 3)})));
    }
    KPlug triangle() const {
        KFnMeshData fnData;
        const KObject data = fnData.create();
        KFnMesh fnMesh;
        fnMesh.create(3, 1, KFloatPointArray({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), KIntArray({3}),
                      KIntArray({0, 1, 2}), data);
        return dataSource("tri", "m", KFnData::kMesh, data);
    }
};

TEST_P(UnreadableInputs, GiveTheGraphWhatCouldBeRead) {
    const UnreadableInput& row = GetParam();
    // The first evaluation makes the runtime's lasting objects.
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    ASSERT_NE(describe(seen_), "none");
    seen_ = Orsel::Value();
    const LiveArrays before;
    {
        const KMessageCapture capture;
        EXPECT_TRUE(row.injection.during([this] { return bool(ZelvaneBoard::evaluate(board_)); }));
        EXPECT_EQ(describe(seen_), row.seen);
        EXPECT_EQ(capture.errors(),
                  *row.message ? std::vector<KString>{row.message} : std::vector<KString>{});
        seen_ = Orsel::Value();
    }
    EXPECT_TRUE(before.unchanged());
}

constexpr const char* kStrands = "{P[18],pointCount,pointRatio,strandCount,strandOffset}";
constexpr const char* kNoStrands = "{P[0],pointCount,pointRatio,strandCount,strandOffset}";

INSTANTIATE_TEST_SUITE_P(
    EveryInputRead, UnreadableInputs,
    ::testing::ValuesIn(std::vector<UnreadableInput>{
        // The evaluation reads the board's own plugs first.
        {"Sources", doubles, {"KPlug::connectedTo"}, "{}"},
        {"SourceValue", doubles, {"KPlug::getValue", 2}, "{}"},
        {"PortValue", doubles, {"KDataBlock::inputValue"}, "{w}"},
        {"DoubleArrayAttach", doubles, {"KFnDoubleArrayData::KFnDoubleArrayData"}, "none"},
        {"DoubleArrayCopy", doubles, {"KArray::allocate"}, "none"},
        {"VectorArrayAttach", vectors, {"KFnVectorArrayData::KFnVectorArrayData"}, "none"},
        {"VectorArrayCopy", vectors, {"KArray::allocate"}, "none"},
        {"Mesh", mesh, {"KFnMesh::KFnMesh"}, "{}"},
        {"Curve",
         curve,
         {"KFnNurbsCurve::setObject"},
         "{}",
         "Failed to translate Kova curve 'crv' to Zelvane strands for input 'in' "
         "in 'board1'. Curve is invalid."},
        {"Element", array, {"KPlug::elementByPhysicalIndex"}, "[{v}]"},
        {"ElementSource", array, {"KPlug::elementByLogicalIndex"}, "[{w},{v}]"},
        {"ElementArray", array, {"KFnDoubleArrayData::KFnDoubleArrayData"}, "[null,{v}]"},
        {"ArrayValue", array, {"KDataBlock::inputArrayValue"}, "[]"},
        {"MergedElement", merged, {"KArrayDataHandle::jumpToArrayElement", 1}, "none"},
        {"MergedElementValue", merged, {"KArrayDataHandle::inputValue", 1}, "none"},
        {"MergedElementPlug", merged, {"KPlug::elementByPhysicalIndex", 1}, kStrands},
        {"MergedValue", merged, {"KDataBlock::inputArrayValue"}, kNoStrands},
        // The board's own value is read first.
        {"Time", time, {"KDataBlock::inputValue", 1}, "none"},
        {"Transforms", transforms, {"KDataBlock::inputValue", 1}, "none"},
        {"SceneInfo", scene, {"KDataBlock::inputValue", 1}, "none"}}),
    RowName());

} // namespace
