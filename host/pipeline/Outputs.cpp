#include "pipeline/Outputs.h"

#include <chrono>
#include <fstream>
#include <kova/KProfiler.h>
#include <kova_io/SceneExport.h>

namespace KovaHost {

bool exportShapes(RoundTrip& trip, const std::string& path, const std::vector<KObject>& shapes,
                  std::string& error) {
    const auto start = std::chrono::steady_clock::now();
    const KovaIo::ExportResult exported = KovaIo::exportScene(path, shapes);
    if (!exported.status) {
        error = exported.status.errorString().str();
        return false;
    }
    trip.stageMillis.emplace_back("export " + path, std::chrono::duration<double, std::milli>(
                                                        std::chrono::steady_clock::now() - start)
                                                        .count());
    trip.warnings.insert(trip.warnings.end(), exported.warnings.begin(), exported.warnings.end());
    return true;
}

bool writeJsonFile(const std::string& path, const nlohmann::json& json, std::string& error) {
    std::ofstream out(path);
    out << json.dump(2) << '\n';
    if (!out) {
        error = "cannot write " + path;
    }
    return static_cast<bool>(out);
}

bool writeTraceFile(const std::string& path, std::string& error) {
    std::ofstream out(path);
    if (!out || !KProfiler::writeChromeTrace(out) || !out.flush()) {
        error = "cannot write " + path;
        return false;
    }
    return true;
}

} // namespace KovaHost
