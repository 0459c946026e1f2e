// The "zelvaneGeoToKova" node evaluated in a scene: a ZelData of graph objects on
// "zelvaneGeo" becomes one host mesh per object on "kovaMesh".

#include "MeshOutputFixture.h"

#include <kova/KFnPluginData.h>

namespace MeshOutputTest {
namespace {

class GeoToKovaCompute : public MeshOutput {
protected:
    void SetUp() override {
        MeshOutput::SetUp();
        KFnDependencyNode fnNode;
        node_ = fnNode.create("zelvaneGeoToKova");
        ASSERT_FALSE(node_.isNull());
    }

    KPlug nodePlug(const char* name) const {
        return KFnDependencyNode(node_).findPlug(name, false);
    }
    // Puts a ZelData holding `objects` on "zelvaneGeo".
    void feed(const std::vector<Orsel::Ptr<Zelvane::Object>>& objects) const {
        KFnPluginData fnData;
        const KObject data = fnData.create(ZelData::id);
        auto* held = dynamic_cast<ZelData*>(fnData.data());
        ASSERT_NE(held, nullptr);
        for (const auto& object : objects) {
            held->addZelvaneObject(object);
        }
        ASSERT_TRUE(nodePlug("zelvaneGeo").setKObject(data));
    }
    // Evaluates "kovaMesh"; false when the evaluation failed.
    bool evaluate() const {
        KDataHandle value;
        return static_cast<bool>(nodePlug("kovaMesh").getValue(value));
    }
    KObject mesh(unsigned int index) const {
        return nodePlug("kovaMesh").elementByLogicalIndex(index).asKObject();
    }
    unsigned int meshCount() const { return nodePlug("kovaMesh").numElements(); }

    static Orsel::Ptr<Zelvane::Object> shared(ObjectPtr object) {
        return Orsel::Ptr<Zelvane::Object>(std::move(object));
    }
    // A mesh of `triangles` separate triangles.
    static Orsel::Ptr<Zelvane::Object> triangles(std::uint32_t count) {
        std::vector<float3> points;
        std::vector<std::uint32_t> offsets{0}, faceVertices;
        for (std::uint32_t i = 0; i < 3 * count; ++i) {
            points.push_back({float(i), float(i % 3 == 2), 0});
            faceVertices.push_back(i);
            if (i % 3 == 2) {
                offsets.push_back(i + 1);
            }
        }
        return shared(meshObject(points, offsets, faceVertices));
    }

    KObject node_;
};

TEST_F(GeoToKovaCompute, OutputGrowsAndShrinksToTheObjectCount) {
    feed({triangles(1), triangles(2), triangles(3)});
    ASSERT_TRUE(evaluate());
    ASSERT_EQ(meshCount(), 3u);
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(KFnMesh(mesh(i)).numPolygons(), int(i + 1)) << i;
    }
    feed({triangles(4)});
    ASSERT_TRUE(evaluate());
    ASSERT_EQ(meshCount(), 1u);
    EXPECT_EQ(KFnMesh(mesh(0)).numPolygons(), 4);
    feed({});
    ASSERT_TRUE(evaluate());
    EXPECT_EQ(meshCount(), 0u);
}

TEST_F(GeoToKovaCompute, ObjectsThatAreNotMeshesGiveEmptyMeshElements) {
    feed({shared(Zelvane::createObject()), Orsel::Ptr<Zelvane::Object>(), triangles(2)});
    ASSERT_TRUE(evaluate());
    ASSERT_EQ(meshCount(), 3u);
    EXPECT_EQ(KFnMesh(mesh(0)).numVertices(), 0);
    EXPECT_EQ(KFnMesh(mesh(1)).numVertices(), 0);
    EXPECT_EQ(KFnMesh(mesh(2)).numPolygons(), 2);
}

TEST_F(GeoToKovaCompute, TheNodesAttributesAreTheConversionOptions) {
    ObjectPtr object = ngonObject();
    addProperty(*object, Geo::sPointNormal, Geo::sPointComp, std::vector<float3>(10, {0, 0, -1}));
    addProperty(*object, "paint", Geo::sPointComp, std::vector<float3>(10, {1, 0, 0}));
    addTag(*object, Geo::sFaceComp, "top", {true, false, false});
    addTag(*object, Geo::sFaceComp, "bottom", {false, true, false});
    feed({shared(std::move(object))});
    ASSERT_TRUE(nodePlug("transferNormals").setBool(true));
    ASSERT_TRUE(nodePlug("properties").setString("paint"));
    ASSERT_TRUE(nodePlug("componentTags").setString("faceTag(top)"));
    ASSERT_TRUE(evaluate());
    const KObject data = mesh(0);
    EXPECT_EQ(faceVertexNormals(data), std::vector<float3>(12, float3{0, 0, -1}));
    KStringArray colorSets;
    KFnMesh(data).getColorSetNames(colorSets);
    EXPECT_EQ(colorSets, KStringArray{"paint"});
    EXPECT_EQ(tagNames(data), KStringArray{"top"});
}

TEST_F(GeoToKovaCompute, MissingInputDataFailsTheEvaluation) {
    EXPECT_FALSE(evaluate());
}

TEST_F(GeoToKovaCompute, FailedHostCallsFailTheEvaluationAndReleaseTheObjects) {
    const Orsel::Ptr<Zelvane::Object> object = triangles(1);
    feed({object, object});
    const std::size_t owners = object.useCount();
    for (const char* operation :
         {"KDataBlock::inputValue", "KDataBlock::outputValue", "KArrayDataHandle::builder",
          "KArrayDataBuilder::addElement", "KDataHandle::set", "KArrayDataHandle::set"}) {
        KFailureInjection::failNext(operation);
        EXPECT_FALSE(evaluate()) << operation;
        EXPECT_EQ(object.useCount(), owners) << operation;
        KFailureInjection::reset();
    }
    ASSERT_TRUE(evaluate());
    EXPECT_EQ(meshCount(), 2u);
    feed({object});
    KFailureInjection::failNext("KArrayDataBuilder::removeElement");
    EXPECT_FALSE(evaluate());
}

TEST_F(GeoToKovaCompute, AnExceptionFromTheConverterIsCaughtByTheHost) {
    ObjectPtr object = ngonObject();
    addIndexedProperty(*object, Geo::sFaceVertexUV, std::vector<float2>(12),
                       std::vector<std::uint32_t>(12, 0), "mapping");
    feed({shared(std::move(object))});
    KMessageCapture messages;
    EXPECT_FALSE(evaluate());
    ASSERT_FALSE(messages.errors().empty());
    EXPECT_NE(messages.errors().back().str().find("invalid stoi argument"), std::string::npos)
        << messages.errors().back();
    feed({triangles(2)});
    ASSERT_TRUE(evaluate()) << "the host goes on";
    EXPECT_EQ(KFnMesh(mesh(0)).numPolygons(), 2);
}

} // namespace
} // namespace MeshOutputTest
