#pragma once

#include "pipeline/TranslationRig.h"

#include <string>

namespace KovaHost {

struct InspectOptions {
    std::string input;
    std::string pluginPath;
    bool json = false;
    RigOptions rig;
};

// `kova inspect IN`: imports IN and prints the graph objects the plug-in's input
// translation makes of it: one object per mesh and one strand object of all curves. A
// readable outline by default; with `json` every property with all its values (schema in
// docs/user-guide.md). 0 on success, 1 with a one-line reason otherwise.
int runInspect(const InspectOptions& options);

} // namespace KovaHost
