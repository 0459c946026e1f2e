#include "detail/TypeRegistry.h"

#include "builtin/BuiltInTypes.h"
#include "detail/Attribute.h"
#include "detail/NodeType.h"

#include <algorithm>
#include <kova/detail/Guarded.h>
#include <mutex>

namespace kova::detail {

namespace {

thread_local NodeType* initializing = nullptr;

// Gives the attributes of a type that is dropped back to their creator, so that they can be
// added again (a retried or repeated registration).
void releaseAttributes(NodeType& type) {
    for (const auto& a : type.attributes.live()) {
        a->owner = nullptr;
        a->index = -1;
    }
}

KStatus taken(const char* what, const std::string& name) {
    return KStatus(KStatus::kInvalidParameter, KString(std::string(what) + " '" + name + "'"));
}

KStatus runInitialize(NodeType& type) {
    struct Scope {
        explicit Scope(NodeType* t) { initializing = t; }
        ~Scope() { initializing = nullptr; }
    } scope(&type);
    KStatus status;
    const auto who = [&] {
        return KString("The initialize function of node type '" + type.name + "'");
    };
    if (!runGuarded([&] { status = type.initialize(); }, who)) {
        return KStatus(KStatus::kFailure, who() + " threw");
    }
    return status;
}

} // namespace

TypeRegistry::TypeRegistry() {
    for (auto& type : builtin::makeBuiltInTypes()) {
        nodes_.push_back(std::move(type));
    }
}

TypeRegistry& TypeRegistry::instance() {
    // Never destroyed, like the scene whose nodes refer to the types.
    static TypeRegistry* registry = new TypeRegistry;
    return *registry;
}

std::shared_ptr<NodeType> TypeRegistry::findNode(std::string_view name) const {
    std::shared_lock lock(mutex_);
    for (const auto& t : nodes_) {
        if (t->name == name) {
            return t;
        }
    }
    return nullptr;
}

std::shared_ptr<NodeType> TypeRegistry::findNode(const KTypeId& id) const {
    std::shared_lock lock(mutex_);
    for (const auto& t : nodes_) {
        if (t->id == id) {
            return t;
        }
    }
    return nullptr;
}

std::vector<std::shared_ptr<NodeType>> TypeRegistry::nodesOf(const Entity* plugin) const {
    std::shared_lock lock(mutex_);
    std::vector<std::shared_ptr<NodeType>> out;
    for (const auto& t : nodes_) {
        if (!t->builtIn && t->plugin.lock().get() == plugin) {
            out.push_back(t);
        }
    }
    return out;
}

std::vector<std::shared_ptr<NodeType>> TypeRegistry::allNodes() const {
    std::shared_lock lock(mutex_);
    return nodes_;
}

KStatus TypeRegistry::registerNode(const std::shared_ptr<NodeType>& type) {
    const auto clash = [&]() -> KStatus {
        if (findNode(type->name)) {
            return taken("there is a node type named", type->name);
        }
        if (findNode(type->id)) {
            return taken("another node type has the id of", type->name);
        }
        return KStatus();
    };
    KStatus status = clash();
    if (status && type->initialize) {
        status = runInitialize(*type);
    }
    if (status) {
        status = clash();
    }
    if (!status) {
        releaseAttributes(*type);
        return status;
    }
    std::unique_lock lock(mutex_);
    nodes_.push_back(type);
    return KStatus();
}

KStatus TypeRegistry::deregisterNode(const KTypeId& id) {
    std::shared_ptr<NodeType> type = findNode(id);
    if (!type) {
        return KStatus(KStatus::kNotFound,
                       KString("no node type has the id " + std::to_string(id.id())));
    }
    if (type->builtIn) {
        return taken("cannot deregister the host's node type", type->name);
    }
    if (type->liveNodes > 0) {
        return KStatus(KStatus::kFailure, KString("nodes of type '" + type->name + "' exist"));
    }
    {
        std::unique_lock lock(mutex_);
        std::erase(nodes_, type);
    }
    releaseAttributes(*type);
    return KStatus();
}

std::shared_ptr<PluginDataType> TypeRegistry::findData(const KTypeId& id) const {
    std::shared_lock lock(mutex_);
    for (const auto& d : data_) {
        if (d.type->id == id) {
            return d.type;
        }
    }
    return nullptr;
}

std::shared_ptr<PluginDataType> TypeRegistry::findData(std::string_view name) const {
    std::shared_lock lock(mutex_);
    for (const auto& d : data_) {
        if (d.type->name == name) {
            return d.type;
        }
    }
    return nullptr;
}

std::vector<std::shared_ptr<PluginDataType>> TypeRegistry::dataOf(const Entity* plugin) const {
    std::shared_lock lock(mutex_);
    std::vector<std::shared_ptr<PluginDataType>> out;
    for (const auto& d : data_) {
        if (d.plugin.lock().get() == plugin) {
            out.push_back(d.type);
        }
    }
    return out;
}

KStatus TypeRegistry::registerData(const std::shared_ptr<PluginDataType>& type,
                                   const std::shared_ptr<Entity>& plugin) {
    if (type->creator == nullptr || type->name.empty()) {
        return KStatus(KStatus::kInvalidParameter, "a data type needs a name and a creator");
    }
    std::unique_lock lock(mutex_);
    for (const auto& d : data_) {
        if (d.type->name == type->name) {
            return taken("there is a data type named", type->name);
        }
        if (d.type->id == type->id) {
            return taken("another data type has the id of", type->name);
        }
    }
    data_.push_back({type, plugin});
    return KStatus();
}

KStatus TypeRegistry::deregisterData(const KTypeId& id) {
    std::unique_lock lock(mutex_);
    const auto found = std::find_if(data_.begin(), data_.end(),
                                    [&](const DataEntry& d) { return d.type->id == id; });
    if (found == data_.end()) {
        return KStatus(KStatus::kNotFound,
                       KString("no data type has the id " + std::to_string(id.id())));
    }
    if (found->type->liveInstances > 0) {
        return KStatus(KStatus::kFailure,
                       KString("data of type '" + found->type->name + "' exists"));
    }
    data_.erase(found);
    return KStatus();
}

NodeType* TypeRegistry::typeBeingInitialized() {
    return initializing;
}

} // namespace kova::detail
