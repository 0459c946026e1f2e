#pragma once

#include <kova/KFnAttribute.h>

// Attributes that accept any of a list of data kinds and plug-in data types.
class KOVA_API KFnGenericAttribute : public KFnAttribute {
public:
    KFnGenericAttribute() = default;
    explicit KFnGenericAttribute(const KObject& attribute, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kGenericAttribute; }

    // A generic attribute that accepts nothing yet. Returns the null object on failure.
    KObject create(const KString& longName, const KString& shortName, KStatus* status = nullptr);

    // kAny makes it accept every kind.
    KStatus addDataAccept(KFnData::Type type);
    KStatus addDataAccept(const KTypeId& id);
    // Also accept plain numbers.
    KStatus addNumericDataAccept();
    KStatus removeDataAccept(KFnData::Type type);
    KStatus removeDataAccept(const KTypeId& id);
};
