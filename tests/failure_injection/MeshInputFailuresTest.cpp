// Host calls of the mesh converter and of the material reader made to fail.
//
// Host call                                   Result
// KFnMesh (attach), numVertices,              no object, silently, every array released
//   numFaceVertices, numPolygons,
//   getRawPoints, getVertices;
//   KFnGeometryData (attach)
// getRawNormals, getNormalIds, numNormals     no face-vertex normals
// getUVSetNames                               no UV sets
// getUVs, getAssignedUVs                      that UV set left out, reported when logging
// getColorSetNames                            no colour sets
// getColorRepresentation,                     that colour set left out, reported when logging
//   getFaceVertexColors
// componentTags                               no component tags
// componentTagCategory, componentTagContents, that tag left out
//   KFnSingleIndexedComponent (attach),
//   getElements
// KItDependencyGraph, KFnSet::getMembers      no sets
// KSelectionList::getDagPath,                 that member of the set left out
//   KDagPath::extendToShape,
//   KFnSingleIndexedComponent (attach),
//   getElements
// KFnDagNode::getPath, KSelectionList::add,   no shading group: both shader names empty
//   KGlobal::getAssociatedSets
// KFnDependencyNode::findPlug,                that shader's name empty
//   KPlug::connectedTo on a shader input

#include "../mesh_in/MeshInputFixture.h"
#include "InjectedFailure.h"

#include <algorithm>
#include <kova/KGlobal.h>
#include <kova/KMessageCapture.h>
#include <set>

namespace {

// The mesh with every channel, converted through the exported converter with every optional
// output on.
class MeshFailures : public MeshInput {
protected:
    void SetUp() override {
        MeshInput::SetUp();
        logRuntimeMessages(true);
        shape_ = makeMeshWithEveryChannel();
        options_.pointNormals = true;
        // The first conversion makes the runtime's lasting objects (prototypes and the like).
        ASSERT_TRUE(convert(shape_, options_));
    }

    // The conversion with `injection` armed, and whether every graph and host array it made is
    // released once the result is dropped.
    struct Outcome {
        bool converted = false;
        std::set<std::string> properties;
        std::vector<KString> errors;
        bool fired = false;
        ::testing::AssertionResult arraysReleased = ::testing::AssertionSuccess();
    };
    Outcome convertFailing(const Injection& injection) {
        const KPlug source = worldMesh(shape_);
        KDataHandle handle;
        EXPECT_TRUE(source.getValue(handle));
        const LiveArrays before;
        Outcome outcome;
        {
            KMessageCapture capture;
            injection.arm();
            auto object = converter_(source, handle, options_);
            outcome.fired = injection.fired();
            KFailureInjection::reset();
            outcome.converted = bool(object);
            if (object) {
                for (const std::string& name : propertyNames(*object)) {
                    outcome.properties.insert(name);
                }
            }
            outcome.errors = capture.errors();
        }
        outcome.arraysReleased = before.unchanged();
        source.destructHandle(handle);
        return outcome;
    }

