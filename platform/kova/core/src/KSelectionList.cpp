#include "detail/Dag.h"
#include "detail/InjectedFailure.h"
#include "detail/Node.h"
#include "detail/PlugParser.h"
#include "detail/Report.h"
#include "detail/Scene.h"
#include "detail/Wildcard.h"
#include "mesh/ComponentNames.h"

#include <kova/KFailureInjection.h>
#include <kova/KSelectionList.h>

using kova::detail::Node;
using kova::detail::report;

namespace {

KStatus outOfRange() {
    return KStatus(KStatus::kInvalidParameter, "index out of range");
}

} // namespace

KStatus KSelectionList::add(const KString& pattern) {
    if (KFailureInjection::shouldFail("KSelectionList::add")) {
        return KFailureInjection::failure("KSelectionList::add");
    }
    const std::string_view text = pattern.view();
    KDagPath componentPath;
    KObject component;
    if (KStatus status; kova::mesh::parseComponentName(text, componentPath, component, status)) {
        return status ? add(componentPath, component) : status;
    }
    if (text.find('.') != std::string_view::npos) {
        KStatus status;
        const KPlug plug = kova::detail::parsePlug(text, status);
        return status ? add(plug) : status;
    }
    if (text.starts_with('|')) {
        kova::detail::DagNodes path;
        if (!kova::detail::findPath(text, path)) {
            return KStatus(KStatus::kInvalidParameter,
                           KString("no DAG path '" + std::string(text) + "'"));
        }
        return add(KDagPath(std::move(path)));
    }
    bool found = false;
    for (const auto& node : kova::detail::Scene::current().nodes()) {
        if (kova::detail::wildcardMatch(text, node->name)) {
            add(kova::detail::objectOf(*node));
            found = true;
        }
    }
    return found ? KStatus()
                 : KStatus(KStatus::kInvalidParameter,
                           KString("no object matches '" + std::string(text) + "'"));
}

KStatus KSelectionList::add(const KObject& node) {
    Node* n = kova::detail::nodeOf(node);
    if (n == nullptr || !n->inScene) {
        return KStatus(KStatus::kInvalidParameter, "not a node in the scene");
    }
    Item item;
    item.node = node;
    if (n->type->isDag()) {
        item.path = KDagPath(kova::detail::firstPath(*n));
    }
    items_.push_back(std::move(item));
    return KStatus();
}

KStatus KSelectionList::add(const KDagPath& path, const KObject& component) {
    if (KStatus status; kova::detail::injectedFailure("KSelectionList::add", &status)) {
        return status;
    }
    if (!path.isValid()) {
        return KStatus(KStatus::kInvalidParameter, "invalid DAG path");
    }
    if (!component.isNull() && !component.hasFn(KFn::kComponent)) {
        return KStatus(KStatus::kInvalidParameter, "not a component");
    }
    items_.push_back({path.node(), path, component, KPlug()});
    return KStatus();
}

KStatus KSelectionList::add(const KPlug& plug) {
    if (plug.isNull()) {
        return KStatus(KStatus::kInvalidParameter, "null plug");
    }
    items_.push_back({plug.node(), KDagPath(), KObject(), plug});
    return KStatus();
}

unsigned int KSelectionList::length(KStatus* status) const {
    report(status, KStatus());
    return static_cast<unsigned int>(items_.size());
}

KStatus KSelectionList::remove(unsigned int index) {
    if (index >= items_.size()) {
        return outOfRange();
    }
    items_.erase(items_.begin() + index);
    return KStatus();
}

KStatus KSelectionList::getDependNode(unsigned int index, KObject& node) const {
    if (KStatus status; kova::detail::injectedFailure("KSelectionList::getDependNode", &status)) {
        return status;
    }
    if (index >= items_.size()) {
        return outOfRange();
    }
    node = items_[index].node;
    return KStatus();
}

KStatus KSelectionList::getDagPath(unsigned int index, KDagPath& path, KObject& component) const {
    if (KFailureInjection::shouldFail("KSelectionList::getDagPath")) {
        return KFailureInjection::failure("KSelectionList::getDagPath");
    }
    if (index >= items_.size()) {
        return outOfRange();
    }
    if (items_[index].path.length() == 0) {
        return KStatus(KStatus::kInvalidParameter, "the item is not a DAG path");
    }
    path = items_[index].path;
    component = items_[index].component;
    return KStatus();
}

KStatus KSelectionList::getDagPath(unsigned int index, KDagPath& path) const {
    KObject component;
    return getDagPath(index, path, component);
}

KStatus KSelectionList::getPlug(unsigned int index, KPlug& plug) const {
    if (index >= items_.size()) {
        return outOfRange();
    }
    if (items_[index].plug.isNull()) {
        return KStatus(KStatus::kInvalidParameter, "the item is not a plug");
    }
    plug = items_[index].plug;
    return KStatus();
}

KStatus KSelectionList::getSelectionStrings(KStringArray& strings) const {
    strings.clear();
    for (const Item& item : items_) {
        KString text;
        if (!item.plug.isNull()) {
            text = item.plug.name();
        } else if (item.path.length() > 0) {
            text = item.path.fullPathName();
        } else if (const Node* node = kova::detail::nodeOf(item.node)) {
            text = KString(node->name);
        }
        if (KStatus status = strings.append(text); !status) {
            return status;
        }
    }
    return KStatus();
}
