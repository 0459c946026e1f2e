#include "MeshFixtures.h"

#include <kova/KDataHandle.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnSet.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KGlobal.h>
#include <kova/KItDependencyGraph.h>
#include <kova/KPlugArray.h>

namespace {

// The mesh of MeshArrays in a shape "mesh1" under a transform of the scene.
class MeshScene : public MeshTest {
protected:
    void SetUp() override {
        MeshTest::SetUp();
        transform = fn.create(10, 3, a.points, a.counts, a.connects);
        shape = fn.object();
        KDagPath::getAPathTo(shape, path);
    }
    static KPlug plug(const KObject& node, const char* name) {
        return KFnDependencyNode(node).findPlug(name, false);
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
    KFnDependencyNode setFn;
    const KObject sg1 = setFn.create("shadingEngine", "sg1");
    const KObject faceSet = setFn.create("objectSet", "topFaces");
    const KObject other = setFn.create("objectSet", "unrelated");
    KFnSingleIndexedComponent faces;
    const KObject component = faces.create(KFn::kMeshPolygonComponent);
    ASSERT_TRUE(faces.addElement(2));
    ASSERT_TRUE(KFnSet(sg1).addMember(path, component));
    ASSERT_TRUE(KFnSet(faceSet).addMember(path, component));
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
}

TEST_F(MeshScene, ShadersAreFoundThroughTheShadingGroupInputs) {
    ASSERT_TRUE(KGlobal::executeCommand("createNode shadingEngine -name sg1; "
                                        "createNode displacementShader -name bumps; "
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

} // namespace
