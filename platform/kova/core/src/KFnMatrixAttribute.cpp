#include "detail/AttributeFactory.h"

#include <kova/KFnMatrixAttribute.h>

using kova::detail::Attribute;
using kova::detail::attributeOf;

KFnMatrixAttribute::KFnMatrixAttribute(const KObject& attribute, KStatus* status) {
    attach(attribute, status);
}

KObject KFnMatrixAttribute::create(const KString& longName, const KString& shortName, Type type,
                                   KStatus* status) {
    object_ =
        kova::detail::createAttribute("KFnMatrixAttribute::create", status, [&](KStatus& result) {
            return kova::detail::makeMatrixAttribute(longName.str(), shortName.str(), type, result);
        });
    return object_;
}

KFnMatrixAttribute::Type KFnMatrixAttribute::precision() const {
    const Attribute* a = attributeOf(object_);
    return a ? a->precision : kDouble;
}

KStatus KFnMatrixAttribute::setDefault(const KMatrix& matrix) {
    Attribute* a = attributeOf(object_);
    if (a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    a->defaultMatrix = a->precision == kFloat ? KFloatMatrix(matrix).asMatrix() : matrix;
    return KStatus();
}

KStatus KFnMatrixAttribute::setDefault(const KFloatMatrix& matrix) {
    return setDefault(matrix.asMatrix());
}

KMatrix KFnMatrixAttribute::defaultMatrix() const {
    const Attribute* a = attributeOf(object_);
    return a ? a->defaultMatrix : KMatrix();
}
