#pragma once

#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <kova/detail/MeshData.h>

// Resolution of what a mesh function set is attached to.
namespace kova::mesh {

// The mesh data of a mesh data object, or the output mesh of a mesh shape node (evaluated);
// null with a failed status otherwise.
detail::MeshData* resolveMesh(const KObject& object, KStatus& status);

// Whether `object` is something a mesh function set can work on.
bool isMeshObject(const KObject& object);

} // namespace kova::mesh