    KObject shape_;
    MeshOptions options_;
};

// Failures that leave no mesh: the host can't give the mesh, its counts, points or faces, or
// its geometry data (after points, faces, normals, UVs and colours were converted).
struct UnreadableMesh : FailureRow {
    Injection injection;
};

class UnreadableMeshes : public MeshFailures,
                         public ::testing::WithParamInterface<UnreadableMesh> {};

TEST_P(UnreadableMeshes, GiveNoObjectSilentlyAndReleaseEveryArray) {
    const Outcome outcome = convertFailing(GetParam().injection);
    EXPECT_TRUE(outcome.fired);
    EXPECT_FALSE(outcome.converted);
    EXPECT_TRUE(outcome.arraysReleased);
    EXPECT_TRUE(outcome.errors.empty());
}

INSTANTIATE_TEST_SUITE_P(
    EveryCoreRead, UnreadableMeshes,
    ::testing::Values(UnreadableMesh{"MeshAttach", {"KFnMesh::KFnMesh"}},
                      UnreadableMesh{"VertexCount", {"KFnMesh::numVertices"}},
                      UnreadableMesh{"FaceVertexCount", {"KFnMesh::numFaceVertices"}},
                      UnreadableMesh{"PolygonCount", {"KFnMesh::numPolygons"}},
                      UnreadableMesh{"Points", {"KFnMesh::getRawPoints"}},
                      UnreadableMesh{"Faces", {"KFnMesh::getVertices"}},
                      UnreadableMesh{"GeometryData", {"KFnGeometryData::KFnGeometryData"}}),
    RowName());

// Failures that leave one channel, tag or set out: the rest of the mesh is converted.
struct UnreadableChannel : FailureRow {
    Injection injection;
    std::vector<std::string> missing; // properties that the failure leaves out
    const char* message;              // shown only with logging on; "" for none
};

class UnreadableChannels : public MeshFailures,
                           public ::testing::WithParamInterface<UnreadableChannel> {};

TEST_P(UnreadableChannels, LeaveOutOnlyThatChannel) {
    const UnreadableChannel& row = GetParam();
    for (const bool logging : {false, true}) {
        logRuntimeMessages(logging);
        const Outcome outcome = convertFailing(row.injection);
        EXPECT_TRUE(outcome.fired);
        ASSERT_TRUE(outcome.converted);
        const std::set<std::string> all{
            "P",           "faceVertexPoint",   "faceOffset", "N",
            "faceVertexN", "faceVertexN_index", "uv",         "uv_index",
            "tint",        "faceTag(top)",      "pins"};
        for (const std::string& name : all) {
            const bool missing =
                std::find(row.missing.begin(), row.missing.end(), name) != row.missing.end();
            EXPECT_EQ(outcome.properties.count(name), missing ? 0u : 1u) << name;
        }
        EXPECT_EQ(outcome.errors, logging && *row.message ? std::vector<KString>{row.message}
                                                          : std::vector<KString>{})
            << (logging ? "logging" : "not logging");
        EXPECT_TRUE(outcome.arraysReleased);
    }
}

INSTANTIATE_TEST_SUITE_P(
    EveryChannelRead, UnreadableChannels,
    ::testing::Values(
        UnreadableChannel{
            "RawNormals", {"KFnMesh::getRawNormals"}, {"faceVertexN", "faceVertexN_index"}, ""},
        UnreadableChannel{
            "NormalIds", {"KFnMesh::getNormalIds"}, {"faceVertexN", "faceVertexN_index"}, ""},
        UnreadableChannel{
            "NormalCount", {"KFnMesh::numNormals"}, {"faceVertexN", "faceVertexN_index"}, ""},
        UnreadableChannel{"UVSetNames", {"KFnMesh::getUVSetNames"}, {"uv", "uv_index"}, ""},
        UnreadableChannel{"UVs",
                          {"KFnMesh::getUVs"},
                          {"uv", "uv_index"},
                          "Could not convert this uv component: map1"},
        UnreadableChannel{"AssignedUVs",
                          {"KFnMesh::getAssignedUVs"},
                          {"uv", "uv_index"},
                          "Could not convert this uv component: map1"},
        UnreadableChannel{"ColorSetNames", {"KFnMesh::getColorSetNames"}, {"tint"}, ""},
        UnreadableChannel{"ColorRepresentation",
                          {"KFnMesh::getColorRepresentation"},
                          {"tint"},
                          "Could not convert this color set: tint"},
        UnreadableChannel{"FaceVertexColors",
                          {"KFnMesh::getFaceVertexColors"},
                          {"tint"},
                          "Could not convert this color set: tint"},
        UnreadableChannel{"TagNames", {"KFnGeometryData::componentTags"}, {"faceTag(top)"}, ""},
        UnreadableChannel{
            "TagCategory", {"KFnGeometryData::componentTagCategory"}, {"faceTag(top)"}, ""},
        UnreadableChannel{
            "TagContents", {"KFnGeometryData::componentTagContents"}, {"faceTag(top)"}, ""},
        UnreadableChannel{"TagComponentAttach",
                          {"KFnSingleIndexedComponent::KFnSingleIndexedComponent"},
                          {"faceTag(top)"},
                          ""},
        // Tags read their elements first, so a set member's read is the second.
        UnreadableChannel{
            "TagElements", {"KFnSingleIndexedComponent::getElements"}, {"faceTag(top)"}, ""},
        UnreadableChannel{"Sets", {"KItDependencyGraph::KItDependencyGraph"}, {"pins"}, ""},
        UnreadableChannel{"SetMembers", {"KFnSet::getMembers"}, {"pins"}, ""},
        UnreadableChannel{"SetMemberPath", {"KSelectionList::getDagPath"}, {"pins"}, ""},
        UnreadableChannel{"SetMemberShape", {"KDagPath::extendToShape"}, {"pins"}, ""},
        UnreadableChannel{"SetMemberComponentAttach",
                          {"KFnSingleIndexedComponent::KFnSingleIndexedComponent", 1},
                          {"pins"},
                          ""},
        UnreadableChannel{
            "SetMemberElements", {"KFnSingleIndexedComponent::getElements", 1}, {"pins"}, ""}),
    RowName());

// An n-gon mesh in a shading group with surface shader "red" and displacement shader "bumps",
// sent through a board's object port: the dispatcher reads the materials of the converted
// mesh. A failing read never fails the mesh; it only leaves shader names empty.
struct UnreadableMaterial : FailureRow {
    Injection injection;
    std::pair<std::string, std::string> shaders; // {surface, displacement}
};

class UnreadableMaterials : public MeshInput,
                            public ::testing::WithParamInterface<UnreadableMaterial> {
protected:
    void SetUp() override {
        MeshInput::SetUp();
        const KObject shape = makeNGonMesh();
        ASSERT_TRUE(KGlobal::executeCommand(
            KString("createNode shadingEngine -name sgRed; createNode lambert -name red; "
                    "createNode displacementShader -name bumps; "
                    "connectAttr red.message sgRed.surfaceShader; "
                    "connectAttr bumps.message sgRed.displacementShader; "
                    "sets -edit -forceElement sgRed " +
                    KFnDependencyNode(shape).name().str())));
        ASSERT_TRUE(
            addPort("in", ZelvaneGraph::Executor::PortDirection::Input, Zelvane::objectType()));
        setBody([this](const ZelvaneBoard::PortValues& in) {
            const auto found = in.find("in");
            seen_ = found == in.end() ? nullptr : found->second.getOrselClass<Zelvane::Object>();
            return ZelvaneBoard::PortValues{};
        });
        connect(worldMesh(shape), plug("board1.in"));
        ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
        ASSERT_TRUE(seen_);
        ASSERT_EQ(shaderNames(*seen_), (std::pair<std::string, std::string>{"red", "bumps"}));
        seen_ = nullptr;
    }
    // Objects made by the plug-in go before it is unloaded.
    void TearDown() override {
        seen_ = nullptr;
        MeshInput::TearDown();
    }

    Orsel::Ptr<Zelvane::Object> seen_;
};

TEST_P(UnreadableMaterials, LeaveTheShaderNamesEmptySilently) {
    const UnreadableMaterial& row = GetParam();
    const LiveArrays before;
    {
        KMessageCapture capture;
        row.injection.arm();
        EXPECT_TRUE(ZelvaneBoard::evaluate(board_));
        EXPECT_TRUE(row.injection.fired());
        KFailureInjection::reset();
        ASSERT_TRUE(seen_);
        EXPECT_EQ(shaderNames(*seen_), row.shaders);
        EXPECT_EQ(values<Zelvane::Math::float3>(*seen_, Zelvane::Geometry::sPointPosition).size(),
                  10u);
        EXPECT_TRUE(capture.errors().empty());
        seen_ = nullptr;
    }
    EXPECT_TRUE(before.unchanged());
}

INSTANTIATE_TEST_SUITE_P(
    EveryMaterialRead, UnreadableMaterials,
    ::testing::Values(
        UnreadableMaterial{"ShapePath", {"KFnDagNode::getPath"}, {"", ""}},
        // The set walk of the mesh converter selects first.
        UnreadableMaterial{"ShapeSelection", {"KSelectionList::add", 1}, {"", ""}},
        UnreadableMaterial{"ShadingGroups", {"KGlobal::getAssociatedSets"}, {"", ""}},
        // The board looks up its port's plug first.
        UnreadableMaterial{"SurfaceInput", {"KFnDependencyNode::findPlug", 1}, {"", "bumps"}},
        UnreadableMaterial{"DisplacementInput", {"KFnDependencyNode::findPlug", 2}, {"red", ""}},
        // The dispatcher lists the port's sources first.
        UnreadableMaterial{"SurfaceSource", {"KPlug::connectedTo", 1}, {"", "bumps"}},
        UnreadableMaterial{"DisplacementSource", {"KPlug::connectedTo", 2}, {"red", ""}}),
    RowName());

} // namespace
