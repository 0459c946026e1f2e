#include "MeshFixtures.h"

#include <gtest/gtest.h>
#include <kova/KArrayDataBuilder.h>
#include <kova/KArrayDataHandle.h>
#include <kova/KDataBlock.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnNumericAttribute.h>
#include <kova/KFnPlugin.h>
#include <kova/KFnSet.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KGlobal.h>
#include <kova/KItDependencyGraph.h>
#include <kova/KPlugArray.h>
#include <kova/KPluginLoader.h>
#include <kova/KPxNode.h>

namespace {

// "meshList": the array output "meshes" gets one triangle mesh per element, "count" of them,
// from the output's array data builder (surplus elements removed).
class MeshListNode : public KPxNode {
public:
    static inline KObject count, meshes;
    static void* create() { return new MeshListNode; }
    static KStatus initialize() {
        KFnNumericAttribute numeric;
        count = numeric.create("count", "c", KFnNumericData::kInt, 0.0);
        KFnTypedAttribute typed;
        meshes = typed.create("meshes", "m", KFnData::kMesh);
        typed.setArray(true);
        typed.setWritable(false);
        typed.setUsesArrayDataBuilder(true);
        addAttribute(count);
        addAttribute(meshes);
        return attributeAffects(count, meshes);
    }
    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        if (plug != meshes) {
            return KStatus(KStatus::kUnknownParameter);
        }
        const auto n = static_cast<unsigned int>(block.inputValue(count).asInt());
        KArrayDataHandle out = block.outputArrayValue(meshes);
        KArrayDataBuilder builder = out.builder();
        const unsigned int previous = builder.elementCount();
        for (unsigned int i = 0; i < n; ++i) {
            KFnMeshData dataFn;
            const KObject data = dataFn.create();
            const float x = static_cast<float>(i);
            KFnMesh().create(3, 1, {{x, 0, 0}, {x + 1, 0, 0}, {x, 1, 0}}, {3}, {0, 1, 2}, data);
            if (KStatus status = builder.addElement(i).set(data); !status) {
                return status;
            }
        }
        for (unsigned int i = n; i < previous; ++i) {
            builder.removeElement(i);
        }
        return out.set(builder);
    }
};

class MeshScene : public ::testing::Test {
protected:
    void SetUp() override {
        KFailureInjection::reset();
        KScene::reset();
        KFnMesh fn;
        const MeshArrays a;
        transform = fn.create(10, 3, a.points, a.counts, a.connects);
        shape = fn.object();
        KDagPath::getAPathTo(shape, path);
    }
    void TearDown() override {
        KFailureInjection::reset();
        KScene::reset();
    }
    static KPlug plug(const KObject& node, const char* name) {
        return KFnDependencyNode(node).findPlug(name, false);
    }
    static KObject faces(std::initializer_list<int> ids) {
        KFnSingleIndexedComponent fn;
        const KObject component = fn.create(KFn::kMeshPolygonComponent);
        fn.addElements(KIntArray(ids));
        return component;
    }
    static KObject shadingGroup(const char* name) {
        KFnDependencyNode fn;
        return fn.create("shadingEngine", name);
    }
    KObject transform, shape;
    KDagPath path;
};

TEST_F(MeshScene, WorldMeshCarriesTheWorldMatrixAndOutMeshTheIdentity) {
    ASSERT_TRUE(KGlobal::executeCommand("setAttr mesh1.translate 1 2 3; "
                                        "setAttr mesh1.scale 2 1 1"));
    KDataHandle world, local;
    ASSERT_TRUE(plug(shape, "worldMesh").elementByLogicalIndex(0).getValue(world));
    ASSERT_TRUE(plug(shape, "outMesh").getValue(local));
    EXPECT_EQ(world.asMesh(), local.asMesh());
    const KMatrix m = world.geometryTransformMatrix();
    EXPECT_DOUBLE_EQ(m(3, 0), 1.0);
    EXPECT_DOUBLE_EQ(m(3, 2), 3.0);
    EXPECT_DOUBLE_EQ(m(0, 0), 2.0);
    EXPECT_TRUE(local.geometryTransformMatrix() == KMatrix());
    KFloatPointArray points;
    ASSERT_TRUE(KFnMesh(shape).getPoints(points, KSpace::kWorld));
    EXPECT_FLOAT_EQ(points[4].x, 5.0f); // (2, 0.5, 0) scaled by 2 in x, then moved
    EXPECT_FLOAT_EQ(points[4].y, 2.5f);
}

TEST_F(MeshScene, ShadingGroupsAreExclusivePerFace) {
    const KObject sg1 = shadingGroup("sg1");
    const KObject sg2 = shadingGroup("sg2");
    ASSERT_TRUE(KFnSet(sg1).addMember(path, faces({0, 1})));
    ASSERT_TRUE(KFnSet(sg2).addMember(path, faces({1, 2})));
    KSelectionList members;
    ASSERT_TRUE(KFnSet(sg1).getMembers(members, true));
    ASSERT_EQ(members.length(), 1u);
    KDagPath memberPath;
    KObject component;
    ASSERT_TRUE(members.getDagPath(0, memberPath, component));
    EXPECT_EQ(memberPath.node(), shape);
    EXPECT_EQ(component.apiType(), KFn::kMeshPolygonComponent);
    KIntArray elements;
    KFnSingleIndexedComponent(component).getElements(elements);
    EXPECT_EQ(elements, (KIntArray{0}));
    EXPECT_EQ(KFnSet(sg2).restriction(), KFnSet::kRenderableOnly);

    KSelectionList items;
    items.add(path);
    KObjectArray sets;
    ASSERT_TRUE(KGlobal::getAssociatedSets(items, sets));
    ASSERT_EQ(sets.length(), 2u);
    EXPECT_EQ(sets[0], sg1);
    EXPECT_EQ(sets[1], sg2);
}

