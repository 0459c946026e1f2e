#pragma once

#include <kova/KMatrix.h>
#include <kova/KStatus.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kova::detail {

class Node;

// A path through the DAG: the nodes from a root down to the last one.
using DagNodes = std::vector<std::shared_ptr<Node>>;

// Makes `child` a child of `parent` only (null: a root). Fails when either is not a DAG
// node, the parent is not a transform, or the parent lies below the child. Dirties the
// child's world matrices.
KStatus reparent(Node& child, Node* parent);
// Adds `parent` as another parent of `child` (an instance).
KStatus addParent(Node& child, Node& parent);

// The path that follows each node's first parent up to a root.
DagNodes firstPath(Node& node);
// Every path to `node`, one per instance.
std::vector<DagNodes> allPaths(Node& node);
// "|root|...|node"; empty for an empty path.
std::string fullPathName(const DagNodes& path);
// The node named by a full path ("|a|b") or a name ("b"), and the path it was reached by.
// False when nothing matches or a full path does not follow the DAG.
bool findPath(std::string_view name, DagNodes& path);

// The node named by a name or a full DAG path, or null.
Node* findNode(std::string_view nameOrPath);

// Product of the local matrices along the path, from the last node up to the root.
KMatrix inclusiveMatrix(const DagNodes& path);

} // namespace kova::detail
