// The `kova` program with translation libraries that throw or fail (see FaultyTranslation.cpp):
// it ends normally and says why, whichever operation fails.

#include "ChildRun.h"

#include <gtest/gtest.h>
#include <tuple>

namespace {

std::string faulty(const std::string& fault) {
    return std::string(FAULTY_TRANSLATION_DIR) + "/faultyTranslation" + fault + ".so";
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
        EXPECT_TRUE(run.exited) << fault << " ended by signal " << run.signal;
        EXPECT_EQ(run.exitCode, 1) << fault << ":\n" << run.err;
        ASSERT_EQ(run.errorLines().size(), 1u) << fault << ":\n" << run.err;
        EXPECT_NE(run.err.find(reason), std::string::npos) << fault << ":\n" << run.err;
        EXPECT_EQ(run.out, "") << fault;
    }
}

// A script that binds the library and then, by the scene it builds: reads the bundled cube
// through a board (line 8 evaluates it), asks a node of the library for its output (line 3),
// or does nothing more.
enum class Scene { Board, Node, None };

std::string script(const char* fault, Scene scene) {
    const std::string bind = "load-plugin " + faulty(fault) + "\n";
    switch (scene) {
    case Scene::Board:
        return bind + "import " DATA_DIR "/sample_mesh.obj\nboard b\nport b in in object\n"
                      "port b out out object\nwire b in out\n"
                      "connectAttr cubeShape.worldMesh[0] b.in\nevaluate b\necho evaluated\n";
    case Scene::Node:
        return bind + "createNode faultyNode -name f\nprint f.output\n";
    case Scene::None:
        return bind + "echo bound\n";
    }
    return bind;
}

TEST(FaultyPluginCli, AScriptStopsAtAThrowOrFailureWithTheReasonAndGoesOnPastAWarning) {
    const std::tuple<const char*, Scene, int, const char*, const char*> faults[] = {
        {"InputThrows", Scene::Board, 1, "",
         "translateInputValue fails on purpose\nkova: -:8: the evaluation of b failed\n"},
        {"OutputThrows", Scene::Board, 1, "",
         "translateOutputValue fails on purpose\nkova: -:8: the evaluation of b failed\n"},
        {"InputFails", Scene::Board, 0, "evaluated\n",
         "kova: warning: Board 'b': input 'in' could not be translated\n"},
        {"OutputFails", Scene::Board, 0, "evaluated\n",
         "kova: warning: Board 'b': output 'out' could not be written back\n"},
        {"ComputeThrows", Scene::Node, 1, "f\n",
         "threw: compute fails on purpose\nkova: -:3: f.output did not evaluate: "},
        {"ComputeFails", Scene::Node, 1, "f\n",
         "kova: -:3: f.output did not evaluate: compute fails on purpose\n"},
        {"DeregisterThrows", Scene::None, 0, "bound\n",
         "in deregisterHostPlugins threw: deregisterHostPlugins fails on purpose\n"},
        {"ReleaseThrows", Scene::None, 0, "bound\n",
         "in release threw: release fails on purpose\n"},
    };
    for (const auto& [fault, scene, exitCode, out, error] : faults) {
        const ChildRun run = runKova({"run", "-"}, script(fault, scene));
        EXPECT_TRUE(run.exited) << fault << " ended by signal " << run.signal << ":\n" << run.err;
        EXPECT_EQ(run.exitCode, exitCode) << fault << ":\n" << run.err;
        EXPECT_EQ(run.out, out) << fault;
        EXPECT_NE(run.err.find(error), std::string::npos) << fault << ":\n" << run.err;
    }
}

} // namespace
