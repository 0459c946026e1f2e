#include "detail/Attribute.h"
#include "detail/Node.h"
#include "detail/TypeRegistry.h"

#include <kova/KDataBlock.h>
#include <kova/KFailureInjection.h>
#include <kova/KPlug.h>
#include <kova/KPxNode.h>

namespace {

kova::detail::Node* nodeOf(const std::weak_ptr<kova::detail::Entity>& entity) {
    return kova::detail::entityAs<kova::detail::Node>(entity.lock());
}

} // namespace

KPxNode::~KPxNode() = default;

KStatus KPxNode::compute(const KPlug&, KDataBlock&) {
    return KStatus(KStatus::kUnknownParameter);
}

void KPxNode::postConstructor() {}

KObject KPxNode::thisKObject() const {
    return KObject(node_.lock());
}

KString KPxNode::name() const {
    const auto* node = nodeOf(node_);
    return node ? KString(node->name) : KString();
}

KString KPxNode::typeName() const {
    const auto* node = nodeOf(node_);
    return node ? KString(node->type->name) : KString();
}

KTypeId KPxNode::typeId() const {
    const auto* node = nodeOf(node_);
    return node ? node->type->id : KTypeId();
}

KStatus KPxNode::addAttribute(const KObject& attribute) {
    if (KFailureInjection::shouldFail("KPxNode::addAttribute")) {
        return KFailureInjection::failure("KPxNode::addAttribute");
    }
    kova::detail::NodeType* type = kova::detail::TypeRegistry::typeBeingInitialized();
    if (type == nullptr) {
        return KStatus(KStatus::kFailure, "static attributes are added inside initialize only");
    }
    return type->addAttribute(kova::detail::sharedAttributeOf(attribute));
}

KStatus KPxNode::attributeAffects(const KObject& whenChanges, const KObject& isAffected) {
    if (KFailureInjection::shouldFail("KPxNode::attributeAffects")) {
        return KFailureInjection::failure("KPxNode::attributeAffects");
    }
    kova::detail::NodeType* type = kova::detail::TypeRegistry::typeBeingInitialized();
    const auto* when = kova::detail::attributeOf(whenChanges);
    auto* affected = kova::detail::attributeOf(isAffected);
    if (type == nullptr || when == nullptr || affected == nullptr) {
        return KStatus(KStatus::kFailure,
                       "attributeAffects needs two attributes, inside initialize only");
    }
    return type->addAffects(*when, *affected);
}

KStatus KPxNode::computeDynamicOutputs() {
    kova::detail::NodeType* type = kova::detail::TypeRegistry::typeBeingInitialized();
    if (type == nullptr) {
        return KStatus(KStatus::kFailure, "computeDynamicOutputs works inside initialize only");
    }
    type->dynamicOutputsComputed = true;
    return KStatus();
}
