#pragma once

#include "pipeline/TranslationRig.h"

#include <string>

namespace KovaHost {

struct ConvertOptions {
    std::string input;
    std::string output;
    std::string report;  // JSON report file, or empty
    std::string profile; // Chrome trace file, or empty
    std::string pluginPath;
    RigOptions rig;
};

// `kova convert IN OUT`: imports IN, sends its meshes and curves through the plug-in, a
// graph and back, and exports the meshes (and tubes made of the curves) to OUT. 0 on
// success, 1 with a one-line reason otherwise.
int runConvert(const ConvertOptions& options);

} // namespace KovaHost
