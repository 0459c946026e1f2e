#pragma once

#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <string>
#include <vector>

namespace KovaIo {

struct ExportResult {
    KStatus status; // on failure: one line naming the file and the reason
    int meshes = 0;
    int curves = 0;
    // What the format could not carry.
    std::vector<std::string> warnings;
};

// Writes host geometry to `path` in the format its extension names: OBJ through writeObj,
// others through writeWithAssimp. `objects` are what readHostScene takes (shapes,
// transforms, mesh or curve data); geometryShapes() gives every shape of the scene. Nothing
// escapes as an exception.
ExportResult exportScene(const std::string& path, const std::vector<KObject>& objects);

} // namespace KovaIo
