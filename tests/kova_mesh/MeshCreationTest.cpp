#include "MeshFixtures.h"

#include <gtest/gtest.h>
#include <kova/KFnDagNode.h>

namespace {

class MeshCreation : public ::testing::Test {
protected:
    void SetUp() override {
        KFailureInjection::reset();
        KScene::reset();
    }
    void TearDown() override {
        KFailureInjection::reset();
        KScene::reset();
    }
    MeshArrays a;
};

TEST_F(MeshCreation, ReadersReturnTheTopologyOfAnNgonMesh) {
    KFnMesh fn;
    makeMeshData(fn);
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
}

TEST_F(MeshCreation, ZeroPolygonMeshKeepsItsPointsAndOneEmptyUVSet) {
    KFnMeshData dataFn;
    const KObject data = dataFn.create();
    KFnMesh fn;
    const KFloatPointArray points{{1, 2, 3}};
    ASSERT_EQ(fn.create(1, 0, points, {}, {}, data), data);
    EXPECT_EQ(fn.numPolygons(), 0);
    EXPECT_EQ(fn.numFaceVertices(), 0);
    EXPECT_EQ(fn.numVertices(), 1);
    KFnMesh empty(dataFn.create());
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
    ASSERT_EQ(names.length(), 1u);
    EXPECT_EQ(names[0], KString("map1"));
    EXPECT_EQ(fn.getCurrentUVSetName(), KString("map1"));
}

TEST_F(MeshCreation, CreateRejectsInconsistentInputAndKeepsTheOldMesh) {
    KFnMesh fn;
    const KObject data = makeMeshData(fn);
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
}

TEST_F(MeshCreation, CreateWithoutOwnerMakesATransformAndShape) {
    KFnMesh fn;
    KStatus status;
    const KObject transform = fn.create(10, 3, a.points, a.counts, a.connects, KObject(), &status);
    ASSERT_TRUE(status) << status.errorString().asChar();
    EXPECT_TRUE(transform.hasFn(KFn::kTransform));
    EXPECT_EQ(fn.object().apiType(), KFn::kMesh);
    EXPECT_EQ(KFnDagNode(transform).child(0), fn.object());
    EXPECT_EQ(KFnMesh(fn.object()).numFaceVertices(), 12);
}

TEST_F(MeshCreation, FunctionSetRefusesOtherObjects) {
    KStatus status;
    KFnMesh fn(nodeNamed("time1"), &status);
    EXPECT_FALSE(status);
    fn.numVertices(&status);
    EXPECT_FALSE(status);
    EXPECT_EQ(fn.getRawPoints(), nullptr);
}

TEST_F(MeshCreation, EveryReaderAndWriterHasAFailureInjectionPoint) {
    KFnMesh fn;
    makeMeshData(fn);
    KStatus status;
    KIntArray ints, ints2;
    KFloatArray u, v;
    KColorArray colors;
    KStringArray names;
    KFloatPointArray points;
    const auto fails = [&](const char* op, auto&& call) {
        KFailureInjection::failNext(op);
        EXPECT_FALSE(call()) << op;
        EXPECT_EQ(KFailureInjection::callCount(op), 1) << op;
    };
    fails("KFnMesh::numVertices", [&] {
        fn.numVertices(&status);
        return status;
    });
    fails("KFnMesh::numPolygons", [&] {
        fn.numPolygons(&status);
        return status;
    });
    fails("KFnMesh::numFaceVertices", [&] {
        fn.numFaceVertices(&status);
        return status;
    });
    fails("KFnMesh::getRawPoints",
          [&] { return KStatus(fn.getRawPoints(&status) ? KStatus() : status); });
    fails("KFnMesh::getPoints", [&] { return fn.getPoints(points); });
    fails("KFnMesh::getVertices", [&] { return fn.getVertices(ints, ints2); });
    fails("KFnMesh::getRawNormals", [&] {
        fn.getRawNormals(&status);
        return status;
    });
    fails("KFnMesh::getNormalIds", [&] { return fn.getNormalIds(ints, ints2); });
    fails("KFnMesh::numNormals", [&] {
        fn.numNormals(&status);
        return status;
    });
    fails("KFnMesh::getUVSetNames", [&] { return fn.getUVSetNames(names); });
    fails("KFnMesh::getUVs", [&] { return fn.getUVs(u, v); });
    fails("KFnMesh::getAssignedUVs", [&] { return fn.getAssignedUVs(ints, ints2); });
    fails("KFnMesh::createUVSetDataMesh", [&] { return fn.createUVSetDataMesh("uv2"); });
    fails("KFnMesh::setUVs", [&] { return fn.setUVs(u, v); });
    fails("KFnMesh::assignUVs", [&] { return fn.assignUVs({0, 0, 0}, {}); });
    fails("KFnMesh::createColorSetDataMesh", [&] { return fn.createColorSetDataMesh("c"); });
    fails("KFnMesh::getColorSetNames", [&] { return fn.getColorSetNames(names); });
    fails("KFnMesh::create", [&] {
        fn.create(10, 3, a.points, a.counts, a.connects, fn.object(), &status);
        return status;
    });
    KFailureInjection::failNext("KFnMesh::KFnMesh");
    KFnMesh failed(fn.object(), &status);
    EXPECT_FALSE(status);
    KFailureInjection::failNext("KFnMeshData::create");
    KFnMeshData dataFn;
    EXPECT_TRUE(dataFn.create(&status).isNull());
    EXPECT_FALSE(status);
}

} // namespace
