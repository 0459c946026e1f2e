#include "KovaTestSupport.h"

#include <kova/KFnComponent.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnMatrixData.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KFnStringData.h>
#include <kova/KFnVectorArrayData.h>

namespace {

class DataFunctionSetTest : public KovaTest {};

TEST_F(DataFunctionSetTest, ArrayStringAndMatrixDataCopyInAndOut) {
    KFnDoubleArrayData doubles;
    const KObject data = doubles.create({1.0, 2.0, 3.0});
    EXPECT_EQ(data.apiType(), KFn::kDoubleArrayData);
    EXPECT_EQ(doubles.dataType(), KFnData::kDoubleArray);
    EXPECT_EQ(doubles.length(), 3u);
    EXPECT_DOUBLE_EQ(doubles[2], 3.0);
    EXPECT_DOUBLE_EQ(doubles[9], 0.0);
    KDoubleArray out;
    ASSERT_TRUE(doubles.copyTo(out));
    out[0] = 100.0; // a copy
    EXPECT_DOUBLE_EQ(doubles[0], 1.0);
    ASSERT_TRUE(doubles.set({4.0}));
    EXPECT_EQ(KFnDoubleArrayData(data).array(), (KDoubleArray{4.0}));

    KFnVectorArrayData vectors;
    vectors.create({KVector(1, 2, 3)});
    EXPECT_EQ(vectors.dataType(), KFnData::kVectorArray);
    EXPECT_EQ(vectors[0], KVector(1, 2, 3));
    ASSERT_TRUE(vectors.set({KVector(0, 0, 1), KVector(0, 1, 0)}));
    EXPECT_EQ(vectors.length(), 2u);

    KFnStringData text;
    const KObject string = text.create("first");
    ASSERT_TRUE(text.set("second"));
    EXPECT_EQ(KFnStringData(string).string(), "second");
    KMatrix m;
    m(0, 3) = 2.0;
    KFnMatrixData matrix;
    matrix.create(m);
    EXPECT_EQ(matrix.matrix(), m);
    EXPECT_EQ(matrix.dataType(), KFnData::kMatrix);
}

TEST_F(DataFunctionSetTest, FunctionSetsOnlyAttachToTheirKinds) {
    KStatus status;
    KFnStringData wrong(KFnDoubleArrayData().create(), &status);
    EXPECT_EQ(status, KStatus::kInvalidParameter);
    EXPECT_TRUE(wrong.object().isNull());
    EXPECT_EQ(wrong.string(&status), "");
    EXPECT_FALSE(status);
    const KObject node = createNode("testScale");
    KFnDagNode dag(node, &status);
    EXPECT_FALSE(status);
    EXPECT_EQ(dag.childCount(), 0u);
    EXPECT_TRUE(KFnData(KFnStringData().create()).hasObj(KFn::kStringData));
    EXPECT_FALSE(KFnDependencyNode().setObject(KObject()));
}

TEST_F(DataFunctionSetTest, ComponentsListOrCoverTheirElements) {
    KFnSingleIndexedComponent fn;
    KStatus status;
    EXPECT_TRUE(fn.create(KFn::kMeshData, &status).isNull());
    EXPECT_FALSE(status);
    const KObject vertices = fn.create(KFn::kMeshVertComponent);
    EXPECT_TRUE(vertices.hasFn(KFn::kSingleIndexedComponent));
    EXPECT_EQ(vertices.apiType(), 554);
    EXPECT_TRUE(fn.isEmpty());
    ASSERT_TRUE(fn.addElements(KIntArray{9, 3, 3, 5}));
    EXPECT_FALSE(fn.addElement(-1));
    EXPECT_EQ(fn.elementCount(), 3);
    EXPECT_EQ(fn.element(1), 5);
    EXPECT_EQ(fn.element(3, &status), -1);
    EXPECT_FALSE(status);

    ASSERT_TRUE(fn.setCompleteData(4));
    EXPECT_TRUE(fn.isComplete());
    KIntArray all;
    ASSERT_TRUE(fn.getElements(all));
    EXPECT_EQ(all, (KIntArray{0, 1, 2, 3}));
    EXPECT_EQ(KFnComponent(vertices).componentType(), KFn::kMeshVertComponent);
}

} // namespace
