#pragma once

#include "pipeline/TranslationRig.h"

#include <kova_io/SceneImport.h>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace KovaHost {

// One run of files through the plug-in: what was imported, what the graph saw and what came
// back, with the time each stage took.
struct RoundTrip {
    std::vector<std::string> inputs;
    KovaIo::HostNodes imported;
    std::vector<std::string> meshNames; // the imported meshes' transforms, as imported
    std::vector<std::string> warnings;
    std::vector<std::string> renamed;
    RigResult carried;
    std::vector<std::pair<std::string, double>> stageMillis;
};

// The name of the transform above `shape` (its own name when it has none).
std::string transformName(const KObject& shape);

// Imports `inputs` into the current scene (the plug-in must be bound), builds a translation
// rig over every mesh and curve and translates them; with `writeBack` the graph's results
// come back as host meshes too. False with a one-line `error` on failure, and when the inputs
// hold no mesh and no curve (an empty or broken file a reader made nothing of).
bool runRoundTrip(const std::vector<std::string>& inputs, const RigOptions& options, bool writeBack,
                  RoundTrip& trip, std::string& error);

// The JSON report of a round trip: per mesh what was carried into the graph, renamed or
// dropped (see docs/user-guide.md, "Reports").
nlohmann::json roundTripReport(const RoundTrip& trip);

} // namespace KovaHost
