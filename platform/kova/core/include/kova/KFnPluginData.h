#pragma once

#include <kova/KExport.h>
#include <kova/KFnData.h>
#include <kova/KPxData.h>
#include <kova/KTypeId.h>

// Function set of plug-in data: host data objects holding an instance of a registered
// plug-in data type.
class KOVA_API KFnPluginData : public KFnData {
public:
    KFnPluginData() = default;
    explicit KFnPluginData(const KObject& data, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kPluginData; }

    // A new data object holding a new instance of the type registered as `id`, and attaches
    // to it. Null when no such type is registered or its creator fails.
    KObject create(const KTypeId& id, KStatus* status = nullptr);

    // The instance, or null.
    KPxData* data(KStatus* status = nullptr) const;
    KTypeId typeId(KStatus* status = nullptr) const;
};
