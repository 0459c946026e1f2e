#pragma once

#include <kova/detail/ComponentData.h>
#include <memory>
#include <vector>

namespace kova::detail {

class Node;

// One member of a set: a DAG path (root first) and, optionally, components of its shape.
struct SetMember {
    std::vector<std::shared_ptr<Node>> path;
    std::shared_ptr<ComponentData> component;
};

// The membership of a set node. Sets are attribute-free: members are kept here, not
// through connections.
struct SetMembers {
    int restriction = 0; // a KFnSet::Restriction
    std::vector<SetMember> members;
};

} // namespace kova::detail
