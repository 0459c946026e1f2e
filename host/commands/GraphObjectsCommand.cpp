#include "commands/GraphObjectsCommand.h"

#include "HostSession.h"
#include "pipeline/RoundTrip.h"
#include "report/ObjectJson.h"

#include <fmt/format.h>
#include <iostream>

namespace KovaHost {
namespace {

nlohmann::json inspectJson(const RoundTrip& trip) {
    nlohmann::json meshes = nlohmann::json::array();
    for (std::size_t i = 0; i < trip.imported.meshShapes.size(); ++i) {
        const auto& object = trip.carried.meshObjects.at(i);
        meshes.push_back({{"name", trip.meshNames[i]},
                          {"object", object ? objectToJson(*object) : nlohmann::json(nullptr)}});
    }
    nlohmann::json curves{{"count", trip.imported.curveShapes.size()},
                          {"object", trip.carried.strands ? objectToJson(*trip.carried.strands)
                                                          : nlohmann::json(nullptr)}};
    return {{"file", trip.inputs.front()},
            {"meshes", meshes},
            {"curves", curves},
            {"warnings", trip.warnings}};
}

void printOutline(const RoundTrip& trip) {
    for (std::size_t i = 0; i < trip.imported.meshShapes.size(); ++i) {
        const auto& object = trip.carried.meshObjects.at(i);
        std::cout << fmt::format("mesh {}\n", trip.meshNames[i]);
        std::cout << (object ? objectOutline(*object, 2) : "  (not converted)\n");
    }
    if (!trip.imported.curveShapes.empty()) {
        std::cout << fmt::format("strands of {} curve(s)\n", trip.imported.curveShapes.size());
        std::cout << (trip.carried.strands ? objectOutline(*trip.carried.strands, 2)
                                           : "  (not converted)\n");
    }
    for (const std::string& warning : trip.warnings) {
        std::cout << "warning: " << warning << '\n';
    }
}

} // namespace

int runInspect(const InspectOptions& options) {
    HostSession session;
    if (!session.bindTranslationLibrary(options.pluginPath.c_str())) {
        return 1; // the loader has said why
    }
    RoundTrip trip;
    std::string error;
    if (!runRoundTrip({options.input}, options.rig, false, trip, error)) {
        std::cerr << "kova: error: " << error << '\n';
        return 1;
    }
    if (trip.carried.meshObjects.size() != trip.imported.meshShapes.size()) {
        std::cerr << "kova: error: the board did not translate every mesh\n";
        return 1;
    }
    if (options.json) {
        std::cout << inspectJson(trip).dump(1) << '\n';
    } else {
        printOutline(trip);
    }
    return 0;
}

} // namespace KovaHost
