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

#include "../plugin/BoardScene.h"
#include "InjectedFailure.h"

#include <kova/KDagModifier.h>
#include <kova/KDagPath.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnSet.h>
#include <kova/KPlug.h>
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
using enum Port;

struct UnmadePort : FailureRow {
    Port port;
    Injection injection;
    const char* made;
};

KObject nodeNamed(const char* name) {
    return KScene::current().findNode(name);
}

class UnmadePorts : public BoardScene, public ::testing::WithParamInterface<UnmadePort> {
protected:
    void SetUp() override {
        BoardScene::SetUp();
        if (GetParam().port == objectOutputByPath) {
            KFnDependencyNode fnNode;
            viewer_ = fnNode.create("zelShape", "viewer");
        } else if (GetParam().port == transforms) {
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
        case objectInput:
            return add(board_, "geo", PortDirection::Input, Zelvane::objectType());
        case objectOutput:
            return add(board_, "result", PortDirection::Output, Zelvane::objectType());
        case objectOutputByPath: {
            Orsel::MetadataItem byPath{Orsel::String(ZelvaneBoardInputByPath::Keys::kOptions)};
            byPath.setChild(Orsel::String(ZelvaneBoardInputByPath::Keys::kPaths), "viewer");
            Orsel::MetadataItem metadata;
            metadata.addChild(byPath);
            return add(board_, "results", PortDirection::Output,
                       Orsel::Type::arrayOf(Zelvane::objectType()), metadata);
        }
        case transforms:
            return add(shape_, "xform", PortDirection::Input,
                       Zelvane::Geometry::Transform::graphTransformsType());
        case sceneInfo:
            return add(board_, "scene", PortDirection::Input,
                       Zelvane::File::Project::sceneInfoType());
        case time:
            return add(board_, "now", PortDirection::Input, Zelvane::Simulation::timeType());
        }
        return false;
    }
    bool add(const KObject& node, const char* name, PortDirection direction,
             const Orsel::Type& type, const Orsel::MetadataItem& metadata = {}) const {
        return translation().portAdded(node, Orsel::String(name), direction, type, metadata);
    }

