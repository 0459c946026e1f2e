#pragma once

#include <kova/KStatus.h>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kova::detail {

class Node;
class NodeType;

// The nodes of the process's scene and their names.
//
// Names are unique in the whole scene (DAG nodes included, so a node's partial path name is
// its name). A name made of letters, digits and underscores, not starting with a digit, is
// valid. Asking for a name that another node has gives the first free name made of the
// requested name without its trailing digits followed by 1, 2, ... ("cube" -> "cube1",
// "cube1" -> "cube2" when "cube1" exists). Nodes created without a name are called after
// their type followed by a number ("transform1").
class Scene {
public:
    // The scene, created with its default nodes on first use.
    static Scene& current();
    // Deletes every node and recreates the default ones: "time1" (type "time") and
    // "initialShadingGroup" (type "shadingEngine").
    static void reset();

    // A node of `type` that is not in the scene yet (its values are the defaults).
    static std::shared_ptr<Node> instantiate(const std::shared_ptr<NodeType>& type);
    // Runs the type's creator, gives the node a unique name from `requestedName` (empty for
    // the type's default) and adds it, then runs postConstructor. A creator that fails or
    // throws, or a postConstructor that throws, leaves the node out of the scene.
    KStatus insert(const std::shared_ptr<Node>& node, std::string_view requestedName);
    // Removes the node with its connections and set memberships, and, for a DAG node, the
    // DAG children it is the only parent of.
    KStatus remove(Node& node);
    KStatus rename(Node& node, std::string_view name);

    Node* find(std::string_view name) const;
    const std::vector<std::shared_ptr<Node>>& nodes() const { return nodes_; }
    // Nodes whose type is `type`.
    int countOfType(const NodeType& type) const;

    static bool isValidName(std::string_view name);
    // The name `wanted` gets if given to `self` (null for a new node).
    std::string uniqueName(std::string_view wanted, const Node* self) const;

private:
    void createDefaults();
    std::vector<std::shared_ptr<Node>> nodes_;
    std::unordered_map<std::string, Node*> byName_;
};

} // namespace kova::detail
