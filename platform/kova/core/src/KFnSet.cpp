#include "detail/Node.h"
#include "detail/NodeCreation.h"
#include "detail/Report.h"
#include "detail/SetMembership.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnSet.h>
#include <kova/detail/ComponentData.h>

using kova::detail::ComponentData;
using kova::detail::Node;
using kova::detail::report;

namespace {

Node* setOf(const KObject& object) {
    Node* node = kova::detail::nodeOf(object);
    return node && node->set ? node : nullptr;
}

KStatus noSet() {
    return KStatus(KStatus::kInvalidParameter, "no set attached");
}

const ComponentData* componentOf(const KObject& component) {
    return kova::detail::entityAs<ComponentData>(component.entity());
}

KStatus checkComponent(const KObject& component) {
    return component.isNull() || componentOf(component)
               ? KStatus()
               : KStatus(KStatus::kInvalidParameter, "not a component");
}

} // namespace

KFnSet::KFnSet(const KObject& set, KStatus* status) {
    attach(set, status);
}

KObject KFnSet::create(const KSelectionList& members, Restriction restriction, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnSet::create")) {
        report(status, KFailureInjection::failure("KFnSet::create"));
        return KObject();
    }
    KStatus result;
    auto node = kova::detail::createNode("objectSet", "", nullptr, result);
    if (!node) {
        report(status, result);
        return KObject();
    }
    node->set->restriction = restriction;
    object_ = kova::detail::objectOf(*node);
    report(status, addMembers(members));
    return object_;
}

KFnSet::Restriction KFnSet::restriction(KStatus* status) const {
    const Node* node = setOf(object_);
    report(status, node ? KStatus() : noSet());
    return node ? static_cast<Restriction>(node->set->restriction) : kNone;
}

KStatus KFnSet::addMember(const KDagPath& path, const KObject& component) {
    if (KFailureInjection::shouldFail("KFnSet::addMember")) {
        return KFailureInjection::failure("KFnSet::addMember");
    }
    Node* node = setOf(object_);
    if (node == nullptr) {
        return noSet();
    }
    if (KStatus status = checkComponent(component); !status) {
        return status;
    }
    return kova::detail::addSetMember(*node, path.nodes(), componentOf(component));
}

KStatus KFnSet::addMembers(const KSelectionList& members) {
    for (unsigned int i = 0; i < members.length(); ++i) {
        KDagPath path;
        KObject component;
        if (members.getDagPath(i, path, component)) {
            if (KStatus status = addMember(path, component); !status) {
                return status;
            }
        }
    }
    return KStatus();
}

KStatus KFnSet::removeMember(const KDagPath& path, const KObject& component) {
    if (KFailureInjection::shouldFail("KFnSet::removeMember")) {
        return KFailureInjection::failure("KFnSet::removeMember");
    }
    Node* node = setOf(object_);
    if (node == nullptr) {
        return noSet();
    }
    if (KStatus status = checkComponent(component); !status) {
        return status;
    }
    return kova::detail::removeSetMember(*node, path.nodes(), componentOf(component));
}

KStatus KFnSet::clear() {
    Node* node = setOf(object_);
    if (node == nullptr) {
        return noSet();
    }
    node->set->members.clear();
    return KStatus();
}

KStatus KFnSet::getMembers(KSelectionList& members, bool) const {
    if (KFailureInjection::shouldFail("KFnSet::getMembers")) {
        return KFailureInjection::failure("KFnSet::getMembers");
    }
    const Node* node = setOf(object_);
    if (node == nullptr) {
        return noSet();
    }
    for (const auto& member : node->set->members) {
        const KObject component = member.component ? KObject(member.component) : KObject::kNullObj;
        if (KStatus status = members.add(KDagPath(member.path), component); !status) {
            return status;
        }
    }
    return KStatus();
}

bool KFnSet::isMember(const KDagPath& path, const KObject& component, KStatus* status) const {
    const Node* node = setOf(object_);
    report(status, node ? checkComponent(component) : noSet());
    return node != nullptr &&
           kova::detail::isSetMember(*node, path.nodes(), componentOf(component));
}
