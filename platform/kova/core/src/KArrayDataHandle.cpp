#include "detail/Attribute.h"
#include "detail/Evaluator.h"
#include "detail/InjectedFailure.h"
#include "detail/Node.h"
#include "detail/Report.h"

#include <iterator>
#include <kova/KArrayDataHandle.h>
#include <kova/KFailureInjection.h>
#include <mutex>

using kova::detail::Attribute;
using kova::detail::Value;

using kova::detail::report;

KArrayDataHandle::KArrayDataHandle(Value* array, std::shared_ptr<Attribute> attribute,
                                   kova::detail::Node* node, std::shared_ptr<Value> owned)
    : array_(array), attribute_(std::move(attribute)), node_(node), owned_(std::move(owned)) {}

KArrayDataHandle::KArrayDataHandle(const KDataHandle& handle, KStatus* status) {
    if (kova::detail::injectedFailure("KArrayDataHandle::KArrayDataHandle", status)) {
        return;
    }
    Value* value = handle.value();
    if (value == nullptr || value->kind != Value::Kind::Array) {
        report(status, KStatus(KStatus::kInvalidParameter, "the handle holds no array"));
        return;
    }
    report(status, KStatus());
    array_ = value;
    attribute_ = handle.attributeEntity();
}

unsigned int KArrayDataHandle::elementCount(KStatus* status) const {
    report(status, array_ ? KStatus() : KStatus(KStatus::kInvalidParameter, "null array handle"));
    return array_ ? static_cast<unsigned int>(array_->elements.size()) : 0;
}

unsigned int KArrayDataHandle::elementIndex(KStatus* status) const {
    if (array_ == nullptr || position_ >= array_->elements.size()) {
        report(status, KStatus(KStatus::kInvalidParameter, "no current element"));
        return 0;
    }
    report(status, KStatus());
    return std::next(array_->elements.begin(), position_)->first;
}

KStatus KArrayDataHandle::jumpToElement(unsigned int logicalIndex) {
    if (KFailureInjection::shouldFail("KArrayDataHandle::jumpToElement")) {
        return KFailureInjection::failure("KArrayDataHandle::jumpToElement");
    }
    if (array_ == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "null array handle");
    }
    const auto found = array_->elements.find(logicalIndex);
    if (found == array_->elements.end()) {
        return KStatus(KStatus::kInvalidParameter,
                       KString("there is no element " + std::to_string(logicalIndex)));
    }
    position_ = static_cast<unsigned int>(std::distance(array_->elements.begin(), found));
    return KStatus();
}

KStatus KArrayDataHandle::jumpToArrayElement(unsigned int physicalIndex) {
    if (KFailureInjection::shouldFail("KArrayDataHandle::jumpToArrayElement")) {
        return KFailureInjection::failure("KArrayDataHandle::jumpToArrayElement");
    }
    if (array_ == nullptr || physicalIndex >= array_->elements.size()) {
        return KStatus(KStatus::kInvalidParameter, "physical index out of range");
    }
    position_ = physicalIndex;
    return KStatus();
}

KStatus KArrayDataHandle::next() {
    if (array_ == nullptr || position_ + 1 >= array_->elements.size()) {
        if (array_ != nullptr && position_ < array_->elements.size()) {
            ++position_;
        }
        return KStatus(KStatus::kFailure, "no next element");
    }
    ++position_;
    return KStatus();
}

KDataHandle KArrayDataHandle::current(KStatus* status, const char* operation) const {
    if (KFailureInjection::shouldFail(operation)) {
        report(status, KFailureInjection::failure(operation));
        return KDataHandle();
    }
    if (array_ == nullptr || position_ >= array_->elements.size()) {
        report(status, KStatus(KStatus::kInvalidParameter, "no current element"));
        return KDataHandle();
    }
    report(status, KStatus());
    return KDataHandle(&std::next(array_->elements.begin(), position_)->second, attribute_, node_,
                       owned_);
}

KDataHandle KArrayDataHandle::inputValue(KStatus* status) const {
    return current(status, "KArrayDataHandle::inputValue");
}

KDataHandle KArrayDataHandle::outputValue(KStatus* status) const {
    return current(status, "KArrayDataHandle::outputValue");
}

KArrayDataBuilder KArrayDataHandle::builder(KStatus* status) const {
    if (KFailureInjection::shouldFail("KArrayDataHandle::builder")) {
        report(status, KFailureInjection::failure("KArrayDataHandle::builder"));
        return KArrayDataBuilder();
    }
    if (array_ == nullptr) {
        report(status, KStatus(KStatus::kInvalidParameter, "null array handle"));
        return KArrayDataBuilder();
    }
    report(status, KStatus());
    return KArrayDataBuilder(*array_, attribute_);
}

KStatus KArrayDataHandle::set(const KArrayDataBuilder& builder) {
    if (KFailureInjection::shouldFail("KArrayDataHandle::set")) {
        return KFailureInjection::failure("KArrayDataHandle::set");
    }
    if (array_ == nullptr || !builder.elements() || builder.attributeEntity() != attribute_) {
        return KStatus(KStatus::kInvalidParameter, "the builder is not for this array");
    }
    array_->elements = builder.elements()->elements;
    position_ = 0;
    return KStatus();
}

void KArrayDataHandle::setClean() {
    if (node_ != nullptr && attribute_ != nullptr) {
        std::lock_guard lock(node_->mutex);
        kova::detail::markClean(*node_, *attribute_);
    }
}
