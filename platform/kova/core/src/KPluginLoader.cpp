#include "detail/Node.h"
#include "detail/NodeType.h"
#include "detail/PluginRecord.h"
#include "detail/Report.h"
#include "detail/Scene.h"
#include "detail/TypeRegistry.h"

#include <dlfcn.h>
#include <filesystem>
#include <kova/KApiVersion.h>
#include <kova/KFailureInjection.h>
#include <kova/KMessageSink.h>
#include <kova/KPluginLoader.h>
#include <kova/detail/Guarded.h>
#include <kova/signing/VerifyPlugin.h>

using kova::detail::PluginRecord;
using kova::detail::report;
using kova::detail::TypeRegistry;

namespace kova::detail {

std::vector<std::shared_ptr<PluginRecord>>& loadedPlugins() {
    static auto* plugins = new std::vector<std::shared_ptr<PluginRecord>>;
    return *plugins;
}

} // namespace kova::detail

namespace {

using EntryPoint = KStatus (*)(KObject);

KStatus fail(KStatus::KStatusCode code, const std::string& text) {
    KMessages::error(KString(text));
    return KStatus(code, KString(text));
}

std::string canonical(const std::string& path) {
    std::error_code error;
    const auto full = std::filesystem::weakly_canonical(path, error);
    return error ? path : full.string();
}

// Why the plug-in cannot be unloaded now, or empty.
std::string blocker(const PluginRecord& record) {
    for (const auto& type : TypeRegistry::instance().nodesOf(&record)) {
        if (type->liveNodes > 0) {
            return "nodes of type '" + type->name + "' exist";
        }
    }
    for (const auto& type : TypeRegistry::instance().dataOf(&record)) {
        if (type->liveInstances > 0) {
            return "data of type '" + type->name + "' exists";
        }
    }
    return std::string();
}

// Removes the plug-in's nodes and types. Returns false when data of its data types is still
// alive (its code must then stay loaded).
bool dropRegistrations(PluginRecord& record) {
    kova::detail::Scene& scene = kova::detail::Scene::current();
    for (const auto& type : TypeRegistry::instance().nodesOf(&record)) {
        for (const auto& node : std::vector(scene.nodes())) {
            if (node->type == type && node->inScene) {
                scene.remove(*node);
            }
        }
        TypeRegistry::instance().deregisterNode(type->id);
    }
    bool clean = true;
    for (const auto& type : TypeRegistry::instance().dataOf(&record)) {
        clean = TypeRegistry::instance().deregisterData(type->id) && clean;
    }
    return clean;
}

// Calls an optional entry point of the library; a missing one counts as success.
KStatus callEntry(PluginRecord& record, const char* entry) {
    if (record.handle == nullptr) {
        return KStatus();
    }
    auto function = reinterpret_cast<EntryPoint>(dlsym(record.handle, entry));
    if (function == nullptr) {
        return KStatus();
    }
    KStatus status;
    const KObject plugin(record.shared_from_this());
    const auto who = [&] {
        return KString("The " + std::string(entry) + " of '" + record.path + "'");
    };
    if (!kova::detail::runGuarded([&] { status = function(plugin); }, who)) {
        return KStatus(KStatus::kFailure, KString(std::string(entry) + " threw"));
    }
    return status;
}

void close(PluginRecord& record, bool codeStillUsed) {
    record.loaded = false;
    std::erase_if(kova::detail::loadedPlugins(), [&](const auto& p) { return p.get() == &record; });
    if (record.handle != nullptr && !codeStillUsed) {
        dlclose(record.handle);
    } else if (codeStillUsed) {
        KMessages::warning(KString("Plug-in '" + record.path +
                                   "' stays in memory: data of its types is still in use"));
    }
    record.handle = nullptr;
}

} // namespace

