#pragma once

#include "detail/AttributeList.h"

#include <atomic>
#include <kova/KFn.h>
#include <kova/KPxNode.h>
#include <kova/KTypeId.h>
#include <kova/detail/Entity.h>
#include <memory>
#include <string>
#include <vector>

namespace kova::detail {

class Attribute;

// The attributes the host gives every DAG node (and, for transforms, the local transform).
struct DagAttributes {
    std::shared_ptr<Attribute> parentMatrix;
    std::shared_ptr<Attribute> worldMatrix;
    std::shared_ptr<Attribute> worldInverseMatrix;
    // Transforms only.
    std::shared_ptr<Attribute> translate;
    std::shared_ptr<Attribute> rotate;
    std::shared_ptr<Attribute> scale;
    std::shared_ptr<Attribute> matrix;
};

// A registered node type: how to make its nodes and the static attributes they share.
class NodeType {
public:
    std::string name;
    KTypeId id;
    KCreatorFunction creator = nullptr;
    KInitializeFunction initialize = nullptr;
    KPxNode::Type kind = KPxNode::kDependNode;
    KFn::Type apiType = KFn::kPluginDependNode;
    std::string classification;
    // The plug-in that registered the type; empty for the host's own types.
    std::weak_ptr<Entity> plugin;
    bool builtIn = false;

    AttributeList attributes;
    // By attribute index: the attributes a change dirties, and whether the node computes it.
    std::vector<std::vector<int>> affects;
    std::vector<char> computed;
    // Set by KPxNode::computeDynamicOutputs: nodes compute their dynamic read-only attributes,
    // which every writable attribute affects.
    bool dynamicOutputsComputed = false;
    std::shared_ptr<Attribute> message;
    DagAttributes dag; // empty pointers for dependency nodes

    // Nodes of this type that exist (in the scene or still being created).
    std::atomic<int> liveNodes{0};

    bool isDag() const { return dag.worldMatrix != nullptr; }
    bool isTransform() const { return dag.matrix != nullptr; }
    bool isSet() const { return kind == KPxNode::kObjectSet; }
    bool isShape() const { return isDag() && !isTransform(); }

    // Adds a static attribute with its children (a no-op for one already added here).
    KStatus addAttribute(const std::shared_ptr<Attribute>& attribute);
    // Records that `when` dirties `affected`; both must belong to this type. The affected
    // attribute and everything below it become computed.
    KStatus addAffects(const Attribute& when, Attribute& affected);
    bool isComputed(const Attribute& attribute) const;
};

} // namespace kova::detail
