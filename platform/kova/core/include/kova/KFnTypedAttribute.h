#pragma once

#include <kova/KFnAttribute.h>

// Attributes holding data of one kind (a string, an array, a mesh, a plug-in data type ...).
class KOVA_API KFnTypedAttribute : public KFnAttribute {
public:
    KFnTypedAttribute() = default;
    explicit KFnTypedAttribute(const KObject& attribute, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kTypedAttribute; }

    // An attribute for data of kind `type`; `defaultData` (optional) must be of that kind and
    // is copied into every new node. Returns the null object on failure.
    KObject create(const KString& longName, const KString& shortName, KFnData::Type type,
                   const KObject& defaultData = KObject::kNullObj, KStatus* status = nullptr);
    // An attribute for the registered plug-in data type `id`.
    KObject create(const KString& longName, const KString& shortName, const KTypeId& id,
                   const KObject& defaultData = KObject::kNullObj, KStatus* status = nullptr);

    KFnData::Type attrType() const;
    KStatus setDefault(const KObject& data);
    KStatus getDefault(KObject& data) const;
};
