#include "IoTestSupport.h"

#include <kova/KDagPath.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnMesh.h>
#include <kova/KFnNurbsCurve.h>
#include <kova/KFnSet.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/KFnTransform.h>
#include <kova/KGlobal.h>
#include <kova/KPlugArray.h>
#include <kova/KSelectionList.h>
#include <kova_io/HostSceneReader.h>
#include <kova_io/ObjWriter.h>
#include <kova_io/SceneExport.h>
#include <kova_io/SceneImport.h>

using namespace KovaIo;

namespace {

using HostRoundTrip = IoTest;

KIntArray facesOf(const KObject& set) {
    KSelectionList members;
    KFnSet(set).getMembers(members, true);
    KDagPath path;
    KObject component;
    KIntArray faces;
    if (members.length() == 1 && members.getDagPath(0, path, component) && !component.isNull()) {
        KFnSingleIndexedComponent(component).getElements(faces);
    }
    return faces;
}

TEST_F(HostRoundTrip, ObjMeshBecomesAHostMeshWithItsChannelsSetsAndMaterials) {
    const ImportResult result = importScene(dataFile("sample_mesh.obj"));
    ASSERT_TRUE(result.status) << result.status.errorString();
    ASSERT_EQ(result.nodes.meshShapes.size(), 1u);
    const KObject shape = result.nodes.meshShapes[0];
    EXPECT_EQ(KFnDependencyNode(shape).name(), KString("cubeShape"));
    KFnMesh fn(shape);
    EXPECT_EQ(fn.numVertices(), 8);
    EXPECT_EQ(fn.numPolygons(), 6);
    EXPECT_EQ(fn.numNormals(), 6);
    KIntArray counts, ids;
    ASSERT_TRUE(fn.getNormalIds(counts, ids));
    EXPECT_EQ(ids[4], 1);
    KIntArray uvCounts, uvIds;
    ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
    EXPECT_EQ(uvIds.length(), 24u);
    EXPECT_EQ(uvIds[4], 4);
    EXPECT_EQ(fn.numUVs(), 8);
    EXPECT_EQ(fn.getCurrentColorSetName(), KString("colorSet1"));
    EXPECT_EQ(fn.getColorRepresentation("colorSet1"), 3);

    ASSERT_EQ(result.nodes.faceSets.size(), 3u); // bottom, sides, top
    EXPECT_EQ(KFnDependencyNode(result.nodes.faceSets[0]).name(), KString("bottom"));
    EXPECT_EQ(facesOf(result.nodes.faceSets[1]), (KIntArray{0, 2, 3, 4, 5}));
    ASSERT_EQ(result.nodes.shadingGroups.size(), 2u);
    const KObject red = result.nodes.shadingGroups[0];
    EXPECT_EQ(KFnDependencyNode(red).name(), KString("redSG"));
    EXPECT_EQ(KFnSet(red).restriction(), KFnSet::kRenderableOnly);
    EXPECT_EQ(facesOf(red), (KIntArray{0, 2, 3, 4, 5}));
    KPlugArray sources;
    ASSERT_TRUE(
        KFnDependencyNode(red).findPlug("surfaceShader", false).connectedTo(sources, true, false));
    ASSERT_EQ(sources.length(), 1u);
    EXPECT_EQ(KFnDependencyNode(sources[0].node()).typeName(), KString("lambert"));
    EXPECT_EQ(KFnDependencyNode(sources[0].node()).name(), KString("red"));
}

TEST_F(HostRoundTrip, ObjWrittenAndReadAgainOrThroughTheHostComesBackValueForValue) {
    for (const char* name : {"sample_mesh.obj", "sample_curves.obj"}) {
        const SceneData first = parseObj(read(dataFile(name)), "cube");
        std::vector<std::string> warnings;
        const std::string text = writeObj(first, warnings);
        EXPECT_TRUE(warnings.empty()) << warnings.front();
        const SceneData second = parseObj(text);
        ASSERT_EQ(second.meshes.size(), first.meshes.size());
        for (std::size_t i = 0; i < first.meshes.size(); ++i) {
            const MeshRecord& a = first.meshes[i];
            const MeshRecord& b = second.meshes[i];
            EXPECT_EQ(a.points, b.points);
            EXPECT_EQ(a.faceVertices, b.faceVertices);
            EXPECT_EQ(a.normals.xyz, b.normals.xyz);
            EXPECT_EQ(a.normals.ids, b.normals.ids);
            EXPECT_EQ(a.uvSets[0].ids, b.uvSets[0].ids);
            EXPECT_EQ(a.uvSets[0].v, b.uvSets[0].v);
            EXPECT_EQ(a.colorSets[0].colors, b.colorSets[0].colors);
            EXPECT_EQ(a.groups.size(), b.groups.size());
            EXPECT_EQ(a.materials[1].faces, b.materials[1].faces);
        }
        ASSERT_EQ(second.curves.size(), first.curves.size());
        for (std::size_t i = 0; i < first.curves.size(); ++i) {
            EXPECT_EQ(first.curves[i].cvs, second.curves[i].cvs);
            EXPECT_EQ(first.curves[i].knots, second.curves[i].knots);
            EXPECT_EQ(first.curves[i].form, second.curves[i].form);
        }
        EXPECT_EQ(writeObj(second, warnings), text);

        // Imported into the host and exported again, the file reads as written from the file.
        ASSERT_TRUE(importScene(dataFile(name)).status);
        const std::string out = file("out.obj", "");
        const ExportResult exported = exportScene(out, geometryShapes());
        ASSERT_TRUE(exported.status) << exported.status.errorString();
        EXPECT_TRUE(exported.warnings.empty());
        EXPECT_EQ(read(out), text) << name;
        KScene::reset();
    }
}

TEST_F(HostRoundTrip, CurvesTakeTheHostKnotConventionFormsAndWeights) {
    const ImportResult result = importScene(dataFile("sample_curves.obj"));
    ASSERT_TRUE(result.status) << result.status.errorString();
    ASSERT_EQ(result.nodes.curveShapes.size(), 4u);
    const KFnNurbsCurve open(result.nodes.curveShapes[0]);
    KDoubleArray knots;
    ASSERT_TRUE(open.getKnots(knots));
    EXPECT_EQ(knots, (KDoubleArray{0, 0, 0, 1, 2, 2, 2}));
    EXPECT_EQ(open.form(), KFnNurbsCurve::kOpen);
    KPoint cv;
    ASSERT_TRUE(open.getCV(1, cv));
    EXPECT_EQ(cv, KPoint(1, 2, 0, 1)) << "not rational";
    EXPECT_EQ(KFnNurbsCurve(result.nodes.curveShapes[1]).form(), KFnNurbsCurve::kClosed);
    // The periodic curve stores its overlap: 5 + 3 CVs, 10 knots from -2.
    const KFnNurbsCurve periodic(result.nodes.curveShapes[2]);
    EXPECT_EQ(periodic.form(), KFnNurbsCurve::kPeriodic);
    EXPECT_EQ(periodic.numCVs(), 8);
    ASSERT_TRUE(periodic.getKnots(knots));
    EXPECT_EQ(knots.length(), 10u);
    EXPECT_EQ(knots[0], -2.0);
    double start = 0, end = 0;
    ASSERT_TRUE(periodic.getKnotDomain(start, end));
    EXPECT_EQ(start, 0.0);
    EXPECT_EQ(end, 5.0);
    const KFnNurbsCurve circle(result.nodes.curveShapes[3]);
    EXPECT_EQ(circle.form(), KFnNurbsCurve::kClosed);
    EXPECT_EQ(circle.degree(), 2);
    KPoint onCircle;
    ASSERT_TRUE(circle.getPointAtParam(0.125, onCircle));
    EXPECT_NEAR(std::hypot(onCircle.x, onCircle.y), 1.0, 1e-12);
    ASSERT_TRUE(circle.getCV(1, cv));
    EXPECT_DOUBLE_EQ(cv.w, 0.70710678118654757);
    EXPECT_DOUBLE_EQ(cv.x, 0.70710678118654757); // homogeneous in the host, cartesian in OBJ
    EXPECT_NEAR(circle.length(), 2 * M_PI, 1e-9);
}

TEST_F(HostRoundTrip, TransformedShapesAreWrittenInWorldSpace) {
    ASSERT_TRUE(importScene(dataFile("sample_mesh.obj")).status);
    ASSERT_TRUE(KGlobal::executeCommand("setAttr cube.translate 10 0 0; setAttr cube.scale 2 1 1"));
    SceneData scene;
    ASSERT_TRUE(readHostScene(geometryShapes(), scene));
    const MeshRecord& m = scene.meshes.at(0);
    EXPECT_EQ(m.points[3], 12.0f);     // point 2 (1, 0, 0) scaled and moved
    EXPECT_EQ(m.normals.xyz[9], 1.0f); // +x stays a unit normal
    EXPECT_EQ(m.materials.size(), 2u);
    EXPECT_EQ(m.groups.size(), 3u);
}

TEST_F(HostRoundTrip, HostComputedNormalsAreNotWrittenAsUserNormals) {
    ASSERT_TRUE(importScene(file("plain.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n")).status);
    SceneData scene;
    ASSERT_TRUE(readHostScene(geometryShapes(), scene));
    EXPECT_TRUE(scene.meshes.at(0).normals.ids.empty());
    EXPECT_TRUE(scene.meshes[0].uvSets.empty()) << "the empty default UV set is not data";
    EXPECT_TRUE(scene.meshes[0].materials.empty()) << "the default shading group is not written";
}

TEST_F(HostRoundTrip, NamesTheHostRefusesAreChangedAndReported) {
    const ImportResult result = importScene(
        file("names.obj", "o 3d part\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl Mat.001\nf 1 2 3\n"));
    ASSERT_TRUE(result.status) << result.status.errorString();
    EXPECT_EQ(result.renamed, (std::vector<std::string>{"mesh '3d part' -> '_3d_part'",
                                                        "material 'Mat.001' -> 'Mat_001'"}));
    EXPECT_FALSE(KScene::current().findNode("Mat_001SG").isNull());
}

TEST_F(HostRoundTrip, ExportRefusesWhatIsNotGeometry) {
    const KObject time = KScene::current().findNode("time1");
    const ExportResult result = exportScene(file("x.obj", ""), {time});
    EXPECT_NE(failureText(result.status).find("cannot export"), std::string::npos);
}

} // namespace
