#pragma once

#include <kova/KStatus.h>
#include <memory>
#include <string_view>

namespace kova::detail {

class Node;
class NodeType;

// The registered node type `typeName`; null with kInvalidParameter when there is none.
std::shared_ptr<NodeType> findNodeType(std::string_view typeName, KStatus& status);

// Creates a node of `typeName` in the scene, named from `name` (empty: the type's default),
// under `parent` when it is not null (DAG types only). Null on failure, with the reason in
// `status`.
std::shared_ptr<Node> createNode(std::string_view typeName, std::string_view name, Node* parent,
                                 KStatus& status);

} // namespace kova::detail
