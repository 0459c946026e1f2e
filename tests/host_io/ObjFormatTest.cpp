#include "IoTestSupport.h"

#include <kova_io/ObjWriter.h>

using namespace KovaIo;

namespace {

using ObjFormat = IoTest;

TEST_F(ObjFormat, FacesKeepSharedPointsAndPerFaceVertexIndices) {
    const SceneData scene = parseObj("v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                                     "vt 0 0\nvt 1 0\nvt 1 1\nvn 0 0 1\nvn 0 0 -1\n"
                                     "f 1/1/1 2/2/1 3/3/1\nf -4/-3/-1 -2/-1/-1 -1/-3/-2\n");
    ASSERT_EQ(scene.meshes.size(), 1u);
    const MeshRecord& m = scene.meshes[0];
    EXPECT_EQ(m.name, "obj");
    EXPECT_EQ(m.pointCount(), 4);
    EXPECT_EQ(m.faceCounts, (std::vector<int>{3, 3}));
    EXPECT_EQ(m.faceVertices, (std::vector<int>{0, 1, 2, 0, 2, 3}));
    ASSERT_EQ(m.uvSets.size(), 1u);
    EXPECT_EQ(m.uvSets[0].name, "map1");
    EXPECT_EQ(m.uvSets[0].ids, (std::vector<int>{0, 1, 2, 0, 2, 0}));
    EXPECT_EQ(m.uvSets[0].u, (std::vector<float>{0, 1, 1}));
    EXPECT_EQ(m.normals.ids, (std::vector<int>{0, 0, 0, 1, 1, 0}));
    EXPECT_EQ(m.normals.xyz, (std::vector<float>{0, 0, 1, 0, 0, -1}));
}

TEST_F(ObjFormat, ObjectsTakeOnlyTheEntriesTheyUseInFileOrder) {
    const SceneData scene = parseObj("o a\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"
                                     "o b\nv 5 0 0\nv 6 0 0\nv 5 1 0\nv 9 9 9\nf 4 6 5\n");
    ASSERT_EQ(scene.meshes.size(), 2u);
    const MeshRecord& b = scene.meshes[1];
    EXPECT_EQ(b.name, "b");
    EXPECT_EQ(b.points, (std::vector<float>{5, 0, 0, 6, 0, 0, 5, 1, 0}));
    EXPECT_EQ(b.faceVertices, (std::vector<int>{0, 2, 1}));
    EXPECT_TRUE(b.uvSets.empty());
    EXPECT_TRUE(b.normals.ids.empty());
}

TEST_F(ObjFormat, GroupsMaterialsAndColoursBecomeSetsByFace) {
    const SceneData scene = parseObj("v 0 0 0 1 0 0\nv 1 0 0 0 1 0\nv 1 1 0\nv 0 1 0 0 0 1\n"
                                     "g a b\nusemtl red\nf 1 2 3\ng b\nusemtl\nf 1 3 4\n"
                                     "mtllib x.mtl\ns 1\nusemtl blue\nf 4 3 2\n");
    const MeshRecord& m = scene.meshes.at(0);
    ASSERT_EQ(m.groups.size(), 2u);
    EXPECT_EQ(m.groups[0].name, "a");
    EXPECT_EQ(m.groups[0].faces, (std::vector<int>{0}));
    EXPECT_EQ(m.groups[1].faces, (std::vector<int>{0, 1, 2}));
    ASSERT_EQ(m.materials.size(), 2u);
    EXPECT_EQ(m.materials[0].name, "red");
    EXPECT_EQ(m.materials[0].faces, (std::vector<int>{0}));
    EXPECT_EQ(m.materials[1].name, "blue");
    EXPECT_EQ(m.materials[1].faces, (std::vector<int>{2}));
    ASSERT_EQ(m.colorSets.size(), 1u);
    const ColorSetRecord& c = m.colorSets[0];
    EXPECT_EQ(c.representation, 3);
    EXPECT_EQ(c.colors.size(), 3u); // point 3 has no colour
    EXPECT_EQ(c.ids, (std::vector<int>{0, 1, -1, 0, -1, 2, 2, -1, 1}));
    EXPECT_TRUE(scene.warnings.empty());
}

TEST_F(ObjFormat, NumbersAreWrittenInTheirShortestExactForm) {
    SceneData scene;
    scene.meshes.push_back(MeshRecord{
        "m", {0.1f, 1e-7f, 3.4028235e38f, 1, 0, 0, 0, 1, 0}, {3}, {0, 1, 2}, {}, {}, {}, {}, {}});
    std::vector<std::string> warnings;
    const std::string text = writeObj(scene, warnings);
    EXPECT_NE(text.find("v 0.1 1e-07 3.4028235e+38\n"), std::string::npos) << text;
    EXPECT_EQ(parseObj(text).meshes.at(0).points, scene.meshes[0].points);
}

TEST_F(ObjFormat, WhatObjCannotHoldIsNamedInWarnings) {
    SceneData scene;
    MeshRecord m{"m", {0, 0, 0, 1, 0, 0, 0, 1, 0}, {3, 3}, {0, 1, 2, 0, 2, 1}, {}, {}, {}, {}, {}};
    m.uvSets = {UVSetRecord{"a", {0}, {0}, std::vector<int>(6, 0)},
                UVSetRecord{"b", {1}, {1}, std::vector<int>(6, 0)}};
    // Point 0 is red on the first face and green on the second.
    m.colorSets = {ColorSetRecord{"c", 4, {{1, 0, 0, 1}, {0, 1, 0, 1}}, {0, 1, 1, 1, 1, 1}}};
    scene.meshes.push_back(m);
    std::vector<std::string> warnings;
    const std::string text = writeObj(scene, warnings);
    ASSERT_EQ(warnings.size(), 2u);
    EXPECT_NE(warnings[0].find("varies between the face-vertices"), std::string::npos);
    EXPECT_NE(warnings[1].find("UV set 'b'"), std::string::npos);
    EXPECT_EQ(text.find("v 0 0 0 "), std::string::npos) << "no colours written";
}

TEST_F(ObjFormat, PointsLinesAndOtherStatementsAreSkippedWithAWarning) {
    const SceneData scene = parseObj("v 0 0 0\nv 1 0 0\nv 0 1 0\np 1\nl 1 2\nl 2 3\nf 1 2\n"
                                     "cstype bezier\ndeg 1\ncurv 0 1 1 2\nparm u 0 1\nend\n"
                                     "f 1 2 3 \\\n\nvp 0.5\n");
    EXPECT_EQ(scene.meshes.at(0).faceCount(), 1);
    EXPECT_TRUE(scene.curves.empty());
    std::string all;
    for (const std::string& warning : scene.warnings) {
        all += warning + "\n";
    }
    EXPECT_NE(all.find("2 x line ('l')"), std::string::npos) << all;
    EXPECT_NE(all.find("1 x point ('p')"), std::string::npos) << all;
    EXPECT_NE(all.find("'bezier' curve"), std::string::npos) << all;
    EXPECT_NE(all.find("fewer than 3"), std::string::npos) << all;
    EXPECT_NE(all.find("'vp'"), std::string::npos) << all;
}

} // namespace
