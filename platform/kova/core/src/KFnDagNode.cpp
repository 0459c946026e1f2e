#include "detail/Dag.h"
#include "detail/Evaluator.h"
#include "detail/Node.h"
#include "detail/NodeCreation.h"
#include "detail/Report.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnDagNode.h>

using kova::detail::Node;

using kova::detail::report;

namespace {

KStatus noNode() {
    return KStatus(KStatus::kInvalidParameter, "no DAG node attached");
}

} // namespace

KFnDagNode::KFnDagNode(const KObject& node, KStatus* status) {
    attach(node, status);
}

KFnDagNode::KFnDagNode(const KDagPath& path, KStatus* status) {
    if (attach(path.node(), status)) {
        path_ = path;
    }
}

KObject KFnDagNode::create(const KString& typeName, const KString& name, const KObject& parent,
                           KStatus* status) {
    if (KFailureInjection::shouldFail("KFnDagNode::create")) {
        report(status, KFailureInjection::failure("KFnDagNode::create"));
        return KObject();
    }
    Node* parentNode = kova::detail::nodeOf(parent);
    if (!parent.isNull() && parentNode == nullptr) {
        report(status, KStatus(KStatus::kInvalidParameter, "the parent is not a node"));
        return KObject();
    }
    KStatus result;
    std::shared_ptr<Node> node;
    if (auto type = kova::detail::findNodeType(typeName.view(), result); type && !type->isDag()) {
        result = KStatus(KStatus::kInvalidParameter, "not a DAG node type");
    } else if (type) {
        node = kova::detail::createNode(typeName.view(), name.view(), parentNode, result);
    }
    report(status, result);
    object_ = node ? kova::detail::objectOf(*node) : KObject();
    path_ = KDagPath();
    return object_;
}

unsigned int KFnDagNode::parentCount(KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    report(status, node ? KStatus() : noNode());
    return node ? static_cast<unsigned int>(node->parents.size()) : 0;
}

KObject KFnDagNode::parent(unsigned int index, KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    if (node == nullptr || index >= node->parents.size()) {
        report(status, KStatus(KStatus::kInvalidParameter, "no such parent"));
        return KObject();
    }
    report(status, KStatus());
    return kova::detail::objectOf(*node->parents[index]);
}

unsigned int KFnDagNode::childCount(KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    report(status, node ? KStatus() : noNode());
    return node ? static_cast<unsigned int>(node->children.size()) : 0;
}

KObject KFnDagNode::child(unsigned int index, KStatus* status) const {
    const Node* node = kova::detail::nodeOf(object_);
    if (node == nullptr || index >= node->children.size()) {
        report(status, KStatus(KStatus::kInvalidParameter, "no such child"));
        return KObject();
    }
    report(status, KStatus());
    return kova::detail::objectOf(*node->children[index]);
}

bool KFnDagNode::isInstanced() const {
    Node* node = kova::detail::nodeOf(object_);
    return node != nullptr && kova::detail::allPaths(*node).size() > 1;
}

KStatus KFnDagNode::getPath(KDagPath& path) const {
    if (KFailureInjection::shouldFail("KFnDagNode::getPath")) {
        return KFailureInjection::failure("KFnDagNode::getPath");
    }
    if (path_.isValid()) {
        path = path_;
        return KStatus();
    }
    return KDagPath::getAPathTo(object_, path);
}

KDagPath KFnDagNode::dagPath(KStatus* status) const {
    KDagPath path;
    report(status, getPath(path));
    return path;
}

KString KFnDagNode::fullPathName(KStatus* status) const {
    return dagPath(status).fullPathName();
}

KString KFnDagNode::partialPathName(KStatus* status) const {
    return dagPath(status).partialPathName();
}

KMatrix KFnDagNode::transformationMatrix(KStatus* status) const {
    Node* node = kova::detail::nodeOf(object_);
    if (node == nullptr || !node->type->isDag()) {
        report(status, noNode());
        return KMatrix();
    }
    if (!node->type->isTransform()) {
        report(status, KStatus());
        return KMatrix();
    }
    kova::detail::Value local;
    report(status, kova::detail::readValue(*node, {{node->type->dag.matrix, -1}}, local));
    return local.matrix;
}
