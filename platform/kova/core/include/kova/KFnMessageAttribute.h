#pragma once

#include <kova/KFnAttribute.h>

// Attributes that carry no value: their connections only relate nodes (a shader to a shading
// group, ...).
class KOVA_API KFnMessageAttribute : public KFnAttribute {
public:
    KFnMessageAttribute() = default;
    explicit KFnMessageAttribute(const KObject& attribute, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kMessageAttribute; }

    KObject create(const KString& longName, const KString& shortName, KStatus* status = nullptr);
};
