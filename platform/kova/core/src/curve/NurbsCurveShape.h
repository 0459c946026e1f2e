#pragma once

#include <kova/KObject.h>
#include <memory>

namespace kova::detail {
class NodeType;
}

// The NURBS curve shape node type "nurbsCurve" (KFn::kNurbsCurve):
// - "create" (NURBS curve data, writable): the curve;
// - "local" (output): the input data itself, in object space;
// - "worldSpace" (array output, world space, element 0): a copy of the input data that carries
//   the shape's world matrix, so KSpace::kWorld reads of it are in world space. It follows
//   both the input and the shape's transforms.
namespace kova::curve {

std::shared_ptr<detail::NodeType> makeNurbsCurveType();

KObject createAttribute();
KObject worldSpaceAttribute();

} // namespace kova::curve
