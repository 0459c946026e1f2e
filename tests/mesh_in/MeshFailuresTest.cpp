#include "MeshInputFixture.h"

#include <kova/KArrayStats.h>
#include <kova/KColorArray.h>
#include <kova/KDagPath.h>
#include <kova/KFloatArray.h>
#include <kova/KFnGeometryData.h>
#include <kova/KFnSet.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KProfiler.h>
#include <orsel/ArrayMemory.h>
#include <set>

namespace {

namespace Geo = Zelvane::Geometry;

// A mesh with something of every kind the converter reads, large enough for parallel copies:
// a strip of 300 quads with a full UV set, an RGB colour set, a face tag and a point set.
class MeshFailures : public MeshInput {
protected:
    void SetUp() override {
        MeshInput::SetUp();
        shape_ = makeQuadStrip(300);
        KFnMesh fn(shape_);
        KFloatArray u, v;
        KIntArray ids;
        for (int i = 0; i < 1200; ++i) {
            u.append(float(i));
            v.append(0.5f);
            ids.append(i);
        }
        ASSERT_TRUE(fn.setUVs(u, v));
        ASSERT_TRUE(fn.assignUVs(KIntArray(300, 4), ids));
        ASSERT_TRUE(fn.createColorSetDataMesh("tint", false, 3));
        ASSERT_TRUE(fn.setColors({{1, 0, 0}}));
        ASSERT_TRUE(fn.assignColors(KIntArray(1200, 0)));

        KFnSingleIndexedComponent faces;
        const KObject tagged = faces.create(KFn::kMeshPolygonComponent);
        faces.addElements({1, 2});
        KFnGeometryData geometry(KFnDependencyNode(shape_).findPlug("outMesh", false).asKObject());
        ASSERT_TRUE(geometry.addComponentTag("top"));
        ASSERT_TRUE(geometry.setComponentTagContents("top", tagged));

        KFnSingleIndexedComponent points;
        const KObject pinned = points.create(KFn::kMeshVertComponent);
        points.addElements({0, 5});
        KFnDependencyNode fnNode;
        KDagPath path;
        KDagPath::getAPathTo(shape_, path);
        ASSERT_TRUE(KFnSet(fnNode.create("objectSet", "pins")).addMember(path, pinned));

        options_.pointNormals = true;
        // The first conversion makes the runtime's lasting objects (prototypes and the like).
        ASSERT_TRUE(convert(shape_, options_));
    }

    // The conversion with `operation` failing once, and whether every graph and host array it
    // made is released once the result is dropped.
    struct Outcome {
        bool converted = false;
        std::set<std::string> properties;
        std::vector<KString> errors;
        bool arraysReleased = false;
    };
    Outcome convertFailing(const char* operation) {
        const std::size_t graphBuffers = Orsel::ArrayStats::liveBuffers();
        const std::size_t hostBuffers = KArrayStats::liveBuffers();
        const KPlug source = worldMesh(shape_);
        KDataHandle handle;
        EXPECT_TRUE(source.getValue(handle));
        Outcome outcome;
        {
            KMessageCapture capture;
            KFailureInjection::failNext(operation);
            auto object = converter_(source, handle, options_);
            KFailureInjection::reset();
            outcome.converted = bool(object);
            if (object) {
                for (const std::string& name : propertyNames(*object)) {
                    outcome.properties.insert(name);
                }
            }
            outcome.errors = capture.errors();
        }
        source.destructHandle(handle);
        outcome.arraysReleased = Orsel::ArrayStats::liveBuffers() == graphBuffers &&
                                 KArrayStats::liveBuffers() == hostBuffers;
        return outcome;
    }

