#include "detail/AttributeFactory.h"

#include <kova/KFnCompoundAttribute.h>

using kova::detail::Attribute;
using kova::detail::attributeOf;

KFnCompoundAttribute::KFnCompoundAttribute(const KObject& attribute, KStatus* status) {
    attach(attribute, status);
}

KObject KFnCompoundAttribute::create(const KString& longName, const KString& shortName,
                                     KStatus* status) {
    object_ =
        kova::detail::createAttribute("KFnCompoundAttribute::create", status, [&](KStatus& result) {
            return kova::detail::makeCompoundAttribute(longName.str(), shortName.str(), result);
        });
    return object_;
}

KStatus KFnCompoundAttribute::addChild(const KObject& child) {
    if (KFailureInjection::shouldFail("KFnCompoundAttribute::addChild")) {
        return KFailureInjection::failure("KFnCompoundAttribute::addChild");
    }
    Attribute* compound = attributeOf(object_);
    if (compound == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    return kova::detail::addChildAttribute(*compound, kova::detail::sharedAttributeOf(child));
}

unsigned int KFnCompoundAttribute::numChildren() const {
    const Attribute* a = attributeOf(object_);
    return a ? static_cast<unsigned int>(a->children.size()) : 0;
}

KObject KFnCompoundAttribute::child(unsigned int index, KStatus* status) const {
    const Attribute* a = attributeOf(object_);
    if (a == nullptr || index >= a->children.size()) {
        if (status != nullptr) {
            *status = KStatus(KStatus::kInvalidParameter, "no such child");
        }
        return KObject();
    }
    if (status != nullptr) {
        *status = KStatus();
    }
    return kova::detail::objectOf(a->children[index]);
}
