#pragma once

#include <kova/KStatus.h>
#include <kova_io/HostSceneBuilder.h>
#include <string>
#include <vector>

namespace KovaIo {

struct ImportOptions {
    HostBuildOptions host;
    // Weld points that a per-vertex format (PLY, glTF, STL, ...) split; OBJ keeps its own.
    bool weld = true;
};

struct ImportResult {
    KStatus status; // on failure: one line naming the file and the reason
    HostNodes nodes;
    // What was skipped or could not be carried, and the names the host changed.
    std::vector<std::string> warnings;
    std::vector<std::string> renamed;
};

// Imports the file at `path` into the current host scene: OBJ through readObj, every other
// format Assimp reads through readWithAssimp (after checkDeclaredSizes), then
// buildHostScene. The format follows the extension. Nothing escapes as an exception: any
// failure, including running out of memory, comes back as the status, and a failed import
// leaves the scene as it was.
ImportResult importScene(const std::string& path, const ImportOptions& options = {});

} // namespace KovaIo
