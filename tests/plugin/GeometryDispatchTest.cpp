#include "BoardScene.h"

#include <dlfcn.h>
#include <kova/KDoubleArray.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnMesh.h>
#include <kova/KFnMeshData.h>
#include <kova/KFnPlugin.h>
#include <kova/KFnVectorArrayData.h>
#include <kova/KVectorArray.h>
#include <zelvane/geometry/Names.h>

using ZelvaneBoard::PortValues;
using ZelvaneGraph::Executor::PortDirection;

namespace {

void* noCompute() {
    return new KPxNode();
}
KStatus noAttributes() {
    return KStatus();
}

} // namespace

// Message connections from nodes of a given classification, and array ports.
class Dispatch : public BoardScene {
protected:
    void SetUp() override {
        BoardScene::SetUp();
        KFnPlugin fnPlugin(boardModule_);
        unsigned int id = 0x7E1101;
        for (const char* classification :
             {"drawdb/shader/surface/custom", "foo/drawdb/shader", "operator/deformer"}) {
            const KString text(classification);
            const std::string type = "classified" + std::to_string(id);
            ASSERT_TRUE(fnPlugin.registerNode(KString(type), KTypeId(id), &noCompute, &noAttributes,
                                              KPxNode::kDependNode, &text));
            types_.push_back({type, id++});
        }
        ASSERT_TRUE(addPort("in", PortDirection::Input, Zelvane::objectType()));
        setBody([this](const PortValues& in) {
            auto found = in.find("in");
            seen_ = found == in.end() ? nullptr : found->second.getOrselClass<Zelvane::Object>();
            return PortValues{};
        });
    }
    void TearDown() override {
        KScene::reset();
        for (const auto& [name, id] : types_) {
            KFnPlugin(boardModule_).deregisterNode(KTypeId(id));
        }
        BoardScene::TearDown();
    }
    // The board's object for a message connection from a node of the type at `index`.
    Orsel::Ptr<Zelvane::Object> referenceFrom(std::size_t index, const char* nodeName) {
        KFnDependencyNode fnNode;
        const KObject node = fnNode.create(KString(types_[index].first), nodeName);
        connect(KFnDependencyNode(node).findPlug("message", false), plug("board1.in"));
        EXPECT_TRUE(ZelvaneBoard::evaluate(board_));
        return seen_;
    }

    std::vector<std::pair<std::string, unsigned int>> types_;
    Orsel::Ptr<Zelvane::Object> seen_;
};

TEST_F(Dispatch, ShaderClassificationWithFurtherLevelsGivesAMaterialReference) {
    const auto object = referenceFrom(0, "custom1");
    ASSERT_TRUE(object);
    ASSERT_NE(object->get<Orsel::String>(Zelvane::Geometry::sMaterialReferenceID), nullptr);
    EXPECT_EQ(*object->get<Orsel::String>(Zelvane::Geometry::sMaterialReferenceID),
              Orsel::String("custom1"));
}

TEST_F(Dispatch, ShaderTextAfterAnotherLeadingWordGivesNothing) {
    const auto object = referenceFrom(1, "other1");
    ASSERT_TRUE(object);
    EXPECT_EQ(object->propertyCount(), 0u); // nothing appended: the port's empty object
}

TEST_F(Dispatch, OperatorClassificationGivesAnOperatorReference) {
    const auto object = referenceFrom(2, "bend1");
    ASSERT_TRUE(object);
    ASSERT_NE(object->get<Orsel::String>(Zelvane::Geometry::sOperatorReferenceID), nullptr);
    EXPECT_EQ(*object->get<Orsel::String>(Zelvane::Geometry::sOperatorReferenceID),
              Orsel::String("bend1"));
}

// An array port whose elements 0 and 2 exist unconnected and whose element 1 is fed by
// `source`: the objects the graph sees.
class SparseArrayPort : public BoardScene {
protected:
    Orsel::Ptr<Orsel::Array<Orsel::Ptr<Orsel::Class>>> objectsFrom(const KPlug& source) {
        EXPECT_TRUE(
            addPort("many", PortDirection::Input, Orsel::Type::arrayOf(Zelvane::objectType())));
        const KPlug many = plug("board1.many");
        many.elementByLogicalIndex(0);
        many.elementByLogicalIndex(2);
        connect(source, many.elementByLogicalIndex(1));
        Orsel::Ptr<Orsel::Array<Orsel::Ptr<Orsel::Class>>> seen;
        setBody([&](const PortValues& in) {
            seen = in.at("many").getOpaqueArray();
            return PortValues{};
        });
        EXPECT_TRUE(ZelvaneBoard::evaluate(board_));
        return seen;
    }
};

