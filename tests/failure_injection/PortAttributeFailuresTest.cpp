// Host calls made to fail while the plug-in makes the host attribute of a new graph port. The
// port is refused at the first failing call and nothing further is made; what exists
// afterwards is written as text, one word per part that was made:
//   attribute  the port's attribute on the node
//   shape      the display shape of an object output ("zelShapeShape1")
//   named      its transform, renamed after it ("zel1")
//   shown      the output connected to the shape's "inputSurface"
//   shaded     the shape in "initialShadingGroup"
//   followed   a transforms port connected from its parent's "worldMatrix", a time port from
//              "time1.outTime"
//
// Port                  Host calls that can fail
// object input          KFnGenericAttribute::create, addDataAccept; KDGModifier::addAttribute,
//                       doIt; KFnDependencyNode::attribute
// object output         the above; KDagModifier::createNode, KDGModifier::renameNode, connect,
//                       commandToExecute and each doIt; KFnDependencyNode::findPlug
// object output by path KFnDependencyNode::findPlug, KDGModifier::connect, doIt
// transforms            KFnMatrixAttribute::create, KFnCompoundAttribute::create, addChild;
//                       KDGModifier::addAttribute, connect, doIt; KFnDependencyNode::findPlug,
//                       KPlug::elementByLogicalIndex
// scene info            KFnCompoundAttribute::create, addChild; KFnTypedAttribute::create,
//                       KFnNumericAttribute::create; KDGModifier::addAttribute, doIt
// time                  KFnUnitAttribute::create; KDGModifier::addAttribute, connect, doIt;
//                       KSelectionList::add, getDependNode; KFnDependencyNode::findPlug

#include "../plugin/PluginFixture.h"
#include "InjectedFailure.h"

#include <kova/KDagModifier.h>
#include <kova/KDagPath.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnSet.h>
#include <kova/KPlug.h>
#include <kova/KPlugArray.h>
#include <orsel/MetadataItem.h>
#include <zelvane/Object.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/inputbypath/OptionKeys.h>
#include <zelvane/simulation/Time.h>

using ZelvaneGraph::Executor::PortDirection;

namespace {

enum class Port {
    objectInput,        // "geo"
    objectOutput,       // "result", shown by a new shape
    objectOutputByPath, // "results", fed by path to the existing shape "viewer"
    transforms,         // "xform" on a shape
    sceneInfo,          // "scene"
    time,               // "now"
};

struct UnmadePort : FailureRow {
    Port port;
    Injection injection;
    const char* made;
};

KObject nodeNamed(const char* name) {
    return KScene::current().findNode(name);
}

// The names of the plugs feeding `node`.`attribute`.
std::string sourcesOf(const KObject& node, const char* attribute) {
    KPlugArray sources;
    KFnDependencyNode(node).findPlug(attribute, false).connectedTo(sources, true, false);
    return sources.length() == 1 ? sources[0].name().str() : std::string();
}

class UnmadePorts : public BoundPlugin, public ::testing::WithParamInterface<UnmadePort> {
protected:
    void SetUp() override {
        BoundPlugin::SetUp();
        if (GetParam().port == Port::objectOutputByPath) {
            KFnDependencyNode fnNode;
            viewer_ = fnNode.create("zelShape", "viewer");
        } else if (GetParam().port == Port::transforms) {
            KDagModifier modifier;
            const KObject transform = modifier.createNode("zelShape");
            ASSERT_TRUE(modifier.doIt());
            shape_ = KFnDagNode(transform).child(0);
            ASSERT_FALSE(shape_.isNull());
        }
    }

