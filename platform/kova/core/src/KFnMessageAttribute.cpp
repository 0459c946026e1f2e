#include "detail/AttributeFactory.h"

#include <kova/KFnMessageAttribute.h>

KFnMessageAttribute::KFnMessageAttribute(const KObject& attribute, KStatus* status) {
    attach(attribute, status);
}

KObject KFnMessageAttribute::create(const KString& longName, const KString& shortName,
                                    KStatus* status) {
    object_ =
        kova::detail::createAttribute("KFnMessageAttribute::create", status, [&](KStatus& result) {
            return kova::detail::makeMessageAttribute(longName.str(), shortName.str(), result);
        });
    return object_;
}
