// `kova plugin-info` as a user runs it.

#include "CliRun.h"

#include <map>
#include <nlohmann/json.hpp>

namespace {

TEST(PluginInfoCli, ReportsEveryPortKindAsJsonOrAsAReadableSummary) {
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

    const CliRun summary = kova("plugin-info --plugin '" + std::string(PLUGIN_PATH) + "'");
    ASSERT_EQ(summary.exitCode, 0) << summary.output;
    EXPECT_NE(summary.output.find("signature: ok"), std::string::npos) << summary.output;
    EXPECT_NE(summary.output.find("(not handled)"), std::string::npos) << summary.output;
}

TEST(PluginInfoCli, MissingOrUnsignedPluginsAndAMissingSubcommandFailInOneLine) {
    const CliRun missing = kova("plugin-info --plugin /nonexistent/plugin.so");
    EXPECT_NE(missing.exitCode, 0);
    EXPECT_EQ(missing.lines(), 1) << missing.output;
    const CliRun unsigned_ = kova("plugin-info --plugin '" + std::string(UNSIGNED_PATH) + "'");
    EXPECT_EQ(unsigned_.exitCode, 1);
    EXPECT_NE(unsigned_.output.find("refused"), std::string::npos) << unsigned_.output;
    EXPECT_EQ(unsigned_.lines(), 1) << unsigned_.output;
    const CliRun none = kova("");
    EXPECT_NE(none.exitCode, 0);
    EXPECT_EQ(none.lines(), 1) << none.output;
}

} // namespace
