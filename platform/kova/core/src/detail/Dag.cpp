#include "detail/Dag.h"

#include "detail/Attribute.h"
#include "detail/DirtyPropagation.h"
#include "detail/Evaluator.h"
#include "detail/Node.h"
#include "detail/Scene.h"

#include <algorithm>

namespace kova::detail {

namespace {

bool isBelow(const Node& node, const Node& ancestor) {
    for (const Node* parent : node.parents) {
        if (parent == &ancestor || isBelow(*parent, ancestor)) {
            return true;
        }
    }
    return false;
}

KStatus checkParent(Node& child, Node& parent) {
    if (!child.type->isDag() || !parent.type->isTransform()) {
        return KStatus(KStatus::kInvalidParameter,
                       "only DAG nodes can be parented, and only under transforms");
    }
    if (&child == &parent || isBelow(parent, child)) {
        return KStatus(KStatus::kInvalidParameter, "a node cannot be parented below itself");
    }
    return KStatus();
}

void dirtyWorld(Node& node) {
    propagateDirty(node, *node.type->dag.parentMatrix, true);
}

void collectPaths(Node& node, DagNodes& below, std::vector<DagNodes>& out) {
    below.insert(below.begin(), node.shared());
    if (node.parents.empty()) {
        out.push_back(below);
    }
    for (Node* parent : node.parents) {
        collectPaths(*parent, below, out);
    }
    below.erase(below.begin());
}

} // namespace

KStatus reparent(Node& child, Node* parent) {
    if (!child.type->isDag()) {
        return KStatus(KStatus::kInvalidParameter, "not a DAG node");
    }
    if (parent != nullptr) {
        if (KStatus status = checkParent(child, *parent); !status) {
            return status;
        }
    }
    for (Node* old : child.parents) {
        std::erase(old->children, &child);
    }
    child.parents.clear();
    if (parent != nullptr) {
        child.parents.push_back(parent);
        parent->children.push_back(&child);
    }
    dirtyWorld(child);
    return KStatus();
}

KStatus addParent(Node& child, Node& parent) {
    if (KStatus status = checkParent(child, parent); !status) {
        return status;
    }
    if (std::find(child.parents.begin(), child.parents.end(), &parent) != child.parents.end()) {
        return KStatus(KStatus::kInvalidParameter, "the node is already a child of that parent");
    }
    child.parents.push_back(&parent);
    parent.children.push_back(&child);
    dirtyWorld(child);
    return KStatus();
}

DagNodes firstPath(Node& node) {
    DagNodes path;
    for (Node* n = &node; n != nullptr; n = n->parents.empty() ? nullptr : n->parents.front()) {
        path.insert(path.begin(), n->shared());
    }
    return path;
}

std::vector<DagNodes> allPaths(Node& node) {
    std::vector<DagNodes> out;
    DagNodes below;
    collectPaths(node, below, out);
    return out;
}

std::string fullPathName(const DagNodes& path) {
    std::string name;
    for (const auto& node : path) {
        name += "|" + node->name;
    }
    return name;
}

bool findPath(std::string_view name, DagNodes& path) {
    const Scene& scene = Scene::current();
    if (!name.starts_with('|')) {
        Node* node = scene.find(name);
        if (node == nullptr || !node->type->isDag()) {
            return false;
        }
        path = firstPath(*node);
        return true;
    }
    DagNodes walked;
    std::size_t start = 1;
    while (start <= name.size()) {
        const std::size_t end = std::min(name.find('|', start), name.size());
        Node* node = scene.find(name.substr(start, end - start));
        if (node == nullptr || !node->type->isDag()) {
            return false;
        }
        const bool linked = walked.empty() ? node->parents.empty()
                                           : std::find(node->parents.begin(), node->parents.end(),
                                                       walked.back().get()) != node->parents.end();
        if (!linked) {
            return false;
        }
        walked.push_back(node->shared());
        start = end + 1;
    }
    if (walked.empty()) {
        return false;
    }
    path = std::move(walked);
    return true;
}

Node* findNode(std::string_view nameOrPath) {
    if (!nameOrPath.starts_with('|')) {
        return Scene::current().find(nameOrPath);
    }
    DagNodes path;
    return findPath(nameOrPath, path) ? path.back().get() : nullptr;
}

KMatrix inclusiveMatrix(const DagNodes& path) {
    KMatrix result;
    for (const auto& node : path) {
        if (!node->type->isTransform()) {
            continue;
        }
        Value local;
        if (readValue(*node, {{node->type->dag.matrix, -1}}, local)) {
            result = local.matrix * result;
        }
    }
    return result;
}

} // namespace kova::detail
