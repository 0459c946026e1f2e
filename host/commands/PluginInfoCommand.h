#pragma once

#include <string>

namespace KovaHost {

struct PluginInfoOptions {
    std::string pluginPath;
    bool json = false;
};

// `kova plugin-info`: loads a translation plug-in the way the host does, binds it to a board,
// adds one graph port of every kind and reports what the plug-in made of them. Returns the
// process exit status.
int runPluginInfo(const PluginInfoOptions& options);

} // namespace KovaHost
