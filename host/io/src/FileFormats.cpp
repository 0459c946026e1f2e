#include <algorithm>
#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <cctype>
#include <filesystem>
#include <kova_io/FileFormats.h>
#include <kova_io/FileText.h>

namespace KovaIo {

namespace {

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string extensionOf(const std::string& path) {
    return lower(std::filesystem::path(path).extension().string());
}

// Assimp's export format id for `extension` (without the dot), or empty. glTF is written as
// glTF 2, the current version.
std::string assimpExportId(const std::string& extension) {
    if (extension == "gltf") {
        return "gltf2";
    }
    if (extension == "glb") {
        return "glb2";
    }
    Assimp::Exporter exporter;
    for (std::size_t i = 0; i < exporter.GetExportFormatCount(); ++i) {
        const aiExportFormatDesc* desc = exporter.GetExportFormatDescription(i);
        if (desc != nullptr && lower(desc->fileExtension) == extension) {
            return desc->id;
        }
    }
    return {};
}

KStatus unsupported(const std::string& path, const std::string& extension, const char* what) {
    return ioFailure("cannot " + std::string(what) + " '" + path + "': " +
                     (extension.empty() ? std::string("it has no extension")
                                        : "'" + extension + "' is not a supported format"));
}

} // namespace

KStatus importFormatOf(const std::string& path, FileFormat& format) {
    format = FileFormat{FileFormat::kObj, extensionOf(path), {}};
    if (format.extension == ".obj") {
        return KStatus();
    }
    if (!format.extension.empty() && Assimp::Importer().IsExtensionSupported(format.extension)) {
        format.kind = FileFormat::kAssimp;
        return KStatus();
    }
    return unsupported(path, format.extension, "read");
}

KStatus exportFormatOf(const std::string& path, FileFormat& format) {
    format = FileFormat{FileFormat::kObj, extensionOf(path), {}};
    if (format.extension == ".obj") {
        return KStatus();
    }
    format.kind = FileFormat::kAssimp;
    format.assimpFormat =
        format.extension.empty() ? "" : assimpExportId(format.extension.substr(1));
    return format.assimpFormat.empty() ? unsupported(path, format.extension, "write") : KStatus();
}

std::vector<std::string> importExtensions() {
    std::string list;
    Assimp::Importer().GetExtensionList(list); // "*.3ds;*.obj;..."
    std::vector<std::string> extensions{".obj"};
    std::size_t start = 0;
    while (start < list.size()) {
        const std::size_t end = std::min(list.find(';', start), list.size());
        const std::string item = list.substr(start, end - start);
        if (item.size() > 1 && item[0] == '*') {
            extensions.push_back(lower(item.substr(1)));
        }
        start = end + 1;
    }
    std::sort(extensions.begin(), extensions.end());
    extensions.erase(std::unique(extensions.begin(), extensions.end()), extensions.end());
    return extensions;
}

std::vector<std::string> exportExtensions() {
    std::vector<std::string> extensions{".obj", ".gltf", ".glb"};
    Assimp::Exporter exporter;
    for (std::size_t i = 0; i < exporter.GetExportFormatCount(); ++i) {
        if (const aiExportFormatDesc* desc = exporter.GetExportFormatDescription(i)) {
            extensions.push_back("." + lower(desc->fileExtension));
        }
    }
    std::sort(extensions.begin(), extensions.end());
    extensions.erase(std::unique(extensions.begin(), extensions.end()), extensions.end());
    return extensions;
}

} // namespace KovaIo
