// Scripts of host commands as `kova run` reads them, each run in a fresh scene: script verbs,
// host commands and their flags, boards, ports with options, graphs, evaluation and printing.
//
// Two verbs differ from `kova run`: the plug-in stays bound for the whole run, so
// `load-plugin` (with any path) does nothing; and `import` reads only the bundled sample files,
// by file name, so that no input reaches outside the data folder. There is no `export`: a
// fuzzer writes no files.

#include "FuzzCheck.h"
#include "FuzzHost.h"
#include "script/ScriptRunner.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <kova/KScene.h>
#include <kova_io/SceneImport.h>
#include <sstream>
#include <string>

namespace {

using Words = KovaHost::ScriptRunner::Words;

bool importBundled(const Words& words, std::string& error) {
    static constexpr std::array<const char*, 3> kBundled = {"sample_mesh.obj", "sample_curves.obj",
                                                            "sample_mesh_uvsets.gltf"};
    const std::string name =
        words.size() == 1 ? std::filesystem::path(words[0]).filename().string() : std::string();
    if (std::find(kBundled.begin(), kBundled.end(), name) == kBundled.end()) {
        error = "usage: import FILE (a bundled sample)";
        return false;
    }
    const KovaIo::ImportResult imported =
        KovaIo::importScene(std::string(KOVA_DATA_DIR) + "/" + name);
    if (!imported.status) {
        error = imported.status.errorString().str();
    }
    return static_cast<bool>(imported.status);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    ZelFuzz::setUpHost();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KScene::reset();
    std::ostringstream printed;
    KovaHost::ScriptRunner runner(printed);
    runner.addVerb("load-plugin", [](const Words&, std::string&) { return true; });
    runner.addVerb("import", &importBundled);
    std::istringstream script(std::string(reinterpret_cast<const char*>(data), size));
    std::string error;
    const bool ran = runner.run(script, "fuzz", error);
    ZelFuzz::check(ran || error.starts_with("fuzz:"), "a script failure does not name its line");
    return 0;
}
