#pragma once

#include <kova/KStatus.h>
#include <kova/KTypeId.h>
#include <kova/detail/PluginData.h>
#include <memory>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <vector>

namespace kova::detail {

class Entity;
class NodeType;

// The process-wide registry of node types and plug-in data types. The host's own node types
// are registered when the registry is first used. Lookups may come from any thread
// (evaluations create plug-in data); registration happens on the editing thread.
class TypeRegistry {
public:
    static TypeRegistry& instance();

    std::shared_ptr<NodeType> findNode(std::string_view name) const;
    std::shared_ptr<NodeType> findNode(const KTypeId& id) const;
    // Types registered by `plugin` (an entity of kind kPlugin).
    std::vector<std::shared_ptr<NodeType>> nodesOf(const Entity* plugin) const;
    std::vector<std::shared_ptr<NodeType>> allNodes() const;

    // Runs the type's initialize (with addAttribute and attributeAffects directed at it) and
    // adds the type. Fails, adding nothing, when the name or id is taken, or initialize
    // fails or throws.
    KStatus registerNode(const std::shared_ptr<NodeType>& type);
    // Fails when the type is not registered, is one of the host's, or nodes of it exist.
    KStatus deregisterNode(const KTypeId& id);

    std::shared_ptr<PluginDataType> findData(const KTypeId& id) const;
    std::shared_ptr<PluginDataType> findData(std::string_view name) const;
    std::vector<std::shared_ptr<PluginDataType>> dataOf(const Entity* plugin) const;
    // Fails when the name or id is taken or the creator is null.
    KStatus registerData(const std::shared_ptr<PluginDataType>& type,
                         const std::shared_ptr<Entity>& plugin);
    // Fails when the type is not registered or instances of it exist.
    KStatus deregisterData(const KTypeId& id);

    // The type whose initialize is running on this thread, or null.
    static NodeType* typeBeingInitialized();

private:
    TypeRegistry();
    struct DataEntry {
        std::shared_ptr<PluginDataType> type;
        std::weak_ptr<Entity> plugin;
    };
    mutable std::shared_mutex mutex_;
    std::vector<std::shared_ptr<NodeType>> nodes_;
    std::vector<DataEntry> data_;
};

} // namespace kova::detail
