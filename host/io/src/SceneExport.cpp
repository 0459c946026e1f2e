#include <exception>
#include <kova/KString.h>
#include <kova_io/AssimpWriter.h>
#include <kova_io/FileFormats.h>
#include <kova_io/FileText.h>
#include <kova_io/HostSceneReader.h>
#include <kova_io/ObjWriter.h>
#include <kova_io/SceneExport.h>
#include <new>

namespace KovaIo {

ExportResult exportScene(const std::string& path, const std::vector<KObject>& objects) {
    ExportResult result;
    try {
        FileFormat format;
        SceneData scene;
        result.status = exportFormatOf(path, format);
        if (!result.status) {
            return result;
        }
        result.status = readHostScene(objects, scene);
        if (!result.status) {
            result.status =
                ioFailure("cannot export '" + path + "': " + result.status.errorString().str());
            return result;
        }
        result.warnings = std::move(scene.warnings);
        result.status = format.kind == FileFormat::kObj
                            ? writeFileBytes(path, writeObj(scene, result.warnings))
                            : writeWithAssimp(path, format.assimpFormat, scene, result.warnings);
        if (result.status) {
            result.meshes = static_cast<int>(scene.meshes.size());
            result.curves =
                format.kind == FileFormat::kObj ? static_cast<int>(scene.curves.size()) : 0;
        }
    } catch (const std::bad_alloc&) {
        result.status = ioFailure("cannot export '" + path + "': out of memory");
    } catch (const std::exception& e) {
        result.status = ioFailure("cannot export '" + path + "': " + e.what());
    } catch (...) {
        result.status = ioFailure("cannot export '" + path + "': unexpected failure");
    }
    return result;
}

} // namespace KovaIo
