#include "detail/Dag.h"
#include "detail/Node.h"
#include "detail/Report.h"

#include <algorithm>
#include <kova/KDagPath.h>
#include <kova/KFailureInjection.h>

using kova::detail::Node;

using kova::detail::report;

namespace {

KStatus invalidPath() {
    return KStatus(KStatus::kInvalidParameter, "invalid DAG path");
}

} // namespace

KDagPath::KDagPath(std::vector<std::shared_ptr<Node>> nodes) : nodes_(std::move(nodes)) {}

KStatus KDagPath::getAPathTo(const KObject& node, KDagPath& path) {
    if (KFailureInjection::shouldFail("KDagPath::getAPathTo")) {
        return KFailureInjection::failure("KDagPath::getAPathTo");
    }
    Node* n = kova::detail::nodeOf(node);
    if (n == nullptr || !n->type->isDag() || !n->inScene) {
        path = KDagPath();
        return KStatus(KStatus::kInvalidParameter, "not a DAG node in the scene");
    }
    path = KDagPath(kova::detail::firstPath(*n));
    return KStatus();
}

bool KDagPath::isValid() const {
    if (nodes_.empty()) {
        return false;
    }
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        if (!nodes_[i]->inScene) {
            return false;
        }
        const auto& parents = nodes_[i]->parents;
        const bool linked = i == 0 ? parents.empty()
                                   : std::find(parents.begin(), parents.end(),
                                               nodes_[i - 1].get()) != parents.end();
        if (!linked) {
            return false;
        }
    }
    return true;
}

unsigned int KDagPath::length() const {
    return static_cast<unsigned int>(nodes_.size());
}

KString KDagPath::fullPathName(KStatus* status) const {
    report(status, nodes_.empty() ? invalidPath() : KStatus());
    return KString(kova::detail::fullPathName(nodes_));
}

KString KDagPath::partialPathName(KStatus* status) const {
    report(status, nodes_.empty() ? invalidPath() : KStatus());
    return nodes_.empty() ? KString() : KString(nodes_.back()->name);
}

KObject KDagPath::node(KStatus* status) const {
    report(status, nodes_.empty() ? invalidPath() : KStatus());
    return nodes_.empty() ? KObject() : kova::detail::objectOf(*nodes_.back());
}

KObject KDagPath::transform(KStatus* status) const {
    for (auto it = nodes_.rbegin(); it != nodes_.rend(); ++it) {
        if ((*it)->type->isTransform()) {
            report(status, KStatus());
            return kova::detail::objectOf(**it);
        }
    }
    report(status, invalidPath());
    return KObject();
}

KStatus KDagPath::extendToShape() {
    if (KFailureInjection::shouldFail("KDagPath::extendToShape")) {
        return KFailureInjection::failure("KDagPath::extendToShape");
    }
    if (nodes_.empty()) {
        return invalidPath();
    }
    Node& last = *nodes_.back();
    if (last.type->isShape()) {
        return KStatus();
    }
    Node* shape = nullptr;
    for (Node* child : last.children) {
        if (child->type->isShape()) {
            if (shape != nullptr) {
                return KStatus(KStatus::kInvalidParameter, "the transform has several shapes");
            }
            shape = child;
        }
    }
    if (shape == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "the transform has no shape");
    }
    nodes_.push_back(shape->shared());
    return KStatus();
}

KStatus KDagPath::push(const KObject& child) {
    Node* n = kova::detail::nodeOf(child);
    if (n == nullptr || nodes_.empty() ||
        std::find(n->parents.begin(), n->parents.end(), nodes_.back().get()) == n->parents.end()) {
        return KStatus(KStatus::kInvalidParameter, "not a child of the path's last node");
    }
    nodes_.push_back(n->shared());
    return KStatus();
}

KStatus KDagPath::pop(unsigned int count) {
    if (count > nodes_.size()) {
        return KStatus(KStatus::kInvalidParameter, "the path is shorter");
    }
    nodes_.resize(nodes_.size() - count);
    return KStatus();
}

unsigned int KDagPath::childCount() const {
    return nodes_.empty() ? 0 : static_cast<unsigned int>(nodes_.back()->children.size());
}

KObject KDagPath::child(unsigned int index) const {
    if (nodes_.empty() || index >= nodes_.back()->children.size()) {
        return KObject();
    }
    return kova::detail::objectOf(*nodes_.back()->children[index]);
}

KMatrix KDagPath::inclusiveMatrix(KStatus* status) const {
    report(status, isValid() ? KStatus() : invalidPath());
    return kova::detail::inclusiveMatrix(nodes_);
}

KMatrix KDagPath::exclusiveMatrix(KStatus* status) const {
    report(status, isValid() ? KStatus() : invalidPath());
    if (nodes_.empty()) {
        return KMatrix();
    }
    return kova::detail::inclusiveMatrix({nodes_.begin(), nodes_.end() - 1});
}

KMatrix KDagPath::inclusiveMatrixInverse(KStatus* status) const {
    return inclusiveMatrix(status).inverse();
}
