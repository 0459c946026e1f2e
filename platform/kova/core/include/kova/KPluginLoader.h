#pragma once

#include <kova/KExport.h>
#include <kova/KObject.h>
#include <kova/KObjectArray.h>
#include <kova/KStatus.h>
#include <kova/KString.h>

// Loads and unloads plug-in libraries.
//
// load() first verifies the library file against this host's API version and the SDK
// signature (nothing of the library runs before that: it is only read). A refused library is
// reported as "Plug-in '<path>' refused: <reason>" and never opened. An accepted one is
// opened (RTLD_NOW | RTLD_LOCAL) and, if it exports
//     extern "C" KStatus initializePlugin(KObject plugin)
// initialized; when that fails or throws, everything the plug-in registered is undone, the
// library is closed and the failure reported. Loading a library that is loaded already
// returns its plug-in object.
//
// unload() refuses while nodes of the plug-in's types or data of its data types exist; it
// then calls `extern "C" KStatus uninitializePlugin(KObject)` if exported (a failure keeps the
// plug-in loaded), removes whatever the plug-in left registered and closes the library.
class KOVA_API KPluginLoader {
public:
    static KObject load(const KString& path, KStatus* status = nullptr);
    static KStatus unload(const KObject& plugin);
    // A symbol of a loaded plug-in library (for other loaders' entry points), or null.
    static void* symbol(const KObject& plugin, const KString& name, KStatus* status = nullptr);
    // The loaded plug-in with this name (the library's file name without its extension) or
    // path, or the null object.
    static KObject findPlugin(const KString& nameOrPath);
    static KObjectArray loadedPlugins();
    // A plug-in record for code linked into the host process itself (the host's own modules,
    // tests): nothing is loaded, so there is nothing to verify. Its registrations are undone
    // by unload() like any plug-in's. Fails when a plug-in of that name is loaded.
    static KObject registerModule(const KString& name, KStatus* status = nullptr);
};
