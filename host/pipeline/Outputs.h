#pragma once

#include "pipeline/RoundTrip.h"

#include <string>

namespace KovaHost {

// Exports `shapes` (meshes a round trip wrote back) to `path` and times it as the stage
// "export <path>" of `trip`. False with a one-line `error`.
bool exportShapes(RoundTrip& trip, const std::string& path, const std::vector<KObject>& shapes,
                  std::string& error);

// Writes `json` (indented) or the profiler's Chrome trace to `path`; false with `error`.
bool writeJsonFile(const std::string& path, const nlohmann::json& json, std::string& error);
bool writeTraceFile(const std::string& path, std::string& error);

} // namespace KovaHost
