#include <kova/KPluginStamp.h>

KOVA_PLUGIN_STAMP();
