// Host calls of the mesh converter and of the material reader made to fail. A mesh whose
// counts, points or faces can't be read gives no object, silently; a channel, tag or set that
// can't be read is left out (a UV or colour set reported when logging); a material that can't
// be read leaves its shader name empty. Every array made on the way is released.

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
            auto object = injection.during([&] { return converter_(source, handle, options_); });
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
    const char* message = "";         // shown only with logging on; "" for none
};

class UnreadableChannels : public MeshFailures,
                           public ::testing::WithParamInterface<UnreadableChannel> {};

TEST_P(UnreadableChannels, LeaveOutOnlyThatChannel) {
    const UnreadableChannel& row = GetParam();
    for (const bool logging : {false, true}) {
        logRuntimeMessages(logging);
        const Outcome outcome = convertFailing(row.injection);
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
    ::testing::ValuesIn(std::vector<UnreadableChannel>{
        {"RawNormals", {"KFnMesh::getRawNormals"}, {"faceVertexN", "faceVertexN_index"}},
        {"NormalIds", {"KFnMesh::getNormalIds"}, {"faceVertexN", "faceVertexN_index"}},
        {"NormalCount", {"KFnMesh::numNormals"}, {"faceVertexN", "faceVertexN_index"}},
        {"UVSetNames", {"KFnMesh::getUVSetNames"}, {"uv", "uv_index"}},
        {"UVs",
         {"KFnMesh::getUVs"},
         {"uv", "uv_index"},
         "Could not convert this uv component: map1"},
        {"AssignedUVs",
         {"KFnMesh::getAssignedUVs"},
         {"uv", "uv_index"},
         "Could not convert this uv component: map1"},
        {"ColorSetNames", {"KFnMesh::getColorSetNames"}, {"tint"}},
        {"ColorRepresentation",
         {"KFnMesh::getColorRepresentation"},
         {"tint"},
         "Could not convert this color set: tint"},
        {"FaceVertexColors",
         {"KFnMesh::getFaceVertexColors"},
         {"tint"},
         "Could not convert this color set: tint"},
        {"TagNames", {"KFnGeometryData::componentTags"}, {"faceTag(top)"}},
        {"TagCategory", {"KFnGeometryData::componentTagCategory"}, {"faceTag(top)"}},
        {"TagContents", {"KFnGeometryData::componentTagContents"}, {"faceTag(top)"}},
        {"TagComponentAttach",
         {"KFnSingleIndexedComponent::KFnSingleIndexedComponent"},
         {"faceTag(top)"}},
        // Tags read their elements first, so a set member's read is the second.
        {"TagElements", {"KFnSingleIndexedComponent::getElements"}, {"faceTag(top)"}},
        {"Sets", {"KItDependencyGraph::KItDependencyGraph"}, {"pins"}},
        {"SetMembers", {"KFnSet::getMembers"}, {"pins"}},
        {"SetMemberPath", {"KSelectionList::getDagPath"}, {"pins"}},
        {"SetMemberShape", {"KDagPath::extendToShape"}, {"pins"}},
        {"SetMemberComponentAttach",
         {"KFnSingleIndexedComponent::KFnSingleIndexedComponent", 1},
         {"pins"}},
        {"SetMemberElements", {"KFnSingleIndexedComponent::getElements", 1}, {"pins"}}}),
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
        const auto object = throughBoard(shape);
        ASSERT_TRUE(object);
        ASSERT_EQ(shaderNames(*object), (std::pair<std::string, std::string>{"red", "bumps"}));
        seen_ = Orsel::Value();
    }
};

TEST_P(UnreadableMaterials, LeaveTheShaderNamesEmptySilently) {
    const UnreadableMaterial& row = GetParam();
    const LiveArrays before;
    {
        KMessageCapture capture;
        EXPECT_TRUE(row.injection.during([this] { return bool(ZelvaneBoard::evaluate(board_)); }));
        const auto object = seenObject();
        ASSERT_TRUE(object);
        EXPECT_EQ(shaderNames(*object), row.shaders);
        EXPECT_EQ(values<Zelvane::Math::float3>(*object, Zelvane::Geometry::sPointPosition).size(),
                  10u);
        EXPECT_TRUE(capture.errors().empty());
        seen_ = Orsel::Value();
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
