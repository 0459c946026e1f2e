#pragma once

#include <kova/KObject.h>

// The mesh shape node type "mesh": "inMesh" (mesh data, writable), "outMesh" (the input
// mesh, or an empty mesh when there is none) and "worldMesh" (array, element 0: the same
// mesh, read in world space so that its handle carries the shape's world matrix).
namespace kova::mesh {

KObject inMeshAttribute();
KObject outMeshAttribute();

} // namespace kova::mesh
