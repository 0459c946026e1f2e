#include "BoardScene.h"

#include <kova/KDoubleArray.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnMesh.h>
#include <kova/KFnMeshData.h>
#include <kova/KFnPlugin.h>
#include <kova/KFnVectorArrayData.h>
#include <kova/KVectorArray.h>
#include <map>
#include <zelvane/geometry/Names.h>

using ZelvaneGraph::Executor::PortDirection;

namespace {

void* noCompute() {
    return new KPxNode();
}
KStatus noAttributes() {
    return KStatus();
}

} // namespace

// Message connections from nodes of a given classification: a shader ("lambert" is
// "drawdb/shader/surface/lambert") gives a material reference, an operator an operator
// reference, anything else (here "foo/drawdb/shader") the port's empty object.
TEST_F(BoardScene, MessageConnectionsGiveReferencesByClassification) {
    KFnPlugin fnPlugin(boardModule_);
    const KString other("foo/drawdb/shader"), deformer("operator/deformer");
    ASSERT_TRUE(fnPlugin.registerNode("otherKind", KTypeId(0x7E1101), &noCompute, &noAttributes,
                                      KPxNode::kDependNode, &other));
    ASSERT_TRUE(fnPlugin.registerNode("deformerKind", KTypeId(0x7E1102), &noCompute, &noAttributes,
                                      KPxNode::kDependNode, &deformer));
    const struct {
        const char* type;
        const char* name;
        const Orsel::String* property; // null: no property at all
    } cases[] = {{"lambert", "red", &Zelvane::Geometry::sMaterialReferenceID},
                 {"otherKind", "other1", nullptr},
                 {"deformerKind", "bend1", &Zelvane::Geometry::sOperatorReferenceID}};
    for (const auto& row : cases) {
        ASSERT_TRUE(addPort(row.name, PortDirection::Input, Zelvane::objectType()));
        KFnDependencyNode fnNode;
        connect(KFnDependencyNode(fnNode.create(row.type, row.name)).findPlug("message", false),
                plug((std::string("board1.") + row.name).c_str()));
    }
    std::map<std::string, Orsel::Ptr<Zelvane::Object>> seen;
    setBody([&seen](const ZelvaneBoard::PortValues& in) {
        for (const auto& [name, value] : in) {
            seen[name] = value.getOrselClass<Zelvane::Object>();
        }
        return ZelvaneBoard::PortValues{};
    });
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    for (const auto& row : cases) {
        const auto object = seen[row.name];
        ASSERT_TRUE(object) << row.type;
        EXPECT_EQ(object->propertyCount(), row.property ? 1u : 0u) << row.type;
        if (row.property) {
            ASSERT_NE(object->get<Orsel::String>(*row.property), nullptr) << row.type;
            EXPECT_EQ(*object->get<Orsel::String>(*row.property), Orsel::String(row.name));
        }
    }
    seen.clear();
    KScene::reset();
    fnPlugin.deregisterNode(KTypeId(0x7E1101));
    fnPlugin.deregisterNode(KTypeId(0x7E1102));
}

// An array port whose elements 0 and 2 exist unconnected, element 1 fed by a vector array and
// element 3 by a mesh: the graph sees one object per fed element, in order.
TEST_F(BoardScene, ArrayPortGivesOneObjectPerFedElement) {
    watchInput("many", Orsel::Type::arrayOf(Zelvane::objectType()));
    const KPlug many = plug("board1.many");
    many.elementByLogicalIndex(0);
    many.elementByLogicalIndex(2);
    KFnVectorArrayData fnVectors;
    connect(dataSource("vectors", "v", KFnData::kVectorArray,
                       fnVectors.create(KVectorArray({KVector(1, 2, 3), KVector(4, 5, 6)}))),
            many.elementByLogicalIndex(1));
    KFnMeshData fnData;
    const KObject data = fnData.create();
    KFnMesh().create(3, 1, KFloatPointArray({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), KIntArray({3}),
                     KIntArray({0, 1, 2}), data);
    connect(dataSource("mesh", "m", KFnData::kMesh, data), many.elementByLogicalIndex(3));
    ASSERT_TRUE(ZelvaneBoard::evaluate(board_));
    const auto seen = seen_.getOpaqueArray();
    ASSERT_TRUE(seen);
    ASSERT_EQ(seen->size(), 2u);
    const auto vectors = Orsel::dynamicPtrCast<Zelvane::Object>((*seen)[0]);
    const auto mesh = Orsel::dynamicPtrCast<Zelvane::Object>((*seen)[1]);
    ASSERT_TRUE(vectors && mesh);
    ASSERT_TRUE(vectors->getArray<Zelvane::Math::float3>("v"));
    EXPECT_EQ(vectors->getArray<Zelvane::Math::float3>("v")->size(), 2u);
    const auto points = mesh->getArray<Zelvane::Math::float3>(Zelvane::Geometry::sPointPosition);
    ASSERT_TRUE(points);
    ASSERT_EQ(points->size(), 3u);
    EXPECT_EQ((*points)[1], (Zelvane::Math::float3{1, 0, 0}));
}

// The exported array converters, called as other libraries call them: an empty array gives an
// empty named property, a nameless plug an object without properties, another data kind null.
TEST_F(BoardScene, ExportedArrayConvertersNameTheirPropertyAfterThePlug) {
    using Converter = Orsel::Ptr<Zelvane::Object> (*)(const KPlug&, const KDataHandle&);
    const auto doubles =
        pluginFunction<Converter>("_Z23kovaDoubleArrayToObjectRK5KPlugRK11KDataHandle");
    const auto vectors =
        pluginFunction<Converter>("_Z23kovaVectorArrayToObjectRK5KPlugRK11KDataHandle");
    ASSERT_NE(doubles, nullptr);
    ASSERT_NE(vectors, nullptr);
    const auto valueOf = [](const KPlug& source) {
        KDataHandle handle;
        EXPECT_TRUE(source.getValue(handle));
        return handle;
    };
    KFnDoubleArrayData fnDoubles;
    KFnVectorArrayData fnVectors;
    const KPlug empty =
        dataSource("src", "weights", KFnData::kDoubleArray, fnDoubles.create(KDoubleArray()));
    const KPlug vectorSource = dataSource("src2", "v", KFnData::kVectorArray,
                                          fnVectors.create(KVectorArray({KVector(1, 1, 1)})));

    const auto weights = doubles(empty, valueOf(empty));
    ASSERT_TRUE(weights);
    ASSERT_TRUE(weights->getArray<float>("weights"));
    EXPECT_EQ(weights->getArray<float>("weights")->size(), 0u);
    const auto nameless = vectors(KPlug(), valueOf(vectorSource));
    ASSERT_TRUE(nameless);
    EXPECT_EQ(nameless->propertyCount(), 0u);
    EXPECT_FALSE(doubles(vectorSource, valueOf(vectorSource)));
    EXPECT_FALSE(vectors(empty, valueOf(empty)));
    EXPECT_FALSE(doubles(plug("time1.outTime"), valueOf(plug("time1.outTime"))));
}
