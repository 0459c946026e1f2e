#pragma once

#include <kova/KExport.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KStringResourceId.h>

// The process-wide table of user-interface strings, keyed by plug-in id and key. Thread-safe.
class KOVA_API KStringResource {
public:
    // Registers the id's default text as the string of (pluginId, key); registering again
    // replaces it. Fails with kInvalidParameter when the key is empty. Failure injection
    // operation: "KStringResource::registerString".
    static KStatus registerString(const KStringResourceId& id);
    // Registers `text` for the id's (pluginId, key), e.g. a translation; same rules.
    static KStatus setString(const KStringResourceId& id, const KString& text);
    // The registered text; when nothing is registered for (pluginId, key), `status` is set to
    // kNotFound and the id's default text is returned.
    static KString getString(const KStringResourceId& id, KStatus& status);
    // Removes every string of `pluginId` and returns how many there were.
    static unsigned int unregisterAll(const KString& pluginId);
};
