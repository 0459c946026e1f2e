#pragma once

#include "detail/Dag.h"
#include "detail/SetMembers.h"

#include <kova/KStatus.h>

namespace kova::detail {

class Node;

// Adds a member to the set node `set`, merging with what the path already has there; a
// renderable set first takes the member away from every other renderable set. The
// component (may be null) is copied.
KStatus addSetMember(Node& set, const DagNodes& path, const ComponentData* component);
// Removes a whole path, or some components of it, from `set`.
KStatus removeSetMember(Node& set, const DagNodes& path, const ComponentData* component);
bool isSetMember(const Node& set, const DagNodes& path, const ComponentData* component);

} // namespace kova::detail
