// `kova plugin-info` as a user runs it.

#include "CliRun.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

namespace {

TEST(PluginInfoCli, ReportsEveryPortKindAsJson) {
    const CliRun run = kova("plugin-info --json --plugin '" + std::string(PLUGIN_PATH) + "'");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    const nlohmann::json report = nlohmann::json::parse(run.output);
    EXPECT_EQ(report["apiVersion"], "20250000");
    EXPECT_EQ(report["signature"], "ok");
    EXPECT_EQ(report["supportedTypes"],
              nlohmann::json({"Object", "Simulation::Time", "Geometry::Transform::GraphTransforms",
                              "File::Project::SceneInfo"}));
    std::map<std::string, nlohmann::json> ports;
    for (const auto& port : report["ports"]) {
        ports[port["name"]] = port;
    }
    EXPECT_EQ(ports["geometry"]["attributes"], nlohmann::json({"geometry"}));
    EXPECT_EQ(ports["result"]["connections"],
              nlohmann::json({"board1.result -> zelShapeShape1.inputSurface"}));
    EXPECT_EQ(ports["time"]["connections"], nlohmann::json({"time1.outTime -> board1.time"}));
    EXPECT_FALSE(ports["amount"]["hostAttribute"]);
    EXPECT_EQ(ports["amount"]["attributes"], nlohmann::json::array());
    EXPECT_NE(std::find(report["sceneNodes"].begin(), report["sceneNodes"].end(), "zel1"),
              report["sceneNodes"].end());
}

TEST(PluginInfoCli, PrintsAReadableSummaryByDefault) {
    const CliRun run = kova("plugin-info --plugin '" + std::string(PLUGIN_PATH) + "'");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("signature: ok"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("(not handled)"), std::string::npos) << run.output;
}

TEST(PluginInfoCli, FailsWithOneLineForAMissingPlugin) {
    const CliRun run = kova("plugin-info --plugin /nonexistent/plugin.so");
    EXPECT_NE(run.exitCode, 0);
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 1) << run.output;
}

TEST(PluginInfoCli, RefusesALibraryThatIsNotASignedPluginInOneLine) {
    const CliRun run = kova("plugin-info --plugin '" + std::string(UNSIGNED_PATH) + "'");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("refused"), std::string::npos) << run.output;
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 1) << run.output;
}

TEST(PluginInfoCli, RequiresASubcommand) {
    const CliRun run = kova("");
    EXPECT_NE(run.exitCode, 0);
}

} // namespace
