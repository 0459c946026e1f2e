#pragma once

#include <kova/KExport.h>
#include <kova/KString.h>

// Names one user-interface string of a plug-in (its id and a key) and carries the text to use
// when no translation has been registered.
class KOVA_API KStringResourceId {
public:
    KStringResourceId() = default;
    KStringResourceId(const KString& pluginId, const KString& key, const KString& defaultString)
        : pluginId_(pluginId), key_(key), defaultString_(defaultString) {}

    const KString& pluginId() const { return pluginId_; }
    const KString& key() const { return key_; }
    const KString& defaultString() const { return defaultString_; }

private:
    KString pluginId_;
    KString key_;
    KString defaultString_;
};
