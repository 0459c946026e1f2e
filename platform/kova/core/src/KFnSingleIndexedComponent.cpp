#include "detail/InjectedFailure.h"
#include "detail/Report.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnSingleIndexedComponent.h>
#include <kova/detail/ComponentData.h>

using kova::detail::ComponentData;
using kova::detail::report;

namespace {

ComponentData* componentOf(const KObject& object) {
    return kova::detail::entityAs<ComponentData>(object.entity());
}

KStatus noComponent() {
    return KStatus(KStatus::kInvalidParameter, "no component attached");
}

} // namespace

KFnSingleIndexedComponent::KFnSingleIndexedComponent(const KObject& component, KStatus* status) {
    if (!kova::detail::injectedFailure("KFnSingleIndexedComponent::KFnSingleIndexedComponent",
                                       status)) {
        attach(component, status);
    }
}

KObject KFnSingleIndexedComponent::create(KFn::Type type, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnSingleIndexedComponent::create")) {
        report(status, KFailureInjection::failure("KFnSingleIndexedComponent::create"));
        return KObject();
    }
    if (!KFn::isA(type, KFn::kSingleIndexedComponent) || type == KFn::kSingleIndexedComponent) {
        report(status, KStatus(KStatus::kInvalidParameter, "not a single-indexed component kind"));
        return KObject();
    }
    report(status, KStatus());
    object_ = KObject(std::make_shared<ComponentData>(type));
    return object_;
}

KStatus KFnSingleIndexedComponent::addElement(int element) {
    if (KFailureInjection::shouldFail("KFnSingleIndexedComponent::addElement")) {
        return KFailureInjection::failure("KFnSingleIndexedComponent::addElement");
    }
    auto* c = componentOf(object_);
    if (c == nullptr || element < 0) {
        return c == nullptr ? noComponent() : KStatus(KStatus::kInvalidParameter, "negative index");
    }
    c->add(element);
    return KStatus();
}

KStatus KFnSingleIndexedComponent::addElements(const KIntArray& elements) {
    for (int element : elements) {
        if (KStatus status = addElement(element); !status) {
            return status;
        }
    }
    return KStatus();
}

KStatus KFnSingleIndexedComponent::getElements(KIntArray& elements) const {
    if (KFailureInjection::shouldFail("KFnSingleIndexedComponent::getElements")) {
        return KFailureInjection::failure("KFnSingleIndexedComponent::getElements");
    }
    const auto* c = componentOf(object_);
    if (c == nullptr) {
        return noComponent();
    }
    const std::vector<int> all = c->allElements();
    return elements.copy(KIntArray(all.data(), static_cast<unsigned int>(all.size())));
}

int KFnSingleIndexedComponent::element(unsigned int index, KStatus* status) const {
    const auto* c = componentOf(object_);
    if (c == nullptr || index >= static_cast<unsigned int>(c->count())) {
        report(status, KStatus(KStatus::kInvalidParameter, "element index out of range"));
        return -1;
    }
    report(status, KStatus());
    return c->complete ? static_cast<int>(index) : c->elements[index];
}
