#include "detail/Attribute.h"
#include "detail/Connect.h"
#include "detail/InjectedFailure.h"
#include "detail/Node.h"
#include "detail/NodeCreation.h"
#include "detail/Report.h"
#include "detail/Scene.h"
#include "detail/TypeRegistry.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnDependencyNode.h>

using kova::detail::Node;

using kova::detail::report;

namespace {

KStatus noNode() {
    return KStatus(KStatus::kInvalidParameter, "no node attached");
}

} // namespace

KFnDependencyNode::KFnDependencyNode(const KObject& node, KStatus* status) {
    attach(node, status);
}

KObject KFnDependencyNode::create(const KString& typeName, const KString& name, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnDependencyNode::create")) {
        report(status, KFailureInjection::failure("KFnDependencyNode::create"));
        return KObject();
    }
    KStatus result;
    auto node = kova::detail::createNode(typeName.view(), name.view(), nullptr, result);
    report(status, result);
    object_ = node ? kova::detail::objectOf(*node) : KObject();
    return object_;
}

KString KFnDependencyNode::name(KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    report(status, node ? KStatus() : noNode());
    return node ? KString(node->name) : KString();
}

KString KFnDependencyNode::setName(const KString& name, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnDependencyNode::setName")) {
        report(status, KFailureInjection::failure("KFnDependencyNode::setName"));
        return this->name();
    }
    Node* node = kova::detail::nodeOf(object_);
    KStatus result = node ? kova::detail::Scene::current().rename(*node, name.view()) : noNode();
    report(status, result);
    return this->name();
}

KString KFnDependencyNode::typeName(KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    report(status, node ? KStatus() : noNode());
    return node ? KString(node->type->name) : KString();
}

KTypeId KFnDependencyNode::typeId(KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    report(status, node ? KStatus() : noNode());
    return node ? node->type->id : KTypeId();
}

KString KFnDependencyNode::classification() const {
    const Node* node = kova::detail::nodeOf(object_);
    return node ? KString(node->type->classification) : KString();
}

KString KFnDependencyNode::classification(const KString& typeName) {
    auto type = kova::detail::TypeRegistry::instance().findNode(typeName.view());
    return type ? KString(type->classification) : KString();
}

KPxNode* KFnDependencyNode::userNode(KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    report(status, node ? KStatus() : noNode());
    return node ? node->user.get() : nullptr;
}

bool KFnDependencyNode::hasAttribute(const KString& name, KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    report(status, node ? KStatus() : noNode());
    return node != nullptr && node->findAttribute(name.view()) != nullptr;
}

KObject KFnDependencyNode::attribute(const KString& name, KStatus* status) const {
    if (kova::detail::injectedFailure("KFnDependencyNode::attribute", status)) {
        return KObject();
    }
    const Node* node = kova::detail::nodeOf(object_);
    kova::detail::Attribute* a = node ? node->findAttribute(name.view()) : nullptr;
    report(status, a ? KStatus()
                     : KStatus(KStatus::kInvalidParameter,
                               KString("no attribute named '" + name.str() + "'")));
    return a ? KObject(a->shared_from_this()) : KObject();
}

unsigned int KFnDependencyNode::attributeCount(KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    report(status, node ? KStatus() : noNode());
    return node ? static_cast<unsigned int>(node->liveAttributes().size()) : 0;
}

KObject KFnDependencyNode::attribute(unsigned int index, KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    const auto all =
        node ? node->liveAttributes() : std::vector<std::shared_ptr<kova::detail::Attribute>>();
    if (index >= all.size()) {
        report(status, KStatus(KStatus::kInvalidParameter, "attribute index out of range"));
        return KObject();
    }
    report(status, KStatus());
    return kova::detail::objectOf(all[index]);
}

KStatus KFnDependencyNode::addAttribute(const KObject& attribute) {
    if (KFailureInjection::shouldFail("KFnDependencyNode::addAttribute")) {
        return KFailureInjection::failure("KFnDependencyNode::addAttribute");
    }
    Node* node = kova::detail::nodeOf(object_);
    return node ? node->addDynamicAttribute(kova::detail::sharedAttributeOf(attribute)) : noNode();
}

KStatus KFnDependencyNode::removeAttribute(const KObject& attribute) {
    if (KFailureInjection::shouldFail("KFnDependencyNode::removeAttribute")) {
        return KFailureInjection::failure("KFnDependencyNode::removeAttribute");
    }
    Node* node = kova::detail::nodeOf(object_);
    kova::detail::Attribute* a = kova::detail::attributeOf(attribute);
    if (node == nullptr || a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no node attached, or not an attribute");
    }
    if (a->owner == node) {
        kova::detail::disconnectAttribute(*node, *a);
    }
    return node->removeDynamicAttribute(*a);
}

KPlug KFnDependencyNode::findPlug(const KString& attributeName, bool wantNetworkedPlug,
                                  KStatus* status) const {
    if (KFailureInjection::shouldFail("KFnDependencyNode::findPlug")) {
        report(status, KFailureInjection::failure("KFnDependencyNode::findPlug"));
        return KPlug();
    }
    KStatus result;
    const KObject a = attribute(attributeName, &result);
    if (!result) {
        report(status, result);
        return KPlug();
    }
    return findPlug(a, wantNetworkedPlug, status);
}

KPlug KFnDependencyNode::findPlug(const KObject& attribute, bool, KStatus* status) const {
    KPlug plug(object_, attribute);
    report(status, plug.isNull() ? KStatus(KStatus::kInvalidParameter,
                                           "not an attribute of the node, or one inside an array")
                                 : KStatus());
    return plug;
}

KStatus KFnDependencyNode::getConnections(KPlugArray& plugs) const {
    plugs.clear();
    if (KFailureInjection::shouldFail("KFnDependencyNode::getConnections")) {
        return KFailureInjection::failure("KFnDependencyNode::getConnections");
    }
    Node* node = kova::detail::nodeOf(object_);
    if (node == nullptr) {
        return noNode();
    }
    const auto add = [&](const kova::detail::PlugPath& path) {
        const KPlug plug(node->shared(), path);
        for (const KPlug& known : plugs) {
            if (known == plug) {
                return;
            }
        }
        plugs.append(plug);
    };
    for (const auto& c : node->incoming) {
        add(c->destinationPath);
    }
    for (const auto& c : node->outgoing) {
        add(c->sourcePath);
    }
    return KStatus();
}

KStatus KFnDependencyNode::getAffectedAttributes(const KObject& attribute,
                                                 KObjectArray& affected) const {
    const Node* node = kova::detail::nodeOf(object_);
    const kova::detail::Attribute* a = kova::detail::attributeOf(attribute);
    if (node == nullptr || a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no node attached, or not an attribute");
    }
    affected.clear();
    if (a->owner != node->type.get()) {
        return KStatus();
    }
    for (int index : node->type->affects[static_cast<std::size_t>(a->index)]) {
        affected.append(kova::detail::objectOf(node->type->attributes.at(index)));
    }
    return KStatus();
}
