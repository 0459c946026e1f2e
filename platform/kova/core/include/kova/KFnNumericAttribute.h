#pragma once

#include <kova/KFnAttribute.h>
#include <kova/KFnNumericData.h>

// Attributes holding one to four numbers of a numeric kind.
class KOVA_API KFnNumericAttribute : public KFnAttribute {
public:
    KFnNumericAttribute() = default;
    explicit KFnNumericAttribute(const KObject& attribute, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kNumericAttribute; }

    // Creates an attribute whose every component defaults to `defaultValue` and attaches this
    // set to it. Returns the null object when the names are empty or the kind is invalid.
    KObject create(const KString& longName, const KString& shortName, KFnNumericData::Type type,
                   double defaultValue = 0.0, KStatus* status = nullptr);

    KFnNumericData::Type numericType() const;
    KStatus setDefault(double value);
    KStatus setDefault(double x, double y, double z = 0.0);
    double defaultValue() const;
};
