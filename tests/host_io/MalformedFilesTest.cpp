#include "IoTestSupport.h"

#include <kova_io/SceneImport.h>

using namespace KovaIo;

namespace {

using MalformedFiles = IoTest;

std::string objFailure(const std::string& text) {
    SceneData scene;
    const KStatus status = readObj(text, "bad", scene);
    EXPECT_TRUE(scene.meshes.empty() && scene.curves.empty());
    return failureText(status);
}

TEST_F(MalformedFiles, ObjErrorsNameTheLineAndTheReason) {
    EXPECT_EQ(objFailure("v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 4\n"),
              "line 4: vertex index 4 is out of range (3 defined so far)");
    EXPECT_EQ(objFailure("v 0 0 0\nf 1 -2 1\n"),
              "line 2: vertex index -2 is out of range (1 defined so far)");
    EXPECT_EQ(objFailure("v 0 0 0\nvt 0 0\nf 1/2 1/1 1/1\n"),
              "line 3: texture coordinate index 2 is out of range (1 defined so far)");
    EXPECT_EQ(objFailure("v 0 0 0\nf 0 1 1\n"),
              "line 2: vertex index 0 is out of range (1 defined so far)");
    EXPECT_EQ(objFailure("\n\nv 1 2 3.1+e2\n"), "line 3: bad number '3.1+e2'");
    EXPECT_EQ(objFailure("v 1 2 nan\n"), "line 1: bad number 'nan'");
    EXPECT_EQ(objFailure("v 1 2\n"),
              "line 1: 'v' needs x y z, x y z w, x y z r g b or x y z r g b a");
    EXPECT_EQ(
        objFailure("v 0 0 0\nv 1 0 0\ncstype bspline\ndeg 1\ncurv 0 1 1 2\nparm u 0 1 2\nend\n"),
        "line 7: the curve has 3 knots; 2 control points of degree 1 need 4");
    EXPECT_EQ(objFailure("v 0 0 0\nv 1 0 0\ncstype bspline\ndeg 1\ncurv 0 1 1 2\nparm u 0 0 1 1\n"),
              "line 5: curve not closed by 'end'");
    EXPECT_EQ(objFailure("v 0 0 0\nv 1 0 0\ncstype bspline\ndeg 1\ncurv 0 1 1 2\nf 1 2 1\n"),
              "line 6: 'f' inside a curve (missing 'end')");
    EXPECT_EQ(objFailure(std::string("v 0 0 0\n\0\0", 10)),
              "not an OBJ text file (it holds binary or UTF-16 data)");
}

TEST_F(MalformedFiles, FilesThatFailLeaveTheSceneUntouched) {
    const std::string whole = read(dataFile("sample_mesh.obj"));
    const std::pair<std::string, std::string> files[] = {
        // Cut in the middle of a point: ends in "v 1 1".
        {file("cut.obj", whole.substr(0, whole.find("v 1 1 0") + 5)),
         "cut.obj': line 6: 'v' needs x y z"},
        {file("infinite.ply", "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\n"
                              "property float y\nproperty float z\nelement face 1\n"
                              "property list uchar int vertex_indices\nend_header\n"
                              "0 0 0\n1 0 0\ninf 1 0\n3 0 1 2\n"),
         "a point coordinate is not a finite number"}};
    const unsigned int before = KScene::current().nodeCount();
    for (const auto& [path, reason] : files) {
        const ImportResult result = importScene(path);
        EXPECT_FALSE(result.status) << path;
        EXPECT_NE(failureText(result.status).find(reason), std::string::npos)
            << failureText(result.status);
        EXPECT_EQ(KScene::current().nodeCount(), before) << path;
    }
}

TEST_F(MalformedFiles, BrokenAssimpFilesFailWithOneLine) {
    const std::string plyHeader = "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\n"
                                  "property float y\nproperty float z\nelement face 1\n"
                                  "property list uchar int vertex_indices\nend_header\n";
    const std::string binaryHeader = "ply\nformat binary_little_endian 1.0\nelement vertex 1000\n"
                                     "property float x\nproperty float y\nproperty float z\n"
                                     "end_header\n";
    const std::string truncated = binaryHeader + std::string(30, '\0');
    const std::string badIndex = plyHeader + "0 0 0\n1 0 0\n0 1 0\n3 0 1 7\n";
    for (const std::string& bytes : {truncated, badIndex}) {
        const ImportResult result = importScene(file("broken.ply", bytes));
        const std::string text = failureText(result.status);
        EXPECT_FALSE(text.empty());
        EXPECT_EQ(text.find('\n'), std::string::npos) << text;
        EXPECT_TRUE(result.nodes.meshShapes.empty());
    }
    EXPECT_FALSE(importScene(file("noise.glb", std::string(300, '\x5a'))).status);
}

TEST_F(MalformedFiles, MissingFilesSayWhy) {
    EXPECT_EQ(failureText(importScene((dir / "none.obj").string()).status),
              "cannot open '" + (dir / "none.obj").string() + "': No such file or directory");
}

} // namespace
