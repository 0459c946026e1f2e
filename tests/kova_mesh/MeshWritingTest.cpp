// The mesh writers a converter calls to fill new mesh data: each one fails on injection and
// leaves the mesh as it was.

#include "MeshFixtures.h"

#include <gtest/gtest.h>
#include <kova/KFnGeometryData.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <vector>

namespace {

class MeshWriting : public ::testing::Test {
protected:
    void SetUp() override {
        KFailureInjection::reset();
        data = makeMeshData(fn);
    }
    void TearDown() override { KFailureInjection::reset(); }

    std::vector<float> normals() const {
        const float* raw = fn.getRawNormals();
        return std::vector<float>(raw, raw + 3 * fn.numNormals());
    }

    KFnMesh fn;
    KObject data;
};

TEST_F(MeshWriting, InjectedNormalWriteFailuresKeepTheComputedNormals) {
    const std::vector<float> before = normals();
    KFailureInjection::failNext("KFnMesh::setFaceVertexNormals");
    EXPECT_FALSE(fn.setFaceVertexNormals({{1, 0, 0}}, {0}, {1}));
    KFailureInjection::failNext("KFnMesh::setVertexNormals");
    EXPECT_FALSE(fn.setVertexNormals({{1, 0, 0}}, {1}));
    EXPECT_EQ(normals(), before);
    EXPECT_TRUE(fn.setVertexNormals({{1, 0, 0}}, {1})) << "only the next call fails";
}

TEST_F(MeshWriting, InjectedColourWriteFailuresChangeNothing) {
    const KString set("c");
    ASSERT_TRUE(fn.createColorSetDataMesh(set, true, 4));
    KFailureInjection::failNext("KFnMesh::setIsColorClamped");
    EXPECT_FALSE(fn.setIsColorClamped(set, false));
    EXPECT_TRUE(fn.isColorClamped(set));
    KFailureInjection::failNext("KFnMesh::setColors");
    EXPECT_FALSE(fn.setColors({{1, 0, 0, 1}}, &set));
    EXPECT_EQ(fn.numColors(&set), 0);
    ASSERT_TRUE(fn.setColors({{1, 0, 0, 1}}, &set));
    KFailureInjection::failNext("KFnMesh::assignColors");
    EXPECT_FALSE(fn.assignColors(KIntArray(12, 0), &set));
    KColorArray perFaceVertex;
    ASSERT_TRUE(fn.getFaceVertexColors(perFaceVertex, &set));
    EXPECT_EQ(perFaceVertex[0], KColor(-1, -1, -1, -1)) << "nothing assigned";
}

TEST_F(MeshWriting, InjectedComponentFailuresLeaveTagsEmpty) {
    KFnSingleIndexedComponent component;
    KStatus status;
    KFailureInjection::failNext("KFnSingleIndexedComponent::create");
    EXPECT_TRUE(component.create(KFn::kMeshVertComponent, &status).isNull());
    EXPECT_FALSE(status);

    const KObject vertices = component.create(KFn::kMeshVertComponent);
    KFailureInjection::failAfter("KFnSingleIndexedComponent::addElement", 1);
    EXPECT_FALSE(component.addElements({1, 2, 3}));
    KIntArray elements;
    ASSERT_TRUE(component.getElements(elements));
    EXPECT_EQ(elements, KIntArray{1});

    KFnGeometryData geometry(data);
    ASSERT_TRUE(geometry.addComponentTag("top"));
    KFailureInjection::failNext("KFnGeometryData::setComponentTagContents");
    EXPECT_FALSE(geometry.setComponentTagContents("top", vertices));
    EXPECT_TRUE(geometry.componentTagContents("top").isNull());
    EXPECT_EQ(geometry.componentTagCategory("top"), 0);
}

TEST_F(MeshWriting, TagContentsMustBeAComponentOfExistingElements) {
    KFnGeometryData geometry(data);
    ASSERT_TRUE(geometry.addComponentTag("none"));
    EXPECT_FALSE(geometry.setComponentTagContents("none", KObject()));
    KFnSingleIndexedComponent faces;
    const KObject component = faces.create(KFn::kMeshPolygonComponent);
    ASSERT_TRUE(faces.addElement(3));
    EXPECT_FALSE(geometry.setComponentTagContents("none", component)) << "3 faces only";
    EXPECT_FALSE(faces.addElement(-1));
}

} // namespace
