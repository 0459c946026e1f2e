#include <kova/KPluginStamp.h>

KOVA_PLUGIN_STAMP_FOR_API("20240000");
