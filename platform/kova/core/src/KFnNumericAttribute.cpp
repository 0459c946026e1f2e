#include "detail/AttributeFactory.h"

#include <kova/KFnNumericAttribute.h>

using kova::detail::Attribute;
using kova::detail::attributeOf;

KFnNumericAttribute::KFnNumericAttribute(const KObject& attribute, KStatus* status) {
    attach(attribute, status);
}

KObject KFnNumericAttribute::create(const KString& longName, const KString& shortName,
                                    KFnNumericData::Type type, double defaultValue,
                                    KStatus* status) {
    object_ =
        kova::detail::createAttribute("KFnNumericAttribute::create", status, [&](KStatus& result) {
            return kova::detail::makeNumericAttribute(longName.str(), shortName.str(), type,
                                                      defaultValue, result);
        });
    return object_;
}

KFnNumericData::Type KFnNumericAttribute::numericType() const {
    const Attribute* a = attributeOf(object_);
    return a ? a->numericType : KFnNumericData::kInvalid;
}

KStatus KFnNumericAttribute::setDefault(double value) {
    return setDefault(value, value, value);
}

KStatus KFnNumericAttribute::setDefault(double x, double y, double z) {
    Attribute* a = attributeOf(object_);
    if (a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    a->numericDefault = {x, y, z, z};
    return KStatus();
}

double KFnNumericAttribute::defaultValue() const {
    const Attribute* a = attributeOf(object_);
    return a ? a->numericDefault[0] : 0.0;
}
