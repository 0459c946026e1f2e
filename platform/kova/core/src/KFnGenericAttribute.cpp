#include "detail/AttributeFactory.h"

#include <algorithm>
#include <kova/KFnGenericAttribute.h>

using kova::detail::Attribute;
using kova::detail::attributeOf;

namespace {

template <class T>
KStatus addUnique(const KObject& object, std::vector<T> Attribute::*list, const T& item) {
    Attribute* a = attributeOf(object);
    if (a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    auto& items = a->*list;
    if (std::find(items.begin(), items.end(), item) == items.end()) {
        items.push_back(item);
    }
    return KStatus();
}

template <class T>
KStatus removeItem(const KObject& object, std::vector<T> Attribute::*list, const T& item) {
    Attribute* a = attributeOf(object);
    if (a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    return std::erase(a->*list, item) > 0
               ? KStatus()
               : KStatus(KStatus::kNotFound, "the attribute does not accept it");
}

} // namespace

KFnGenericAttribute::KFnGenericAttribute(const KObject& attribute, KStatus* status) {
    attach(attribute, status);
}

KObject KFnGenericAttribute::create(const KString& longName, const KString& shortName,
                                    KStatus* status) {
    object_ =
        kova::detail::createAttribute("KFnGenericAttribute::create", status, [&](KStatus& result) {
            return kova::detail::makeGenericAttribute(longName.str(), shortName.str(), result);
        });
    return object_;
}

KStatus KFnGenericAttribute::addDataAccept(KFnData::Type type) {
    if (KFailureInjection::shouldFail("KFnGenericAttribute::addDataAccept")) {
        return KFailureInjection::failure("KFnGenericAttribute::addDataAccept");
    }
    if (type == KFnData::kInvalid) {
        return KStatus(KStatus::kInvalidParameter, "invalid data kind");
    }
    return addUnique(object_, &Attribute::acceptedTypes, type);
}

KStatus KFnGenericAttribute::addDataAccept(const KTypeId& id) {
    if (KFailureInjection::shouldFail("KFnGenericAttribute::addDataAccept")) {
        return KFailureInjection::failure("KFnGenericAttribute::addDataAccept");
    }
    return addUnique(object_, &Attribute::acceptedPluginTypes, id);
}

KStatus KFnGenericAttribute::addNumericDataAccept() {
    if (KFailureInjection::shouldFail("KFnGenericAttribute::addNumericDataAccept")) {
        return KFailureInjection::failure("KFnGenericAttribute::addNumericDataAccept");
    }
    Attribute* a = attributeOf(object_);
    if (a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    a->acceptsNumbers = true;
    return KStatus();
}

KStatus KFnGenericAttribute::removeDataAccept(KFnData::Type type) {
    return removeItem(object_, &Attribute::acceptedTypes, type);
}

KStatus KFnGenericAttribute::removeDataAccept(const KTypeId& id) {
    return removeItem(object_, &Attribute::acceptedPluginTypes, id);
}
