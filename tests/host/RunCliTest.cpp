// `kova run` as a user runs it: scripts of host commands and script verbs.

#include "CliRun.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

// A script file in a fresh temporary folder, removed with the fixture.
class RunCli : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() /
                  ("kova-run-" + std::to_string(::getpid()) + "-" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string script(const std::string& text) const {
        const std::filesystem::path path = folder_ / "scene.kova";
        std::ofstream(path) << text;
        return path.string();
    }

    std::filesystem::path folder_;
};

TEST_F(RunCli, TimeTravelsThroughABoardGraphAndChecksPass) {
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
                                   "echo \"all   done\"\n") +
                            "'");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.output, "48\nall   done\n");
}

TEST_F(RunCli, HostCommandsPrintTheirResults) {
    const CliRun run = kova("run '" +
                            script("createNode transform -name t1\n"
                                   "setAttr t1.translate 1 2 3\n"
                                   "getAttr t1.translate\n") +
                            "'");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.output, "t1\n1\n2\n3\n");
}

TEST_F(RunCli, FirstFailingLineIsNamedAndStopsTheScript) {
    const std::string path = script("createNode transform -name t1\n"
                                    "\n"
                                    "expect t1.translate 0 0 1\n"
                                    "echo never\n");
    const CliRun run = kova("run '" + path + "'");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output,
              "t1\nkova: " + path + ":3: expected t1.translate to be \"0 0 1\", it is \"0 0 0\"\n");
}

TEST_F(RunCli, ReportsBadVerbsHostErrorsAndQuotes) {
    EXPECT_NE(kova("run '" + script("port nowhere p in object\n") + "'")
                  .output.find(":1: no node named \"nowhere\""),
              std::string::npos);
    EXPECT_NE(kova("run '" + script("board b\nport b p sideways object\n") + "'")
                  .output.find(":2: a port is \"in\" or \"out\", not \"sideways\""),
              std::string::npos);
    EXPECT_NE(
        kova("run '" + script("echo \"open\n") + "'").output.find(":1: a quote is not closed"),
        std::string::npos);
    const CliRun host = kova("run '" + script("connectAttr a.b c.d\n") + "'");
    EXPECT_EQ(host.exitCode, 1);
    EXPECT_NE(host.output.find(":1: "), std::string::npos) << host.output;
}

TEST_F(RunCli, PortsNeedABoundTranslation) {
    const CliRun run = kova("run '" + script("board b\nport b in in object\n") + "'");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find(":2: the port \"in\" was not added"), std::string::npos)
        << run.output;
}

TEST_F(RunCli, ReadsStandardInputAndRefusesMissingFiles) {
    EXPECT_EQ(kova("run - < '" + script("echo piped\n") + "'").output, "piped\n");
    const CliRun missing = kova("run '" + (folder_ / "none.kova").string() + "'");
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.output,
              "kova: error: cannot read " + (folder_ / "none.kova").string() + "\n");
}

} // namespace

namespace {

TEST_F(RunCli, ImportsSendsAMeshThroughAGraphAndExportsWhatComesBack) {
    const std::string out = (folder_ / "back.obj").string();
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
