// kova: the command-line host. Loads plug-ins the way the host application does and runs
// them on real data.

#include "CliMessageSink.h"
#include "HostSession.h"
#include "commands/ConvertCommand.h"
#include "commands/DemoCommand.h"
#include "commands/GeometryOptions.h"
#include "commands/GraphObjectsCommand.h"
#include "commands/PluginInfoCommand.h"
#include "commands/RunCommand.h"

#include <CLI/CLI.hpp>
#include <kova/KMessageSink.h>
#include <memory>

int main(int argc, char** argv) {
    CLI::App app{"kova: headless Kova host for Zelvane graphs"};
    app.require_subcommand(1);
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return std::string("kova: ") + error.what() + "\n";
    });
    KMessages::setSink(std::make_shared<KovaHost::CliMessageSink>());

    KovaHost::PluginInfoOptions pluginInfo;
    pluginInfo.pluginPath = KovaHost::defaultPluginPath();
    CLI::App* pluginInfoCommand = app.add_subcommand(
        "plugin-info", "Load a translation plug-in, bind it to a board, add one port of every "
                       "kind and report what it created");
    pluginInfoCommand->add_option("--plugin", pluginInfo.pluginPath, "Plug-in library")
        ->check(CLI::ExistingFile)
        ->capture_default_str();
    pluginInfoCommand->add_flag("--json", pluginInfo.json, "Print the report as JSON");

    KovaHost::DemoOptions demo;
    demo.pluginPath = KovaHost::defaultPluginPath();
    demo.dataDir = KOVA_DATA_DIR;
    CLI::App* demoCommand = app.add_subcommand(
        "demo", "Run the bundled samples through the plug-in and a graph and back; write the "
                "results, a report and a profile trace");
    demoCommand->add_option("--out", demo.out, "Output folder")->capture_default_str();
    demoCommand->add_option("--data", demo.dataDir, "Folder of the bundled samples")
        ->check(CLI::ExistingDirectory)
        ->capture_default_str();
    demoCommand->add_option("--plugin", demo.pluginPath, "Plug-in library")
        ->check(CLI::ExistingFile);

    KovaHost::ConvertOptions convert;
    convert.pluginPath = KovaHost::defaultPluginPath();
    CLI::App* convertCommand = app.add_subcommand(
        "convert", "Import a file, send its meshes and curves through the plug-in, a graph and "
                   "back, and export the result");
    convertCommand->add_option("IN", convert.input, "File to import")
        ->required()
        ->check(CLI::ExistingFile);
    convertCommand->add_option("OUT", convert.output, "File to export (format by extension)")
        ->required();
    convertCommand->add_option("--report", convert.report, "Write a JSON report to this file");
    convertCommand->add_option("--profile", convert.profile,
                               "Write a Chrome trace of the conversion stages to this file");
    convertCommand->add_option("--plugin", convert.pluginPath, "Plug-in library")
        ->check(CLI::ExistingFile);
    KovaHost::addGeometryOptions(*convertCommand, convert.rig);

    KovaHost::InspectOptions inspect;
    inspect.pluginPath = KovaHost::defaultPluginPath();
    CLI::App* inspectCommand = app.add_subcommand(
        "inspect", "Print the graph objects the plug-in makes of a file's meshes and curves");
    inspectCommand->add_option("IN", inspect.input, "File to import")
        ->required()
        ->check(CLI::ExistingFile);
    inspectCommand->add_flag("--json", inspect.json, "Every property with all its values, as JSON");
    inspectCommand->add_option("--plugin", inspect.pluginPath, "Plug-in library")
        ->check(CLI::ExistingFile);
    KovaHost::addGeometryOptions(*inspectCommand, inspect.rig);

    KovaHost::RunOptions run;
    CLI::App* runCommand = app.add_subcommand(
        "run", "Run a script of host commands (one per line; see docs/user-guide.md)");
    runCommand->add_option("SCRIPT", run.script, "Script file, or - for standard input")
        ->required();

    CLI11_PARSE(app, argc, argv);
    if (pluginInfoCommand->parsed()) {
        return KovaHost::runPluginInfo(pluginInfo);
    }
    if (demoCommand->parsed()) {
        return KovaHost::runDemo(demo);
    }
    if (convertCommand->parsed()) {
        return KovaHost::runConvert(convert);
    }
    if (inspectCommand->parsed()) {
        return KovaHost::runInspect(inspect);
    }
    if (runCommand->parsed()) {
        return KovaHost::runScript(run);
    }
    return 1;
}
