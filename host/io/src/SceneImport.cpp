#include <exception>
#include <filesystem>
#include <kova/KString.h>
#include <kova_io/AssimpReader.h>
#include <kova_io/DeclaredSizes.h>
#include <kova_io/FileFormats.h>
#include <kova_io/FileText.h>
#include <kova_io/ObjReader.h>
#include <kova_io/SceneImport.h>
#include <new>

namespace KovaIo {

namespace {

KStatus readScene(const std::string& path, const FileFormat& format, bool weld, SceneData& scene) {
    if (format.kind == FileFormat::kAssimp) {
        const KStatus sizes = checkDeclaredSizes(path);
        return sizes ? readWithAssimp(path, weld, scene) : sizes;
    }
    std::string text;
    if (KStatus s = readFileBytes(path, text); !s) {
        return s;
    }
    const KStatus s = readObj(text, std::filesystem::path(path).stem().string(), scene);
    return s ? s : ioFailure("cannot read '" + path + "': " + s.errorString().str());
}

} // namespace

ImportResult importScene(const std::string& path, const ImportOptions& options) {
    ImportResult result;
    try {
        FileFormat format;
        SceneData scene;
        result.status = importFormatOf(path, format);
        result.status =
            result.status ? readScene(path, format, options.weld, scene) : result.status;
        if (!result.status) {
            return result;
        }
        result.warnings = std::move(scene.warnings);
        result.status = buildHostScene(scene, options.host, result.nodes, result.renamed);
        if (!result.status) {
            result.status =
                ioFailure("cannot import '" + path + "': " + result.status.errorString().str());
        }
    } catch (const std::bad_alloc&) {
        result.status = ioFailure("cannot import '" + path + "': out of memory");
    } catch (const std::exception& e) {
        result.status = ioFailure("cannot import '" + path + "': " + e.what());
    } catch (...) {
        result.status = ioFailure("cannot import '" + path + "': unexpected failure");
    }
    return result;
}

} // namespace KovaIo