    // Adds the row's port as the executor does.
    bool add() const {
        switch (GetParam().port) {
        case Port::objectInput:
            return add(board_, "geo", PortDirection::Input, Zelvane::objectType());
        case Port::objectOutput:
            return add(board_, "result", PortDirection::Output, Zelvane::objectType());
        case Port::objectOutputByPath: {
            Orsel::MetadataItem byPath{Orsel::String(ZelvaneBoardInputByPath::Keys::kOptions)};
            byPath.setChild(Orsel::String(ZelvaneBoardInputByPath::Keys::kPaths), "viewer");
            Orsel::MetadataItem metadata;
            metadata.addChild(byPath);
            return add(board_, "results", PortDirection::Output,
                       Orsel::Type::arrayOf(Zelvane::objectType()), metadata);
        }
        case Port::transforms:
            return add(shape_, "xform", PortDirection::Input,
                       Zelvane::Geometry::Transform::graphTransformsType());
        case Port::sceneInfo:
            return add(board_, "scene", PortDirection::Input,
                       Zelvane::File::Project::sceneInfoType());
        case Port::time:
            return add(board_, "now", PortDirection::Input, Zelvane::Simulation::timeType());
        }
        return false;
    }
    bool add(const KObject& node, const char* name, PortDirection direction,
             const Orsel::Type& type, const Orsel::MetadataItem& metadata = {}) const {
        return translation().portAdded(node, Orsel::String(name), direction, type, metadata);
    }

    // The parts of the row's port that exist.
    std::string made() const {
        std::string parts;
        const auto add = [&parts](bool exists, const char* part) {
            if (exists) {
                parts += (parts.empty() ? "" : " ") + std::string(part);
            }
        };
        const KFnDependencyNode board(board_);
        switch (GetParam().port) {
        case Port::objectInput:
            add(board.hasAttribute("geo"), "attribute");
            break;
        case Port::objectOutput: {
            const KObject shape = nodeNamed("zelShapeShape1");
            KDagPath path;
            add(board.hasAttribute("result"), "attribute");
            add(!shape.isNull(), "shape");
            add(!nodeNamed("zel1").isNull(), "named");
            add(!shape.isNull() && sourcesOf(shape, "inputSurface") == "board1.result", "shown");
            add(!shape.isNull() && KFnDagNode(shape).getPath(path) &&
                    KFnSet(nodeNamed("initialShadingGroup")).isMember(path),
                "shaded");
            break;
        }
        case Port::objectOutputByPath:
            add(board.hasAttribute("results"), "attribute");
            add(sourcesOf(viewer_, "inputSurface") == "board1.results[0]", "shown");
            add(!nodeNamed("zelShapeShape1").isNull(), "shape");
            break;
        case Port::transforms:
            add(KFnDependencyNode(shape_).hasAttribute("xform"), "attribute");
            add(!sourcesOf(shape_, "totalTransform").empty(), "followed");
            break;
        case Port::sceneInfo:
            add(board.hasAttribute("scene"), "attribute");
            break;
        case Port::time:
            add(board.hasAttribute("now"), "attribute");
            add(sourcesOf(board_, "now") == "time1.outTime", "followed");
            break;
        }
        return parts.empty() ? "nothing" : parts;
    }

