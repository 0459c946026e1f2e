#include "detail/NodeType.h"
#include "detail/NodeTypeFactory.h"
#include "detail/PluginRecord.h"
#include "detail/Report.h"
#include "detail/Scene.h"
#include "detail/TypeRegistry.h"

#include <cstring>
#include <kova/KApiVersion.h>
#include <kova/KFailureInjection.h>
#include <kova/KFnPlugin.h>
#include <kova/detail/Guarded.h>

using kova::detail::PluginRecord;
using kova::detail::report;
using kova::detail::TypeRegistry;

namespace {

PluginRecord* pluginOf(const KObject& object) {
    return kova::detail::entityAs<PluginRecord>(object.entity());
}

KStatus noPlugin() {
    return KStatus(KStatus::kInvalidParameter, "no plug-in attached");
}

KStatus notOwned(const std::string& what) {
    return KStatus(KStatus::kInvalidParameter,
                   KString(what + " was not registered by this plug-in"));
}

} // namespace

KFnPlugin::KFnPlugin(const KObject& plugin, const char* vendor, const char* version,
                     const char* requiredApiVersion, KStatus* status) {
    if (!attach(plugin, status)) {
        return;
    }
    PluginRecord* record = pluginOf(object_);
    if (vendor != nullptr && std::strcmp(vendor, "Unknown") != 0) {
        record->vendor = vendor;
    }
    if (version != nullptr && std::strcmp(version, "Unknown") != 0) {
        record->version = version;
    }
    if (requiredApiVersion != nullptr && std::strcmp(requiredApiVersion, "Any") != 0 &&
        std::strcmp(requiredApiVersion, KOVA_API_VERSION) != 0) {
        report(status, KStatus(KStatus::kInvalidParameter,
                               KString(std::string("the plug-in needs host API version ") +
                                       requiredApiVersion + ", this host is " KOVA_API_VERSION)));
    }
}

KStatus KFnPlugin::registerNode(const KString& typeName, const KTypeId& typeId,
                                KCreatorFunction creator, KInitializeFunction initialize,
                                KPxNode::Type type, const KString* classification) {
    if (KFailureInjection::shouldFail("KFnPlugin::registerNode")) {
        return KFailureInjection::failure("KFnPlugin::registerNode");
    }
    PluginRecord* record = pluginOf(object_);
    if (record == nullptr) {
        return noPlugin();
    }
    if (!kova::detail::Scene::isValidName(typeName.view()) || creator == nullptr ||
        type < KPxNode::kDependNode || type >= KPxNode::kLast) {
        return KStatus(KStatus::kInvalidParameter,
                       KString("cannot register node type '" + typeName.str() +
                               "': invalid name, kind or no creator"));
    }
    auto nodeType =
        kova::detail::newNodeType(typeName.str(), typeId, type, kova::detail::pluginApiType(type));
    nodeType->creator = creator;
    nodeType->initialize = initialize;
    nodeType->classification = classification ? classification->str() : std::string();
    nodeType->plugin = record->shared_from_this();
    return TypeRegistry::instance().registerNode(nodeType);
}

KStatus KFnPlugin::deregisterNode(const KTypeId& typeId) {
    if (KFailureInjection::shouldFail("KFnPlugin::deregisterNode")) {
        return KFailureInjection::failure("KFnPlugin::deregisterNode");
    }
    PluginRecord* record = pluginOf(object_);
    if (record == nullptr) {
        return noPlugin();
    }
    auto type = TypeRegistry::instance().findNode(typeId);
    if (type && type->plugin.lock().get() != record) {
        return notOwned("node type '" + type->name + "'");
    }
    return TypeRegistry::instance().deregisterNode(typeId);
}

KStatus KFnPlugin::registerData(const KString& typeName, const KTypeId& typeId,
                                KCreatorFunction creator) {
    if (KFailureInjection::shouldFail("KFnPlugin::registerData")) {
        return KFailureInjection::failure("KFnPlugin::registerData");
    }
    PluginRecord* record = pluginOf(object_);
    if (record == nullptr) {
        return noPlugin();
    }
    auto type = std::make_shared<kova::detail::PluginDataType>();
    type->name = typeName.str();
    type->id = typeId;
    type->creator = creator;
    return TypeRegistry::instance().registerData(type, record->shared_from_this());
}

KStatus KFnPlugin::deregisterData(const KTypeId& typeId) {
    if (KFailureInjection::shouldFail("KFnPlugin::deregisterData")) {
        return KFailureInjection::failure("KFnPlugin::deregisterData");
    }
    PluginRecord* record = pluginOf(object_);
    if (record == nullptr) {
        return noPlugin();
    }
    for (const auto& type : TypeRegistry::instance().dataOf(record)) {
        if (type->id == typeId) {
            return TypeRegistry::instance().deregisterData(typeId);
        }
    }
    return TypeRegistry::instance().findData(typeId)
               ? notOwned("data type '" + TypeRegistry::instance().findData(typeId)->name + "'")
               : KStatus(KStatus::kNotFound, "no data type has that id");
}

KStatus KFnPlugin::registerUIStrings(KStatus (*registerFunction)(),
                                     const KString& stringTableName) {
    if (KFailureInjection::shouldFail("KFnPlugin::registerUIStrings")) {
        return KFailureInjection::failure("KFnPlugin::registerUIStrings");
    }
    PluginRecord* record = pluginOf(object_);
    if (record == nullptr || registerFunction == nullptr) {
        return record == nullptr
                   ? noPlugin()
                   : KStatus(KStatus::kInvalidParameter, "no string registration function");
    }
    KStatus status;
    const auto who = [&] {
        return KString("The string registration of table '" + stringTableName.str() + "'");
    };
    if (!kova::detail::runGuarded([&] { status = registerFunction(); }, who)) {
        return KStatus(KStatus::kFailure, who() + " threw");
    }
    if (status) {
        record->stringTables.push_back(stringTableName.str());
    }
    return status;
}

KString KFnPlugin::vendor(KStatus* status) const {
    const PluginRecord* record = pluginOf(object_);
    report(status, record ? KStatus() : noPlugin());
    return record ? KString(record->vendor) : KString();
}

KString KFnPlugin::version(KStatus* status) const {
    const PluginRecord* record = pluginOf(object_);
    report(status, record ? KStatus() : noPlugin());
    return record ? KString(record->version) : KString();
}

KString KFnPlugin::name(KStatus* status) const {
    const PluginRecord* record = pluginOf(object_);
    report(status, record ? KStatus() : noPlugin());
    return record ? KString(record->name) : KString();
}

KString KFnPlugin::loadPath(KStatus* status) const {
    const PluginRecord* record = pluginOf(object_);
    report(status, record ? KStatus() : noPlugin());
    return record ? KString(record->path) : KString();
}

unsigned int KFnPlugin::stringTableCount() const {
    const PluginRecord* record = pluginOf(object_);
    return record ? static_cast<unsigned int>(record->stringTables.size()) : 0;
}