TEST_F(SparseArrayPort, OneVectorArrayAmongUnconnectedElementsGivesOneObject) {
    KFnVectorArrayData fnVectors;
    const auto seen = objectsFrom(
        dataSource("src", "v", KFnData::kVectorArray,
                   fnVectors.create(KVectorArray({KVector(1, 2, 3), KVector(4, 5, 6)}))));
    ASSERT_TRUE(seen);
    ASSERT_EQ(seen->size(), 1u);
    const auto object = Orsel::dynamicPtrCast<Zelvane::Object>((*seen)[0]);
    ASSERT_TRUE(object);
    EXPECT_EQ(object->getArray<Zelvane::Math::float3>("v")->size(), 2u);
}

TEST_F(SparseArrayPort, OneMeshAmongUnconnectedElementsGivesOneMeshObject) {
    KFnMeshData fnData;
    const KObject data = fnData.create();
    KFnMesh fnMesh;
    fnMesh.create(3, 1, KFloatPointArray({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), KIntArray({3}),
                  KIntArray({0, 1, 2}), data);
    const auto seen = objectsFrom(dataSource("src", "m", KFnData::kMesh, data));
    ASSERT_TRUE(seen);
    ASSERT_EQ(seen->size(), 1u);
    const auto object = Orsel::dynamicPtrCast<Zelvane::Object>((*seen)[0]);
    ASSERT_TRUE(object);
    const auto points = object->getArray<Zelvane::Math::float3>(Zelvane::Geometry::sPointPosition);
    ASSERT_TRUE(points);
    EXPECT_EQ(points->size(), 3u);
    EXPECT_EQ((*points)[1], (Zelvane::Math::float3{1, 0, 0}));
}

// The exported array converters, called as other libraries call them.
class ArrayConverters : public BoardScene {
protected:
    using Converter = Orsel::Ptr<Zelvane::Object> (*)(const KPlug&, const KDataHandle&);

    void SetUp() override {
        BoardScene::SetUp();
        library_ = dlopen(PLUGIN_PATH, RTLD_NOW | RTLD_NOLOAD);
        ASSERT_NE(library_, nullptr);
        doubles_ = reinterpret_cast<Converter>(
            dlsym(library_, "_Z23kovaDoubleArrayToObjectRK5KPlugRK11KDataHandle"));
        vectors_ = reinterpret_cast<Converter>(
            dlsym(library_, "_Z23kovaVectorArrayToObjectRK5KPlugRK11KDataHandle"));
        ASSERT_NE(doubles_, nullptr);
        ASSERT_NE(vectors_, nullptr);
    }
    void TearDown() override {
        if (library_) {
            dlclose(library_);
        }
        BoardScene::TearDown();
    }
    static KDataHandle valueOf(const KPlug& plug) {
        KDataHandle handle;
        EXPECT_TRUE(plug.getValue(handle));
        return handle;
    }

    void* library_ = nullptr;
    Converter doubles_ = nullptr;
    Converter vectors_ = nullptr;
};

TEST_F(ArrayConverters, EmptyArrayGivesAnEmptyNamedProperty) {
    KFnDoubleArrayData fnDoubles;
    const KPlug source =
        dataSource("src", "weights", KFnData::kDoubleArray, fnDoubles.create(KDoubleArray()));
    const auto object = doubles_(source, valueOf(source));
    ASSERT_TRUE(object);
    ASSERT_TRUE(object->getArray<float>("weights"));
    EXPECT_EQ(object->getArray<float>("weights")->size(), 0u);
}

TEST_F(ArrayConverters, NamelessPlugGivesAnObjectWithoutProperties) {
    KFnVectorArrayData fnVectors;
    const KPlug source = dataSource("src", "v", KFnData::kVectorArray,
                                    fnVectors.create(KVectorArray({KVector(1, 1, 1)})));
    const auto object = vectors_(KPlug(), valueOf(source));
    ASSERT_TRUE(object);
    EXPECT_EQ(object->propertyCount(), 0u);
}

TEST_F(ArrayConverters, OtherDataKindsGiveNull) {
    KFnVectorArrayData fnVectors;
    const KPlug vectors = dataSource("src", "v", KFnData::kVectorArray,
                                     fnVectors.create(KVectorArray({KVector(1, 1, 1)})));
    KFnDoubleArrayData fnDoubles;
    const KPlug doubles =
        dataSource("src2", "d", KFnData::kDoubleArray, fnDoubles.create(KDoubleArray({1.0})));
    EXPECT_FALSE(doubles_(vectors, valueOf(vectors)));
    EXPECT_FALSE(vectors_(doubles, valueOf(doubles)));
    EXPECT_FALSE(doubles_(plug("time1.outTime"), valueOf(plug("time1.outTime"))));
}
