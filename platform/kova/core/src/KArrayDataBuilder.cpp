#include "detail/Attribute.h"

#include <kova/KArrayDataBuilder.h>
#include <kova/KFailureInjection.h>

using kova::detail::Attribute;
using kova::detail::Value;

KArrayDataBuilder::KArrayDataBuilder(const KObject& attribute, KStatus* status) {
    auto a = kova::detail::sharedAttributeOf(attribute);
    KStatus result;
    if (!a || !a->array) {
        result = KStatus(KStatus::kInvalidParameter, "not an array attribute");
    } else {
        attribute_ = std::move(a);
        elements_ = std::make_shared<Value>(attribute_->makeValue());
    }
    if (status != nullptr) {
        *status = result;
    }
}

KArrayDataBuilder::KArrayDataBuilder(const Value& elements, std::shared_ptr<Attribute> attribute)
    : elements_(std::make_shared<Value>(elements)), attribute_(std::move(attribute)) {}

KDataHandle KArrayDataBuilder::addElement(unsigned int index, KStatus* status) {
    KStatus result;
    KDataHandle handle;
    if (KFailureInjection::shouldFail("KArrayDataBuilder::addElement")) {
        result = KFailureInjection::failure("KArrayDataBuilder::addElement");
    } else if (!elements_) {
        result = KStatus(KStatus::kInvalidParameter, "the builder has no array");
    } else {
        auto found = elements_->elements.find(index);
        if (found == elements_->elements.end()) {
            found = elements_->elements.emplace(index, attribute_->makeElementValue()).first;
        }
        handle = KDataHandle(&found->second, attribute_, nullptr, elements_);
    }
    if (status != nullptr) {
        *status = result;
    }
    return handle;
}

KDataHandle KArrayDataBuilder::addLast(KStatus* status) {
    const unsigned int next =
        elements_ && !elements_->elements.empty() ? elements_->elements.rbegin()->first + 1 : 0;
    return addElement(next, status);
}

KStatus KArrayDataBuilder::removeElement(unsigned int index) {
    if (KFailureInjection::shouldFail("KArrayDataBuilder::removeElement")) {
        return KFailureInjection::failure("KArrayDataBuilder::removeElement");
    }
    if (!elements_ || elements_->elements.erase(index) == 0) {
        return KStatus(KStatus::kInvalidParameter,
                       KString("there is no element " + std::to_string(index)));
    }
    return KStatus();
}

unsigned int KArrayDataBuilder::elementCount() const {
    return elements_ ? static_cast<unsigned int>(elements_->elements.size()) : 0;
}

KStatus KArrayDataBuilder::growArray(unsigned int amount) {
    if (KFailureInjection::shouldFail("KArrayDataBuilder::growArray")) {
        return KFailureInjection::failure("KArrayDataBuilder::growArray");
    }
    for (unsigned int i = 0; i < amount; ++i) {
        KStatus status;
        addLast(&status);
        if (!status) {
            return status;
        }
    }
    return KStatus();
}
