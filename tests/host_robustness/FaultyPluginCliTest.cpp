// The `kova` program with translation libraries that throw or fail (see FaultyTranslation.cpp):
// it ends normally with a failure status and says why, whichever operation fails.

#include "ChildRun.h"

#include <gtest/gtest.h>

namespace {

std::string faulty(const char* fault) {
    return std::string(FAULTY_TRANSLATION_DIR) + "/faultyTranslation" + fault + ".so";
}

// A scene script: a board reading the bundled cube through the library on `plugin`, evaluated.
std::string boardScript(const std::string& plugin) {
    return "load-plugin " + plugin +
           "\n"
           "import " DATA_DIR "/sample_mesh.obj\n"
           "board b\n"
           "port b in in object\n"
           "port b out out object\n"
           "wire b in out\n"
           "connectAttr cubeShape.worldMesh[0] b.in\n"
           "evaluate b\n"
           "echo evaluated\n";
}

void expectFailureSaying(const ChildRun& run, const std::string& reason, const char* what) {
    EXPECT_TRUE(run.exited) << what << " ended by signal " << run.signal << ":\n" << run.err;
    EXPECT_EQ(run.exitCode, 1) << what << ":\n" << run.err;
    EXPECT_NE(run.err.find(reason), std::string::npos) << what << ":\n" << run.err;
}

TEST(FaultyPluginCli, ConvertWithALibraryThatCannotBeBoundFailsInOneLine) {
    const std::pair<const char*, const char*> faults[] = {
        {"FactoryThrows", "createZelvaneTypeTranslation fails on purpose"},
        {"SupportedTypesThrow", "getSupportedTypeNames fails on purpose"},
        {"RegisterThrows", "registerHostPlugins fails on purpose"},
        {"None", "refused"}};
    for (const auto& [fault, reason] : faults) {
        const ChildRun run = runKova(
            {"convert", DATA_DIR "/sample_mesh.obj", "/dev/null.obj", "--plugin", faulty(fault)});
        expectFailureSaying(run, reason, fault);
        EXPECT_EQ(run.errorLines().size(), 1u) << fault << ":\n" << run.err;
        EXPECT_EQ(run.out, "") << fault;
    }
}

TEST(FaultyPluginCli, AScriptWhoseTranslationThrowsStopsAtTheEvaluationWithTheReason) {
    for (const char* fault : {"InputThrows", "OutputThrows"}) {
        const ChildRun run = runKova({"run", "-"}, {boardScript(faulty(fault))});
        expectFailureSaying(run, "fails on purpose", fault);
        expectFailureSaying(run, "kova: -:8: the evaluation of b failed", fault);
        EXPECT_EQ(run.out, "") << fault << ": the script stops there";
    }
}

TEST(FaultyPluginCli, AScriptGoesOnPastATranslationThatFailsWithAWarning) {
    const std::pair<const char*, const char*> faults[] = {
        {"InputFails", "input 'in' could not be translated"},
        {"OutputFails", "output 'out' could not be written back"}};
    for (const auto& [fault, warning] : faults) {
        const ChildRun run = runKova({"run", "-"}, {boardScript(faulty(fault))});
        EXPECT_EQ(run.exitCode, 0) << fault << ":\n" << run.err;
        EXPECT_EQ(run.out, "evaluated\n") << fault;
        EXPECT_NE(run.err.find(std::string("kova: warning: Board 'b': ") + warning),
                  std::string::npos)
            << fault << ":\n"
            << run.err;
    }
}

TEST(FaultyPluginCli, ANodeWhoseComputeThrowsOrFailsLeavesItsPlugUnevaluated) {
    for (const char* fault : {"ComputeThrows", "ComputeFails"}) {
        const ChildRun run = runKova({"run", "-"}, {"load-plugin " + faulty(fault) +
                                                    "\ncreateNode faultyNode -name f\n"
                                                    "print f.output\n"});
        expectFailureSaying(run, "compute", fault);
        expectFailureSaying(run, "kova: -:3: ", fault);
    }
}

TEST(FaultyPluginCli, ALibraryThatThrowsWhileItIsUnboundStillLetsTheHostEnd) {
    for (const char* fault : {"DeregisterThrows", "ReleaseThrows"}) {
        const ChildRun run =
            runKova({"run", "-"}, {"load-plugin " + faulty(fault) + "\necho bound\n"});
        EXPECT_TRUE(run.exited) << fault << " ended by signal " << run.signal << ":\n" << run.err;
        EXPECT_EQ(run.out, "bound\n") << fault;
        EXPECT_NE(run.err.find("fails on purpose"), std::string::npos) << fault << ":\n" << run.err;
    }
}

} // namespace