TEST_F(MeshScene, ComponentNamesSelectFacesOnTheCommandLineAndInLists) {
    ASSERT_TRUE(KGlobal::executeCommand("createNode shadingEngine -name sg1; "
                                        "sets -edit -forceElement sg1 mesh1.f[1:2]"));
    KSelectionList members;
    ASSERT_TRUE(KFnSet(nodeNamed("sg1")).getMembers(members, true));
    KDagPath memberPath;
    KObject component;
    ASSERT_TRUE(members.getDagPath(0, memberPath, component));
    EXPECT_EQ(memberPath.node(), shape);
    KIntArray elements;
    KFnSingleIndexedComponent(component).getElements(elements);
    EXPECT_EQ(elements, (KIntArray{1, 2}));

    KSelectionList list;
    ASSERT_TRUE(list.add("mesh1.vtx[4]"));
    ASSERT_TRUE(list.getDagPath(0, memberPath, component));
    EXPECT_EQ(component.apiType(), KFn::kMeshVertComponent);
    EXPECT_EQ(KFnSingleIndexedComponent(component).element(0), 4);
    EXPECT_FALSE(list.add("mesh1.f[3:1]"));
    EXPECT_FALSE(list.add("nothing.f[0]"));
    EXPECT_FALSE(KGlobal::executeCommand("sets -edit -forceElement sg1 mesh1.f[x]"));
}

TEST_F(MeshScene, DependencyGraphWalksFromTheMeshToItsSets) {
    const KObject sg1 = shadingGroup("sg1");
    KFnDependencyNode setFn;
    const KObject faceSet = setFn.create("objectSet", "topFaces");
    const KObject other = setFn.create("objectSet", "unrelated");
    ASSERT_TRUE(KFnSet(sg1).addMember(path, faces({0})));
    ASSERT_TRUE(KFnSet(faceSet).addMember(path, faces({2})));
    std::vector<KObject> visited;
    for (KItDependencyGraph it(shape, KFn::kSet, KItDependencyGraph::kDownstream); !it.isDone();
         it.next()) {
        visited.push_back(it.currentItem());
    }
    EXPECT_EQ(visited, (std::vector<KObject>{sg1, faceSet}));
    KItDependencyGraph up(sg1, KFn::kMesh, KItDependencyGraph::kUpstream);
    ASSERT_FALSE(up.isDone());
    EXPECT_EQ(up.currentItem(), shape);
    EXPECT_TRUE(KItDependencyGraph(other, KFn::kMesh, KItDependencyGraph::kUpstream).isDone());
    KStatus status;
    KFailureInjection::failNext("KItDependencyGraph::KItDependencyGraph");
    KItDependencyGraph failed(shape, KFn::kSet, KItDependencyGraph::kDownstream,
                              KItDependencyGraph::kDepthFirst, &status);
    EXPECT_FALSE(status);
    EXPECT_TRUE(failed.isDone());
}

TEST_F(MeshScene, ShadersAreFoundThroughTheShadingGroupInputs) {
    ASSERT_TRUE(
        KGlobal::executeCommand("createNode shadingEngine -name sg1; createNode lambert -name red; "
                                "createNode displacementShader -name bumps; "
                                "connectAttr red.message sg1.surfaceShader; "
                                "connectAttr bumps.message sg1.displacementShader"));
    const KObject sg = nodeNamed("sg1");
    KPlugArray sources;
    ASSERT_TRUE(plug(sg, "displacementShader").connectedTo(sources, true, false));
    ASSERT_EQ(sources.length(), 1u);
    const KObject shader = sources[0].node();
    EXPECT_EQ(KFnDependencyNode(shader).name(), KString("bumps"));
    EXPECT_EQ(KFnDependencyNode(shader).classification(),
              KString("drawdb/shader/displacement/displacementShader"));
    ASSERT_TRUE(KGlobal::executeCommand("setAttr bumps.displacement 0.5; setAttr bumps.scale 4"));
    EXPECT_FLOAT_EQ(plug(shader, "outDisplacement").asFloat(), 2.0f);
}

TEST_F(MeshScene, ArrayDataBuilderOutputsMeshesAndShrinks) {
    const KObject module = KPluginLoader::registerModule("meshTests");
    ASSERT_TRUE(KFnPlugin(module).registerNode("meshList", KTypeId(0x7E0301), &MeshListNode::create,
                                               &MeshListNode::initialize));
    {
        KFnDependencyNode fn;
        const KObject node = fn.create("meshList");
        const KPlug out = plug(node, "meshes");
        ASSERT_TRUE(plug(node, "count").setInt(3));
        KDataHandle evaluated;
        ASSERT_TRUE(out.getValue(evaluated)); // numElements counts, it does not evaluate
        ASSERT_EQ(out.numElements(), 3u);
        const KObject third = out.elementByLogicalIndex(2).asKObject();
        EXPECT_EQ(KFnMesh(third).getRawPoints()[0], 2.0f);
        ASSERT_TRUE(plug(node, "count").setInt(1));
        ASSERT_TRUE(out.getValue(evaluated));
        EXPECT_EQ(out.numElements(), 1u);
        EXPECT_EQ(KFnMesh(out.elementByLogicalIndex(0).asKObject()).numPolygons(), 1);
    }
    KScene::reset();
    EXPECT_TRUE(KPluginLoader::unload(module));
}

} // namespace
