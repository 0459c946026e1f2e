#pragma once

#include <kova/KStatus.h>
#include <string>
#include <vector>

namespace KovaIo {

// How a file is read or written, chosen by its extension (case does not matter).
struct FileFormat {
    enum Kind { kObj, kAssimp };
    Kind kind = kObj;
    std::string extension;    // lower case, with the dot: ".obj", ".ply", ...
    std::string assimpFormat; // for export through Assimp: its format id ("ply", "glb2", ...)
};

// ".obj" is read natively, every extension Assimp reads through Assimp; anything else fails
// naming the extension.
KStatus importFormatOf(const std::string& path, FileFormat& format);
// ".obj" is written natively; other extensions through the Assimp exporter that writes them
// (".gltf" and ".glb" as glTF 2).
KStatus exportFormatOf(const std::string& path, FileFormat& format);

// The extensions (".obj", ".ply", ...) that can be imported and exported, sorted.
std::vector<std::string> importExtensions();
std::vector<std::string> exportExtensions();

} // namespace KovaIo
