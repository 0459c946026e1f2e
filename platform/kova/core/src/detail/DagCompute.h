#pragma once

#include <kova/KStatus.h>

namespace kova::detail {

class Node;
class Attribute;

// True for the host's DAG attributes of the node's type (matrices computed from the DAG).
bool isDagAttribute(const Node& node, const Attribute& attribute);

// Computes a DAG attribute (lock held by the caller): "matrix" from translate, rotate
// (degrees) and scale; "parentMatrix[i]" as the world matrix of the i-th parent;
// "worldMatrix[i]" as matrix * parentMatrix[i] (a shape has no matrix of its own);
// "worldInverseMatrix[i]" as its inverse.
KStatus computeDagAttribute(Node& node, const Attribute& attribute);

} // namespace kova::detail
