// `kova run` as a user runs it: scripts of host commands and script verbs.

#include "CliRun.h"

#include <fstream>

namespace {

class RunCli : public CliTest {
protected:
    std::string script(const std::string& text) const {
        std::ofstream(path("scene.kova")) << text;
        return path("scene.kova");
    }
};

TEST_F(RunCli, TimeTravelsThroughABoardGraphChecksPassAndHostCommandsPrintTheirResults) {
    const CliRun run = kova("run '" +
                            script("# time in, time out\n"
                                   "load-plugin\n"
                                   "board b1\n"
                                   "port b1 now in time\n"
                                   "port b1 later out time\n"
                                   "wire b1 now later\n"
                                   "setAttr time1.outTime 48\n"
                                   "evaluate b1\n"
                                   "expect b1.later 48\n"
                                   "print b1.now\n"
                                   "echo \"all   done\"\n"
                                   "createNode transform -name t1\n"
                                   "setAttr t1.translate 1 2 3\n"
                                   "getAttr t1.translate\n") +
                            "'");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.output, "48\nall   done\nt1\n1\n2\n3\n");
}

TEST_F(RunCli, TheFirstFailingLineIsNamedWithTheReasonAndStopsTheScript) {
    const std::pair<const char*, const char*> failures[] = {
        {"createNode transform -name t1\n\nexpect t1.translate 0 0 1\necho never\n",
         "3: expected t1.translate to be \"0 0 1\", it is \"0 0 0\""},
        {"port nowhere p in object\n", "1: no node named \"nowhere\""},
        {"board b\nport b p sideways object\n", "2: a port is \"in\" or \"out\", not \"sideways\""},
        {"echo \"open\n", "1: a quote is not closed"},
        {"connectAttr a.b c.d\n", "1: connectAttr: 'a.b' is not a plug: no such node"},
        {"board b\nport b in in object\n", "2: the port \"in\" was not added"},
    };
    for (const auto& [text, reason] : failures) {
        const CliRun run = kova("run '" + script(text) + "'");
        EXPECT_EQ(run.exitCode, 1) << text;
        EXPECT_NE(run.output.find("kova: " + path("scene.kova") + ":" + reason), std::string::npos)
            << run.output;
        EXPECT_EQ(run.output.find("never"), std::string::npos) << run.output;
    }
}

TEST_F(RunCli, ReadsStandardInputAndRefusesMissingFiles) {
    EXPECT_EQ(kova("run - < '" + script("echo piped\n") + "'").output, "piped\n");
    const CliRun missing = kova("run '" + path("none.kova") + "'");
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.output, "kova: error: cannot read " + path("none.kova") + "\n");
}

TEST_F(RunCli, ImportsSendsAMeshThroughAGraphAndExportsWhatComesBack) {
    const std::string out = path("back.obj");
    const CliRun run = kova("run '" +
                            script("load-plugin\n"
                                   "import \"" +
                                   std::string(DATA_DIR) +
                                   "/sample_mesh.obj\"\n"
                                   "board b\n"
                                   "port b in in object\n"
                                   "port b out out object noShape=1\n"
                                   "operator b pass passThrough\n"
                                   "wire b in pass.in\n"
                                   "wire b pass.out out\n"
                                   "connectAttr cubeShape.worldMesh b.in\n"
                                   "createNode zelvaneGeoToKova -name back\n"
                                   "setAttr -type string back.properties colorSet1\n"
                                   "connectAttr b.out back.zelvaneGeo\n"
                                   "createNode transform -name copied\n"
                                   "createNode mesh -name copiedShape -parent copied\n"
                                   "connectAttr back.kovaMesh[0] copiedShape.inMesh\n"
                                   "print copiedShape.outMesh\n"
                                   "export \"" +
                                   out + "\" copied\n") +
                            "'");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("mesh: 8 points, 6 faces, 24 face-vertices, uv sets [map1]"),
              std::string::npos)
        << run.output;
    std::ifstream copied(out);
    std::string first;
    while (std::getline(copied, first) && first.rfind("v ", 0) != 0) {
    }
    EXPECT_EQ(first, "v 0 0 0 1 0 0"); // the first point keeps its place and colour
}

} // namespace
