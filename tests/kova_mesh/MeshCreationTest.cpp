#include "MeshFixtures.h"

#include <kova/KFnDagNode.h>

namespace {

using MeshCreation = MeshTest;

TEST_F(MeshCreation, ReadersReturnTheTopologyOfAnNgonMesh) {
    EXPECT_EQ(fn.numVertices(), 10);
    EXPECT_EQ(fn.numPolygons(), 3);
    EXPECT_EQ(fn.numFaceVertices(), 12);
    const float* raw = fn.getRawPoints();
    ASSERT_NE(raw, nullptr);
    EXPECT_FLOAT_EQ(raw[3 * 7], 4.5f);
    EXPECT_FLOAT_EQ(raw[3 * 7 + 1], 1.0f);
    KIntArray counts, connects, pentagon;
    ASSERT_TRUE(fn.getVertices(counts, connects));
    EXPECT_EQ(counts, a.counts);
    EXPECT_EQ(connects, a.connects);
    ASSERT_TRUE(fn.getPolygonVertices(2, pentagon));
    EXPECT_EQ(pentagon, (KIntArray{5, 6, 7, 8, 9}));
    EXPECT_FALSE(fn.getPolygonVertices(3, pentagon));
    // The readers and writers the plug-in calls fail by injection in its failure tests; this
    // one it does not call.
    KFailureInjection::failNext("KFnMesh::getPoints");
    KFloatPointArray points;
    EXPECT_EQ(fn.getPoints(points).errorString(), "injected failure: KFnMesh::getPoints");
    ASSERT_TRUE(fn.getPoints(points));
    EXPECT_EQ(points, a.points);
}

TEST_F(MeshCreation, ZeroPolygonMeshKeepsItsPointsAndOneEmptyUVSet) {
    ASSERT_EQ(fn.create(1, 0, {{1, 2, 3}}, {}, {}, data), data);
    EXPECT_EQ(fn.numPolygons(), 0);
    EXPECT_EQ(fn.numFaceVertices(), 0);
    EXPECT_EQ(fn.numVertices(), 1);
    KFnMesh empty(KFnMeshData().create());
    KStatus status;
    EXPECT_NE(empty.getRawPoints(&status), nullptr) << "empty is not a failure";
    EXPECT_TRUE(status);
    EXPECT_EQ(empty.numVertices(), 0);
    KIntArray counts{9}, connects{9};
    ASSERT_TRUE(fn.getVertices(counts, connects));
    EXPECT_EQ(counts.length(), 0u);
    EXPECT_EQ(connects.length(), 0u);
    KStringArray names;
    ASSERT_TRUE(fn.getUVSetNames(names));
    EXPECT_EQ(names, KStringArray{"map1"});
    EXPECT_EQ(fn.getCurrentUVSetName(), KString("map1"));
}

TEST_F(MeshCreation, CreateRejectsInconsistentInputAndKeepsTheOldMesh) {
    KStatus status;
    const KIntArray tooFar{0, 1, 2, 3, 1, 4, 2, 5, 6, 7, 8, 10};
    const KIntArray negative{0, 1, 2, 3, 1, 4, 2, 5, 6, 7, 8, -1};
    const KIntArray shortConnects{0, 1, 2, 3, 1, 4, 2};
    fn.create(-1, 3, a.points, a.counts, a.connects, data, &status);
    EXPECT_FALSE(status) << "negative vertex count";
    fn.create(10, -1, a.points, a.counts, a.connects, data, &status);
    EXPECT_FALSE(status) << "negative polygon count";
    fn.create(11, 3, a.points, a.counts, a.connects, data, &status);
    EXPECT_FALSE(status) << "points fewer than vertices";
    fn.create(10, 2, a.points, a.counts, a.connects, data, &status);
    EXPECT_FALSE(status) << "counts longer than polygons";
    fn.create(10, 3, a.points, a.counts, shortConnects, data, &status);
    EXPECT_FALSE(status) << "connects shorter than the counts' sum";
    fn.create(10, 3, a.points, a.counts, tooFar, data, &status);
    EXPECT_FALSE(status) << "vertex id past the points";
    fn.create(10, 3, a.points, a.counts, negative, data, &status);
    EXPECT_FALSE(status) << "negative vertex id";
    fn.create(10, 4, a.points, {4, 3, 3, 2}, a.connects, data, &status);
    EXPECT_FALSE(status) << "two-vertex polygon";
    fn.create(10, 3, a.points, a.counts, a.connects, nodeNamed("time1"), &status);
    EXPECT_FALSE(status) << "owner that is neither data nor transform";
    KFnMesh check(data);
    EXPECT_EQ(check.numPolygons(), 3);
    EXPECT_EQ(check.numFaceVertices(), 12);
    // A function set refuses objects that are not meshes.
    KFnMesh other(nodeNamed("time1"), &status);
    EXPECT_FALSE(status);
    other.numVertices(&status);
    EXPECT_FALSE(status);
    EXPECT_EQ(other.getRawPoints(), nullptr);
}

TEST_F(MeshCreation, CreateWithoutOwnerMakesATransformAndShape) {
    KStatus status;
    const KObject transform = fn.create(10, 3, a.points, a.counts, a.connects, KObject(), &status);
    ASSERT_TRUE(status) << status.errorString().asChar();
    EXPECT_TRUE(transform.hasFn(KFn::kTransform));
    EXPECT_EQ(fn.object().apiType(), KFn::kMesh);
    EXPECT_EQ(KFnDagNode(transform).child(0), fn.object());
    EXPECT_EQ(KFnMesh(fn.object()).numFaceVertices(), 12);
}

} // namespace