    KObject viewer_;
    KObject shape_;
};

TEST_P(UnmadePorts, StopAtTheFirstFailingCall) {
    const UnmadePort& row = GetParam();
    const LiveArrays before;
    row.injection.arm();
    EXPECT_FALSE(add());
    EXPECT_TRUE(row.injection.fired());
    KFailureInjection::reset();
    EXPECT_EQ(made(), row.made);
    EXPECT_TRUE(before.unchanged());
}

INSTANTIATE_TEST_SUITE_P(
    EveryPortCall, UnmadePorts,
    ::testing::Values(
        UnmadePort{"InputAttribute", Port::objectInput, {"KFnGenericAttribute::create"}, "nothing"},
        UnmadePort{"InputDataKind",
                   Port::objectInput,
                   {"KFnGenericAttribute::addDataAccept", 2},
                   "nothing"},
        UnmadePort{"InputLookup", Port::objectInput, {"KFnDependencyNode::attribute"}, "attribute"},
        UnmadePort{"InputAdd", Port::objectInput, {"KDGModifier::addAttribute"}, "nothing"},
        UnmadePort{"InputAddDone", Port::objectInput, {"KDGModifier::doIt"}, "nothing"},
        UnmadePort{"OutputAddDone", Port::objectOutput, {"KDGModifier::doIt"}, "nothing"},
        UnmadePort{"Shape", Port::objectOutput, {"KDagModifier::createNode"}, "attribute"},
        UnmadePort{"ShapeDone", Port::objectOutput, {"KDGModifier::doIt", 1}, "attribute"},
        UnmadePort{"ShapeName", Port::objectOutput, {"KDGModifier::renameNode"}, "attribute shape"},
        UnmadePort{
            "ShapeNameDone", Port::objectOutput, {"KDGModifier::doIt", 2}, "attribute shape"},
        UnmadePort{"ShapeInput",
                   Port::objectOutput,
                   {"KFnDependencyNode::findPlug", 1},
                   "attribute shape named"},
        UnmadePort{
            "ShapeConnect", Port::objectOutput, {"KDGModifier::connect"}, "attribute shape named"},
        UnmadePort{"ShapeConnectDone",
                   Port::objectOutput,
                   {"KDGModifier::doIt", 3},
                   "attribute shape named"},
        UnmadePort{"ShadingGroup",
                   Port::objectOutput,
                   {"KDGModifier::commandToExecute"},
                   "attribute shape named shown"},
        UnmadePort{"ShadingGroupDone",
                   Port::objectOutput,
                   {"KDGModifier::doIt", 4},
                   "attribute shape named shown"},
        UnmadePort{"FoundInput",
                   Port::objectOutputByPath,
                   {"KFnDependencyNode::findPlug", 1},
                   "attribute"},
        UnmadePort{"FoundConnect", Port::objectOutputByPath, {"KDGModifier::connect"}, "attribute"},
        UnmadePort{
            "FoundConnectDone", Port::objectOutputByPath, {"KDGModifier::doIt", 1}, "attribute"},
        UnmadePort{"Matrix", Port::transforms, {"KFnMatrixAttribute::create"}, "nothing"},
        UnmadePort{
            "TransformsCompound", Port::transforms, {"KFnCompoundAttribute::create"}, "nothing"},
        UnmadePort{"MatrixChild", Port::transforms, {"KFnCompoundAttribute::addChild"}, "nothing"},
        UnmadePort{"TransformsAdd", Port::transforms, {"KDGModifier::addAttribute"}, "nothing"},
        UnmadePort{"TransformsAddDone", Port::transforms, {"KDGModifier::doIt"}, "nothing"},
        UnmadePort{"WorldMatrix", Port::transforms, {"KFnDependencyNode::findPlug"}, "attribute"},
        UnmadePort{
            "WorldMatrixElement", Port::transforms, {"KPlug::elementByLogicalIndex"}, "attribute"},
        UnmadePort{
            "TotalTransform", Port::transforms, {"KFnDependencyNode::findPlug", 1}, "attribute"},
        UnmadePort{"TransformsConnect", Port::transforms, {"KDGModifier::connect"}, "attribute"},
        UnmadePort{
            "TransformsConnectDone", Port::transforms, {"KDGModifier::doIt", 1}, "attribute"},
        UnmadePort{"SceneCompound", Port::sceneInfo, {"KFnCompoundAttribute::create"}, "nothing"},
        UnmadePort{"SceneString", Port::sceneInfo, {"KFnTypedAttribute::create", 1}, "nothing"},
        UnmadePort{"SceneChild", Port::sceneInfo, {"KFnCompoundAttribute::addChild", 3}, "nothing"},
        UnmadePort{"SceneFlag", Port::sceneInfo, {"KFnNumericAttribute::create"}, "nothing"},
        UnmadePort{"SceneAdd", Port::sceneInfo, {"KDGModifier::addAttribute"}, "nothing"},
        UnmadePort{"SceneAddDone", Port::sceneInfo, {"KDGModifier::doIt"}, "nothing"},
        UnmadePort{"Time", Port::time, {"KFnUnitAttribute::create"}, "nothing"},
        UnmadePort{"TimeAdd", Port::time, {"KDGModifier::addAttribute"}, "nothing"},
        UnmadePort{"TimeAddDone", Port::time, {"KDGModifier::doIt"}, "nothing"},
        UnmadePort{"TimeNodeName", Port::time, {"KSelectionList::add"}, "attribute"},
        UnmadePort{"TimeNode", Port::time, {"KSelectionList::getDependNode"}, "attribute"},
        UnmadePort{"OutTime", Port::time, {"KFnDependencyNode::findPlug"}, "attribute"},
        UnmadePort{"TimeConnect", Port::time, {"KDGModifier::connect"}, "attribute"},
        UnmadePort{"TimeConnectDone", Port::time, {"KDGModifier::doIt", 1}, "attribute"}),
    RowName());

} // namespace
