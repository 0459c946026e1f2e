// The library's face to its two loaders: the stamp the host's loader checks, and the factory
// the board executor calls.

#include "plugin/ZelvaneObjectTranslation.h"

#include <kova/KPluginStamp.h>

#include <new>

KOVA_PLUGIN_STAMP();

extern "C" __attribute__((visibility("default"))) ZelvaneGraph::Executor::TypeTranslation*
createZelvaneTypeTranslation() {
    return new (std::nothrow) ZelvaneObjectTranslation();
}
