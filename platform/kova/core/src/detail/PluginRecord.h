#pragma once

#include <kova/detail/Entity.h>
#include <memory>
#include <string>
#include <vector>

namespace kova::detail {

// A loaded plug-in: a verified library opened by the loader, or a module linked into the
// host process itself (handle null).
class PluginRecord : public Entity {
public:
    PluginRecord(std::string name, std::string path, void* handle)
        : Entity(KFn::kPlugin), name(std::move(name)), path(std::move(path)), handle(handle) {}
    bool isValid() const override { return loaded; }

    std::string name;
    std::string path;
    void* handle;
    std::string vendor = "Unknown";
    std::string version = "Unknown";
    std::vector<std::string> stringTables;
    bool loaded = true;
};

// The plug-ins loaded now, in load order. Used on the editing thread only.
std::vector<std::shared_ptr<PluginRecord>>& loadedPlugins();

} // namespace kova::detail
