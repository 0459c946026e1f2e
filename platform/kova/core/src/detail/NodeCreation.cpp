#include "detail/NodeCreation.h"

#include "detail/Dag.h"
#include "detail/Node.h"
#include "detail/Scene.h"
#include "detail/TypeRegistry.h"

namespace kova::detail {

std::shared_ptr<NodeType> findNodeType(std::string_view typeName, KStatus& status) {
    auto type = TypeRegistry::instance().findNode(typeName);
    status = type ? KStatus()
                  : KStatus(KStatus::kInvalidParameter,
                            KString("unknown node type '" + std::string(typeName) + "'"));
    return type;
}

std::shared_ptr<Node> createNode(std::string_view typeName, std::string_view name, Node* parent,
                                 KStatus& status) {
    auto type = findNodeType(typeName, status);
    if (!type) {
        return nullptr;
    }
    if (parent != nullptr && (!type->isDag() || !parent->type->isTransform())) {
        status = KStatus(KStatus::kInvalidParameter,
                         "only DAG nodes can be created under a parent, which must be a transform");
        return nullptr;
    }
    auto node = Scene::instantiate(type);
    status = Scene::current().insert(node, name);
    if (!status) {
        return nullptr;
    }
    if (parent != nullptr) {
        status = reparent(*node, parent);
        if (!status) {
            Scene::current().remove(*node);
            return nullptr;
        }
    }
    return node;
}

} // namespace kova::detail
