// `kova inspect` and `kova convert` on the broken models of Debian's assimp-testmodels (its
// folder "invalid": empty files of many formats, out-of-range indices, a header that declares
// hundreds of gigabytes): each run ends normally, non-zero, with one line on standard error.

#include "../kova_signing/ScratchDir.h"
#include "ChildRun.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class BrokenFilesCli : public ::testing::Test {
protected:
    void SetUp() override {
        if (!fs::exists(invalid_)) {
            GTEST_SKIP() << "assimp-testmodels is not installed";
        }
    }

    const fs::path invalid_ = fs::path(ASSIMP_MODELS_DIR) / "invalid";
};

void expectOneLineFailure(const ChildRun& run, const std::string& what) {
    EXPECT_TRUE(run.exited) << what << " ended by signal " << run.signal << ":\n" << run.err;
    EXPECT_EQ(run.exitCode, 1) << what << ":\n" << run.err;
    const std::vector<std::string> lines = run.errorLines();
    ASSERT_EQ(lines.size(), 1u) << what << ":\n" << run.err;
    EXPECT_EQ(lines[0].rfind("kova: error: ", 0), 0u) << what << ": " << lines[0];
    EXPECT_EQ(run.out, "") << what;
}

TEST_F(BrokenFilesCli, EveryBrokenModelFailsInOneLine) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(invalid_)) {
        // The one file whose only fault is a material no file defines is tested below.
        if (entry.is_regular_file() && entry.path().filename() != "malformed2.obj") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    ASSERT_GE(files.size(), 14u);
    for (const fs::path& file : files) {
        expectOneLineFailure(runKova({"inspect", file.string()}), "inspect " + file.string());
        const ScratchDir scratch;
        const std::string output = scratch.path("out.obj");
        expectOneLineFailure(runKova({"convert", file.string(), output}),
                             "convert " + file.string());
        EXPECT_FALSE(fs::exists(output)) << file;
    }
}

TEST_F(BrokenFilesCli, ReasonsNameWhatIsWrong) {
    const auto reason = [this](const char* name) {
        const ChildRun run = runKova({"inspect", (invalid_ / name).string()});
        return run.errorLines().empty() ? std::string() : run.errorLines().front();
    };
    EXPECT_NE(reason("OutOfMemory.off").find("it declares 353535235358 vertices"),
              std::string::npos);
    EXPECT_NE(reason("malformed.obj").find("line 23: vertex index 12 is out of range"),
              std::string::npos);
    EXPECT_NE(reason("empty.obj").find("holds no meshes or curves"), std::string::npos);
    EXPECT_NE(reason("empty.ply").find("is empty"), std::string::npos);
}

TEST_F(BrokenFilesCli, AMaterialNoFileDefinesIsNoError) {
    // Its other fault, a face without vertices, is skipped with a warning.
    const ChildRun run = runKova({"inspect", "--json", (invalid_ / "malformed2.obj").string()});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find("skipped 1 x face with fewer than 3 vertices"), std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("\"DefaultDoesNotExist\""), std::string::npos) << run.out;
}

} // namespace
