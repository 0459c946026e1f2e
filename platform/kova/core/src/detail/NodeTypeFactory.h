#pragma once

#include "detail/NodeType.h"

#include <memory>
#include <string>

namespace kova::detail {

// A new node type with the attributes the host gives every node of its kind: "message" for
// all; for DAG kinds "parentMatrix", "worldMatrix" and "worldInverseMatrix" (arrays, one
// element per instance, computed); for transforms also "translate", "rotate" (degrees) and
// "scale" (3 doubles) and the computed local "matrix".
std::shared_ptr<NodeType> newNodeType(const std::string& name, const KTypeId& id,
                                      KPxNode::Type kind, KFn::Type apiType);

// The kind of node objects of a plug-in type of `kind`.
KFn::Type pluginApiType(KPxNode::Type kind);

} // namespace kova::detail