    KObject shape_;
    MeshOptions options_;
};

// Failures that leave no mesh: the host can't give the mesh, its counts, points or faces, or
// its geometry data (after points, faces, normals, UVs and colours were converted).
class MeshReadFailure : public MeshFailures, public ::testing::WithParamInterface<const char*> {};

TEST_P(MeshReadFailure, GivesNoObjectAndReleasesEveryArray) {
    logRuntimeMessages(true);
    const Outcome outcome = convertFailing(GetParam());
    EXPECT_FALSE(outcome.converted);
    EXPECT_TRUE(outcome.arraysReleased);
    EXPECT_TRUE(outcome.errors.empty());
}

INSTANTIATE_TEST_SUITE_P(EveryCoreQuery, MeshReadFailure,
                         ::testing::Values("KFnMesh::KFnMesh", "KFnMesh::numVertices",
                                           "KFnMesh::numFaceVertices", "KFnMesh::numPolygons",
                                           "KFnMesh::getRawPoints", "KFnMesh::getVertices",
                                           "KFnGeometryData::KFnGeometryData"));

// Failures that leave one channel out: the rest of the mesh is converted.
struct ChannelFailure {
    const char* operation;
    std::vector<std::string> missing; // properties that the failure leaves out
    const char* message;              // shown with logging on; "" for none
};

class MeshChannelFailure : public MeshFailures,
                           public ::testing::WithParamInterface<ChannelFailure> {};

TEST_P(MeshChannelFailure, LeavesOutOnlyThatChannel) {
    logRuntimeMessages(true);
    const ChannelFailure& failure = GetParam();
    const Outcome outcome = convertFailing(failure.operation);
    ASSERT_TRUE(outcome.converted);
    const std::set<std::string> all{"P",           "faceVertexPoint",   "faceOffset", "N",
                                    "faceVertexN", "faceVertexN_index", "uv",         "uv_index",
                                    "tint",        "faceTag(top)",      "pins"};
    for (const std::string& name : all) {
        const bool missing = std::find(failure.missing.begin(), failure.missing.end(), name) !=
                             failure.missing.end();
        EXPECT_EQ(outcome.properties.count(name), missing ? 0u : 1u) << name;
    }
    EXPECT_EQ(outcome.errors,
              *failure.message ? std::vector<KString>{failure.message} : std::vector<KString>{});
    EXPECT_TRUE(outcome.arraysReleased);
}

INSTANTIATE_TEST_SUITE_P(
    EveryChannelQuery, MeshChannelFailure,
    ::testing::Values(
        ChannelFailure{"KFnMesh::getRawNormals", {"faceVertexN", "faceVertexN_index"}, ""},
        ChannelFailure{"KFnMesh::getNormalIds", {"faceVertexN", "faceVertexN_index"}, ""},
        ChannelFailure{"KFnMesh::numNormals", {"faceVertexN", "faceVertexN_index"}, ""},
        ChannelFailure{"KFnMesh::getUVSetNames", {"uv", "uv_index"}, ""},
        ChannelFailure{
            "KFnMesh::getUVs", {"uv", "uv_index"}, "Could not convert this uv component: map1"},
        ChannelFailure{"KFnMesh::getAssignedUVs",
                       {"uv", "uv_index"},
                       "Could not convert this uv component: map1"},
        ChannelFailure{"KFnMesh::getColorSetNames", {"tint"}, ""},
        ChannelFailure{
            "KFnMesh::getColorRepresentation", {"tint"}, "Could not convert this color set: tint"},
        ChannelFailure{
            "KFnMesh::getFaceVertexColors", {"tint"}, "Could not convert this color set: tint"},
        ChannelFailure{"KFnGeometryData::componentTags", {"faceTag(top)"}, ""},
        ChannelFailure{"KFnGeometryData::componentTagCategory", {"faceTag(top)"}, ""},
        ChannelFailure{"KFnGeometryData::componentTagContents", {"faceTag(top)"}, ""},
        ChannelFailure{"KItDependencyGraph::KItDependencyGraph", {"pins"}, ""},
        ChannelFailure{"KFnSet::getMembers", {"pins"}, ""}));

// Tags read their elements first, so the set member's read is the second.
TEST_F(MeshFailures, FailingElementReadOfASetMemberSkipsThatMember) {
    const KPlug source = worldMesh(shape_);
    KDataHandle handle;
    ASSERT_TRUE(source.getValue(handle));
    KFailureInjection::failAfter("KFnSingleIndexedComponent::getElements", 1);
    const auto object = converter_(source, handle, options_);
    KFailureInjection::reset();
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->has("faceTag(top)"));
    EXPECT_FALSE(object->has("pins"));
}

TEST_F(MeshFailures, EveryStepIsTimedInTheMeshConverterCategory) {
    options_.faceNormals = true;
    KProfiler::clear();
    KProfiler::setRecording(true);
    ASSERT_TRUE(convert(shape_, options_));
    KProfiler::setRecording(false);
    const int category =
        KProfiler::addCategory("Zelvane/MeshConverter", "Events from the Zelvane mesh converter");
    std::set<std::string> labels;
    for (const KProfiler::Event& event : KProfiler::events()) {
        EXPECT_EQ(event.category, category) << event.label;
        EXPECT_EQ(event.colorIndex, 9) << event.label;
        labels.insert(event.label);
    }
    KProfiler::clear();
    EXPECT_EQ(labels, (std::set<std::string>{
                          "Kova to Zelvane Mesh translation", "Copy positions", "get faces",
                          "copy faces", "get v normals", "compute v normals", "get cpv",
                          "compute adjacency", "get fv normals", "copy fv normals", "get uvs",
                          "copy uvs", "copy cpv", "convert component tag", "get set", "copy set"}));
    EXPECT_EQ(KProfiler::categoryDescription(category),
              KString("Events from the Zelvane mesh converter"));
}

} // namespace
