#include "ScratchDir.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <kova/signing/VerifyPlugin.h>
#include <sys/wait.h>

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

struct ToolRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// Runs norv-sign with the given (already quoted) arguments, capturing both streams.
ToolRun runTool(const ScratchDir& dir, const std::string& arguments) {
    const std::string out = dir.path("tool.out");
    const std::string err = dir.path("tool.err");
    const std::string command =
        std::string("'") + NORV_SIGN_TOOL + "' " + arguments + " >'" + out + "' 2>'" + err + "'";
    const int status = std::system(command.c_str());
    ToolRun run;
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    const auto outBytes = readBytes(out);
    const auto errBytes = readBytes(err);
    run.out.assign(outBytes.begin(), outBytes.end());
    run.err.assign(errBytes.begin(), errBytes.end());
    return run;
}

std::string quoted(const std::string& path) {
    return "'" + path + "'";
}

} // namespace

TEST(NorvSignTool, VerifyPrintsOkOrTheReason) {
    ScratchDir dir;
    ToolRun run = runTool(dir, "--verify " + quoted(FIXTURE_GOOD));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "ok\n");

    run = runTool(dir, "--verify " + quoted(FIXTURE_UNSIGNED));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "the library was never signed\n");

    run = runTool(dir, "--verify " + quoted(FIXTURE_OLD_API));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "built against API version 20240000, this host has 20250000\n");
    run = runTool(dir, "--verify " + quoted(FIXTURE_OLD_API) + " --api-version 20240000");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "ok\n");
}

TEST(NorvSignTool, SignsInPlaceSilentlyOrFailsWithOneLineOnStderr) {
    ScratchDir dir;
    const std::string path = dir.copy(FIXTURE_UNSIGNED, "plugin.so");
    ToolRun run = runTool(dir, quoted(path));
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_EQ(KovaSigning::verifyPlugin(path, "20250000").status,
              KovaSigning::VerifyResult::Status::Ok);

    run = runTool(dir, quoted(FIXTURE_UNSTAMPED));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              std::string("norv-sign: ") + FIXTURE_UNSTAMPED + ": does not export KApiVersion\n");
}

TEST(NorvSignTool, ReportsUsageErrorsAndHelp) {
    ScratchDir dir;
    ToolRun run = runTool(dir, "");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "norv-sign: no library given (see --help)\n");
    run = runTool(dir, "--frobnicate x.so");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("unknown option '--frobnicate'"));
    run = runTool(dir, "--verify a.so b.so");
    EXPECT_EQ(run.exitCode, 2);

    run = runTool(dir, "--help");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, StartsWith("Usage: norv-sign LIB\n"));
    EXPECT_EQ(run.err, "");
}
