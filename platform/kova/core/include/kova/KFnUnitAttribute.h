#pragma once

#include <kova/KFnAttribute.h>
#include <kova/KTime.h>

// Attributes holding a number with a unit. Time values are KTime; distances are kept in
// centimetres and angles in radians.
class KOVA_API KFnUnitAttribute : public KFnAttribute {
public:
    enum Type { kInvalid, kAngle, kDistance, kTime, kLast };

    KFnUnitAttribute() = default;
    explicit KFnUnitAttribute(const KObject& attribute, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kUnitAttribute; }

    // `defaultValue` is in the internal unit; for time in the user-interface unit
    // (KTime::uiUnit()) current at creation.
    KObject create(const KString& longName, const KString& shortName, Type type,
                   double defaultValue = 0.0, KStatus* status = nullptr);
    KObject create(const KString& longName, const KString& shortName, const KTime& defaultTime,
                   KStatus* status = nullptr);

    Type unitType() const;
    KStatus setDefault(double value);
    KStatus setDefault(const KTime& value);
};
