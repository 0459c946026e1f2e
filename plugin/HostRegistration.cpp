// Binding the plug-in's host side: the mesh output node and the string table.

#include "mesh_out/ZelvaneGeoToKova.h"
#include "plugin/StringResources.h"
#include "plugin/ZelvaneObjectTranslation.h"

#include <kova/KFnPlugin.h>

bool ZelvaneObjectTranslation::registerHostPlugins(const KObject& plugin) {
    if (!ZelvaneGeoToKova::registerWith(plugin)) {
        return false;
    }
    KFnPlugin fnPlugin(plugin, "Norvatek", "1.0", "Any");
    const KStatus status = fnPlugin.registerUIStrings(&ZelvanePlugin::Strings::registerStrings,
                                                      ZelvanePlugin::Strings::kTableName);
    if (!status) {
        status.perror("ZelvaneObjectTranslation::registerHostPlugins");
        return false;
    }
    return true;
}

bool ZelvaneObjectTranslation::deregisterHostPlugins(const KObject& plugin) {
    return static_cast<bool>(ZelvaneGeoToKova::deregisterFrom(plugin));
}
