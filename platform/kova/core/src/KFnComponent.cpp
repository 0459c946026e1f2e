#include <kova/KFnComponent.h>
#include <kova/KString.h>
#include <kova/detail/ComponentData.h>

using kova::detail::ComponentData;

namespace {

ComponentData* componentOf(const KObject& object) {
    return kova::detail::entityAs<ComponentData>(object.entity());
}

KStatus noComponent() {
    return KStatus(KStatus::kInvalidParameter, "no component attached");
}

} // namespace

KFnComponent::KFnComponent(const KObject& component, KStatus* status) {
    attach(component, status);
}

KFn::Type KFnComponent::componentType() const {
    return object_.apiType();
}

int KFnComponent::elementCount() const {
    const auto* c = componentOf(object_);
    return c ? c->count() : 0;
}

bool KFnComponent::isEmpty() const {
    return elementCount() == 0;
}

bool KFnComponent::isComplete() const {
    const auto* c = componentOf(object_);
    return c != nullptr && c->complete;
}

KStatus KFnComponent::setComplete(bool complete) {
    auto* c = componentOf(object_);
    if (c == nullptr) {
        return noComponent();
    }
    c->complete = complete;
    if (complete) {
        c->elements.clear();
    }
    return KStatus();
}

KStatus KFnComponent::setCompleteData(int count) {
    auto* c = componentOf(object_);
    if (c == nullptr || count < 0) {
        return c == nullptr ? noComponent() : KStatus(KStatus::kInvalidParameter, "negative count");
    }
    c->completeCount = count;
    return setComplete(true);
}

int KFnComponent::completeData() const {
    const auto* c = componentOf(object_);
    return c ? c->completeCount : 0;
}
