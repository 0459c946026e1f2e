// kova: the command-line host. Loads plug-ins the way the host application does and runs
// them on real data.

#include "CliMessageSink.h"
#include "HostSession.h"
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

    KovaHost::RunOptions run;
    CLI::App* runCommand = app.add_subcommand(
        "run", "Run a script of host commands (one per line; see docs/user-guide.md)");
    runCommand->add_option("SCRIPT", run.script, "Script file, or - for standard input")
        ->required();

    CLI11_PARSE(app, argc, argv);
    if (pluginInfoCommand->parsed()) {
        return KovaHost::runPluginInfo(pluginInfo);
    }
    if (runCommand->parsed()) {
        return KovaHost::runScript(run);
    }
    return 1;
}