KObject KPluginLoader::load(const KString& path, KStatus* status) {
    if (KFailureInjection::shouldFail("KPluginLoader::load")) {
        report(status, KFailureInjection::failure("KPluginLoader::load"));
        return KObject();
    }
    const std::string file = canonical(path.str());
    if (KObject loaded = findPlugin(KString(file)); !loaded.isNull()) {
        report(status, KStatus());
        return loaded;
    }
    const KovaSigning::VerifyResult verdict = KovaSigning::verifyPlugin(file, KOVA_API_VERSION);
    if (verdict.status != KovaSigning::VerifyResult::Status::Ok) {
        report(status,
               fail(KStatus::kFailure, "Plug-in '" + path.str() + "' refused: " + verdict.reason));
        return KObject();
    }
    void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* why = dlerror();
        report(status, fail(KStatus::kFailure,
                            "Plug-in '" + path.str() +
                                "' could not be loaded: " + (why ? why : "unknown error")));
        return KObject();
    }
    auto record =
        std::make_shared<PluginRecord>(std::filesystem::path(file).stem().string(), file, handle);
    kova::detail::loadedPlugins().push_back(record);
    KStatus initialized = callEntry(*record, "initializePlugin");
    if (!initialized) {
        close(*record, !dropRegistrations(*record));
        report(status, fail(initialized.statusCode(),
                            "Plug-in '" + path.str() +
                                "' failed to initialize: " + initialized.errorString().str()));
        return KObject();
    }
    report(status, KStatus());
    return KObject(record);
}

KStatus KPluginLoader::unload(const KObject& plugin) {
    if (KFailureInjection::shouldFail("KPluginLoader::unload")) {
        return KFailureInjection::failure("KPluginLoader::unload");
    }
    auto* record = kova::detail::entityAs<PluginRecord>(plugin.entity());
    if (record == nullptr || !record->loaded) {
        return KStatus(KStatus::kInvalidParameter, "not a loaded plug-in");
    }
    if (const std::string why = blocker(*record); !why.empty()) {
        return fail(KStatus::kFailure, "Plug-in '" + record->name + "' cannot be unloaded: " + why);
    }
    if (KStatus status = callEntry(*record, "uninitializePlugin"); !status) {
        return fail(status.statusCode(), "Plug-in '" + record->name + "' failed to uninitialize: " +
                                             status.errorString().str());
    }
    close(*record, !dropRegistrations(*record));
    return KStatus();
}

void* KPluginLoader::symbol(const KObject& plugin, const KString& name, KStatus* status) {
    if (KFailureInjection::shouldFail("KPluginLoader::symbol")) {
        report(status, KFailureInjection::failure("KPluginLoader::symbol"));
        return nullptr;
    }
    auto* record = kova::detail::entityAs<PluginRecord>(plugin.entity());
    if (record == nullptr || record->handle == nullptr) {
        report(status, KStatus(KStatus::kInvalidParameter, "not a loaded plug-in library"));
        return nullptr;
    }
    void* address = dlsym(record->handle, name.asChar());
    report(status, address ? KStatus()
                           : KStatus(KStatus::kNotFound,
                                     KString("no symbol '" + name.str() + "' in the plug-in")));
    return address;
}

KObject KPluginLoader::findPlugin(const KString& nameOrPath) {
    for (const auto& record : kova::detail::loadedPlugins()) {
        if (record->name == nameOrPath.str() || record->path == nameOrPath.str()) {
            return KObject(record);
        }
    }
    return KObject();
}

KObjectArray KPluginLoader::loadedPlugins() {
    KObjectArray out;
    for (const auto& record : kova::detail::loadedPlugins()) {
        out.append(KObject(record));
    }
    return out;
}

KObject KPluginLoader::registerModule(const KString& name, KStatus* status) {
    if (KFailureInjection::shouldFail("KPluginLoader::registerModule")) {
        report(status, KFailureInjection::failure("KPluginLoader::registerModule"));
        return KObject();
    }
    if (name.isEmpty() || !findPlugin(name).isNull()) {
        report(status, KStatus(KStatus::kInvalidParameter,
                               KString("a plug-in named '" + name.str() + "' is loaded")));
        return KObject();
    }
    auto record = std::make_shared<PluginRecord>(name.str(), std::string(), nullptr);
    kova::detail::loadedPlugins().push_back(record);
    report(status, KStatus());
    return KObject(record);
}
