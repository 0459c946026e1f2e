#pragma once

#include "detail/AttributeList.h"
#include "detail/Connection.h"
#include "detail/NodeType.h"
#include "detail/SetMembers.h"
#include "detail/Value.h"

#include <deque>
#include <kova/KObject.h>
#include <kova/KPxNode.h>
#include <kova/detail/Entity.h>
#include <kova/detail/PlugStep.h>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace kova::detail {

// A dependency node: an instance of a node type with its values, dirty flags, connections,
// DAG relatives and (for sets) members.
//
// Threading: the graph's structure (attributes, connections, DAG relations, names) is edited
// by one thread at a time and never while an evaluation runs. Values and dirty flags are
// guarded by `mutex`, which evaluation holds while it computes the node (see Evaluator.h).
class Node : public Entity {
public:
    explicit Node(std::shared_ptr<NodeType> type);
    ~Node() override;
    bool isValid() const override { return inScene; }

    const std::shared_ptr<NodeType> type;
    std::string name;
    bool inScene = false;
    std::unique_ptr<KPxNode> user;
    AttributeList dynamicAttributes;

    // Attributes by long or short name, static then dynamic.
    Attribute* findAttribute(std::string_view name) const;
    const std::shared_ptr<Attribute>& attributeAt(int index) const;
    std::vector<std::shared_ptr<Attribute>> liveAttributes() const;
    KStatus addDynamicAttribute(const std::shared_ptr<Attribute>& attribute);
    KStatus removeDynamicAttribute(Attribute& attribute);
    // True for a static attribute of the type or a dynamic attribute of this node.
    bool owns(const Attribute& attribute) const;
    // True for a dynamic output this node computes (see NodeType::dynamicOutputsComputed),
    // or a child of one.
    bool computesDynamic(const Attribute& attribute) const;

    std::recursive_mutex mutex;
    // Top-level values and dirty flags by attribute index (children live inside their
    // compound's value). Deques keep addresses stable when dynamic attributes are added.
    std::deque<Value> values;
    std::deque<char> dirty;
    bool isDirty(const Attribute& attribute) const;
    void setDirty(const Attribute& attribute, bool state);
    // The value of `path`; with `create`, missing array elements are made from defaults,
    // otherwise a missing element gives null.
    Value* slot(const PlugPath& path, bool create);

    std::vector<std::shared_ptr<Connection>> incoming;
    std::vector<std::shared_ptr<Connection>> outgoing;

    std::vector<Node*> parents;
    std::vector<Node*> children;

    std::unique_ptr<SetMembers> set;

    // Releases the user node and values (when the node leaves the scene), so that nothing
    // of a plug-in's code is still referenced by a stale handle.
    void release();

    std::shared_ptr<Node> shared() { return std::static_pointer_cast<Node>(shared_from_this()); }

private:
    bool counted_ = true;
};

// The node behind `object`, or null.
inline Node* nodeOf(const KObject& object) {
    return entityAs<Node>(object.entity());
}
inline std::shared_ptr<Node> sharedNodeOf(const KObject& object) {
    return sharedEntityAs<Node>(object.entity());
}
inline KObject objectOf(Node& node) {
    return KObject(node.shared_from_this());
}

// Gives the host access to the private link of a KPxNode to its node.
struct NodeAccess {
    static void attach(KPxNode& user, const std::shared_ptr<Node>& node) {
        user.node_ = std::static_pointer_cast<Entity>(node);
    }
};

} // namespace kova::detail
