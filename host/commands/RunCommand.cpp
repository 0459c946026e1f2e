#include "commands/RunCommand.h"

#include "HostSession.h"
#include "script/ScriptRunner.h"

#include <fstream>
#include <iostream>
#include <kova/KSelectionList.h>
#include <kova_io/HostSceneReader.h>
#include <kova_io/SceneExport.h>
#include <kova_io/SceneImport.h>

namespace KovaHost {
namespace {

// "import FILE": the file's meshes and curves become host nodes.
bool importVerb(const ScriptRunner::Words& words, std::string& error) {
    if (words.size() != 1) {
        error = "usage: import FILE";
        return false;
    }
    const KovaIo::ImportResult imported = KovaIo::importScene(words[0]);
    if (!imported.status) {
        error = imported.status.errorString().str();
    }
    return static_cast<bool>(imported.status);
}

// "export FILE [NODE ...]": the named shapes or transforms, or every mesh and curve.
bool exportVerb(const ScriptRunner::Words& words, std::string& error) {
    if (words.empty()) {
        error = "usage: export FILE [NODE ...]";
        return false;
    }
    std::vector<KObject> objects;
    for (std::size_t i = 1; i < words.size(); ++i) {
        KSelectionList list;
        KObject node;
        if (!list.add(words[i].c_str()) || !list.getDependNode(0, node)) {
            error = "no node named \"" + words[i] + "\"";
            return false;
        }
        objects.push_back(node);
    }
    const KovaIo::ExportResult exported =
        KovaIo::exportScene(words[0], words.size() > 1 ? objects : KovaIo::geometryShapes());
    if (!exported.status) {
        error = exported.status.errorString().str();
    }
    return static_cast<bool>(exported.status);
}

} // namespace

int runScript(const RunOptions& options) {
    std::ifstream file;
    if (options.script != "-") {
        file.open(options.script);
        if (!file) {
            std::cerr << "kova: error: cannot read " << options.script << '\n';
            return 1;
        }
    }
    HostSession session;
    ScriptRunner runner(std::cout);
    runner.addVerb("import", &importVerb);
    runner.addVerb("export", &exportVerb);
    std::string error;
    if (!runner.run(options.script == "-" ? std::cin : file, options.script, error)) {
        std::cerr << "kova: " << error << '\n';
        return 1;
    }
    return 0;
}

} // namespace KovaHost
