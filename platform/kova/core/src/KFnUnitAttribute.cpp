#include "detail/AttributeFactory.h"

#include <kova/KFnUnitAttribute.h>

using kova::detail::Attribute;
using kova::detail::attributeOf;

KFnUnitAttribute::KFnUnitAttribute(const KObject& attribute, KStatus* status) {
    attach(attribute, status);
}

KObject KFnUnitAttribute::create(const KString& longName, const KString& shortName, Type type,
                                 double defaultValue, KStatus* status) {
    object_ =
        kova::detail::createAttribute("KFnUnitAttribute::create", status, [&](KStatus& result) {
            return kova::detail::makeUnitAttribute(longName.str(), shortName.str(), type,
                                                   defaultValue, result);
        });
    return object_;
}

KObject KFnUnitAttribute::create(const KString& longName, const KString& shortName,
                                 const KTime& defaultTime, KStatus* status) {
    object_ =
        kova::detail::createAttribute("KFnUnitAttribute::create", status, [&](KStatus& result) {
            auto a = kova::detail::makeUnitAttribute(longName.str(), shortName.str(), kTime,
                                                     defaultTime.value(), result);
            if (a) {
                a->timeDefault = defaultTime;
            }
            return a;
        });
    return object_;
}

KFnUnitAttribute::Type KFnUnitAttribute::unitType() const {
    const Attribute* a = attributeOf(object_);
    return a ? a->unitType : kInvalid;
}

KStatus KFnUnitAttribute::setDefault(double value) {
    Attribute* a = attributeOf(object_);
    if (a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    a->numericDefault[0] = value;
    a->timeDefault = KTime(value, a->timeDefault.unit());
    return KStatus();
}

KStatus KFnUnitAttribute::setDefault(const KTime& value) {
    Attribute* a = attributeOf(object_);
    if (a == nullptr || a->unitType != kTime) {
        return KStatus(KStatus::kInvalidParameter, "no time attribute attached");
    }
    a->timeDefault = value;
    a->numericDefault[0] = value.value();
    return KStatus();
}
