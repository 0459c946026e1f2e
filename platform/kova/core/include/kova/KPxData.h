#pragma once

#include <kova/KExport.h>
#include <kova/KString.h>
#include <kova/KTypeId.h>

// Base class of plug-in data types. A plug-in registers its type with
// KFnPlugin::registerData(name, id, creator); the host then creates instances through the
// creator whenever it needs one (KFnPluginData::create, copies of attribute values) and
// deletes them through the virtual destructor.
class KOVA_API KPxData {
public:
    KPxData() = default;
    virtual ~KPxData();
    KPxData(const KPxData&) = delete;
    KPxData& operator=(const KPxData&) = delete;

    // The registered id and name of the type.
    virtual KTypeId typeId() const = 0;
    virtual KString name() const = 0;
    // Makes this instance a copy of `source`, an instance of the same type.
    virtual void copy(const KPxData& source) = 0;
};
