#pragma once

#include <kova/KExport.h>
#include <kova/KFnBase.h>
#include <kova/KPxNode.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KTypeId.h>

// Function set of plug-ins: what a plug-in registers with the host, from its
// initializePlugin(KObject) entry point (see KPluginLoader).
class KOVA_API KFnPlugin : public KFnBase {
public:
    KFnPlugin() = default;
    // Attaches to `plugin` and records its vendor and version (values "Unknown" leave what
    // was recorded before). `requiredApiVersion` is "Any" or the host API version the
    // plug-in needs; another version fails with kInvalidParameter.
    explicit KFnPlugin(const KObject& plugin, const char* vendor = "Unknown",
                       const char* version = "Unknown", const char* requiredApiVersion = "Any",
                       KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kPlugin; }

    // Registers a node type. Fails, registering nothing, when the name is not a valid name,
    // the name or id is taken, the creator is null, or initialize fails or throws.
    KStatus registerNode(const KString& typeName, const KTypeId& typeId, KCreatorFunction creator,
                         KInitializeFunction initialize, KPxNode::Type type = KPxNode::kDependNode,
                         const KString* classification = nullptr);
    // Fails when no type has the id, the type was not registered by this plug-in, or nodes of
    // the type exist.
    KStatus deregisterNode(const KTypeId& typeId);
    // Registers a plug-in data type; the creator returns a new KPxData of the type.
    KStatus registerData(const KString& typeName, const KTypeId& typeId, KCreatorFunction creator);
    // Fails when the type is not registered by this plug-in or data of the type exists.
    KStatus deregisterData(const KTypeId& typeId);
    // Runs `registerFunction` (which registers the plug-in's strings with KStringResource)
    // and records the table name. Fails when the function is null, fails or throws.
    KStatus registerUIStrings(KStatus (*registerFunction)(), const KString& stringTableName);

    KString vendor(KStatus* status = nullptr) const;
    KString version(KStatus* status = nullptr) const;
    KString name(KStatus* status = nullptr) const;
    // The library's path (empty for modules of the host process).
    KString loadPath(KStatus* status = nullptr) const;
    // The string tables registered so far.
    unsigned int stringTableCount() const;
};
