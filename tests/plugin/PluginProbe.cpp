// Loads one plug-in through the host's loader and exits: 0 when it was accepted, 1 when it
// was refused. Tests run it as a separate process to observe what loading prints.

#include <kova/KPluginLoader.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: plugin_probe PLUGIN\n");
        return 2;
    }
    KStatus status;
    const KObject plugin = KPluginLoader::load(argv[1], &status);
    return plugin.isNull() ? 1 : 0;
}