    // The one plug feeding `node`.`attribute` ("" for none or several).
    static std::string sourceOf(const KObject& node, const char* attribute) {
        const auto sources = sourcesOf(KFnDependencyNode(node).findPlug(attribute, false));
        return sources.size() == 1 ? sources[0] : std::string();
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
        case objectInput:
            add(board.hasAttribute("geo"), "attribute");
            break;
        case objectOutput: {
            const KObject shape = nodeNamed("zelShapeShape1");
            KDagPath path;
            add(board.hasAttribute("result"), "attribute");
            add(!shape.isNull(), "shape");
            add(!nodeNamed("zel1").isNull(), "named");
            add(!shape.isNull() && sourceOf(shape, "inputSurface") == "board1.result", "shown");
            add(!shape.isNull() && KFnDagNode(shape).getPath(path) &&
                    KFnSet(nodeNamed("initialShadingGroup")).isMember(path),
                "shaded");
            break;
        }
        case objectOutputByPath:
            add(board.hasAttribute("results"), "attribute");
            add(sourceOf(viewer_, "inputSurface") == "board1.results[0]", "shown");
            add(!nodeNamed("zelShapeShape1").isNull(), "shape");
            break;
        case transforms:
            add(KFnDependencyNode(shape_).hasAttribute("xform"), "attribute");
            add(!sourceOf(shape_, "totalTransform").empty(), "followed");
            break;
        case sceneInfo:
            add(board.hasAttribute("scene"), "attribute");
            break;
        case time:
            add(board.hasAttribute("now"), "attribute");
            add(sourceOf(board_, "now") == "time1.outTime", "followed");
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
    EXPECT_FALSE(row.injection.during([this] { return add(); }));
    EXPECT_EQ(made(), row.made);
    EXPECT_TRUE(before.unchanged());
}

INSTANTIATE_TEST_SUITE_P(
    EveryPortCall, UnmadePorts,
    ::testing::ValuesIn(std::vector<UnmadePort>{
        {"InputAttribute", objectInput, {"KFnGenericAttribute::create"}, "nothing"},
        {"InputDataKind", objectInput, {"KFnGenericAttribute::addDataAccept", 2}, "nothing"},
        {"InputLookup", objectInput, {"KFnDependencyNode::attribute"}, "attribute"},
        {"InputAdd", objectInput, {"KDGModifier::addAttribute"}, "nothing"},
        {"InputAddDone", objectInput, {"KDGModifier::doIt"}, "nothing"},
        {"OutputAddDone", objectOutput, {"KDGModifier::doIt"}, "nothing"},
        {"Shape", objectOutput, {"KDagModifier::createNode"}, "attribute"},
        {"ShapeDone", objectOutput, {"KDGModifier::doIt", 1}, "attribute"},
        {"ShapeName", objectOutput, {"KDGModifier::renameNode"}, "attribute shape"},
        {"ShapeNameDone", objectOutput, {"KDGModifier::doIt", 2}, "attribute shape"},
        {"ShapeInput", objectOutput, {"KFnDependencyNode::findPlug", 1}, "attribute shape named"},
        {"ShapeConnect", objectOutput, {"KDGModifier::connect"}, "attribute shape named"},
        {"ShapeConnectDone", objectOutput, {"KDGModifier::doIt", 3}, "attribute shape named"},
        {"ShadingGroup",
         objectOutput,
         {"KDGModifier::commandToExecute"},
         "attribute shape named shown"},
        {"ShadingGroupDone", objectOutput, {"KDGModifier::doIt", 4}, "attribute shape named shown"},
        {"FoundInput", objectOutputByPath, {"KFnDependencyNode::findPlug", 1}, "attribute"},
        {"FoundConnect", objectOutputByPath, {"KDGModifier::connect"}, "attribute"},
        {"FoundConnectDone", objectOutputByPath, {"KDGModifier::doIt", 1}, "attribute"},
        {"Matrix", transforms, {"KFnMatrixAttribute::create"}, "nothing"},
        {"TransformsCompound", transforms, {"KFnCompoundAttribute::create"}, "nothing"},
        {"MatrixChild", transforms, {"KFnCompoundAttribute::addChild"}, "nothing"},
        {"TransformsAdd", transforms, {"KDGModifier::addAttribute"}, "nothing"},
        {"TransformsAddDone", transforms, {"KDGModifier::doIt"}, "nothing"},
        {"WorldMatrix", transforms, {"KFnDependencyNode::findPlug"}, "attribute"},
        {"WorldMatrixElement", transforms, {"KPlug::elementByLogicalIndex"}, "attribute"},
        {"TotalTransform", transforms, {"KFnDependencyNode::findPlug", 1}, "attribute"},
        {"TransformsConnect", transforms, {"KDGModifier::connect"}, "attribute"},
        {"TransformsConnectDone", transforms, {"KDGModifier::doIt", 1}, "attribute"},
        {"SceneCompound", sceneInfo, {"KFnCompoundAttribute::create"}, "nothing"},
        {"SceneString", sceneInfo, {"KFnTypedAttribute::create", 1}, "nothing"},
        {"SceneChild", sceneInfo, {"KFnCompoundAttribute::addChild", 3}, "nothing"},
        {"SceneFlag", sceneInfo, {"KFnNumericAttribute::create"}, "nothing"},
        {"SceneAdd", sceneInfo, {"KDGModifier::addAttribute"}, "nothing"},
        {"SceneAddDone", sceneInfo, {"KDGModifier::doIt"}, "nothing"},
        {"Time", time, {"KFnUnitAttribute::create"}, "nothing"},
        {"TimeAdd", time, {"KDGModifier::addAttribute"}, "nothing"},
        {"TimeAddDone", time, {"KDGModifier::doIt"}, "nothing"},
        {"TimeNodeName", time, {"KSelectionList::add"}, "attribute"},
        {"TimeNode", time, {"KSelectionList::getDependNode"}, "attribute"},
        {"OutTime", time, {"KFnDependencyNode::findPlug"}, "attribute"},
        {"TimeConnect", time, {"KDGModifier::connect"}, "attribute"},
        {"TimeConnectDone", time, {"KDGModifier::doIt", 1}, "attribute"}}),
    RowName());

} // namespace
