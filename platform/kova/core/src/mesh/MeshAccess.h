#pragma once

#include "detail/ParallelLoops.h"

#include <cstddef>
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

// Fills the caller's host array `out` with `count` values in one parallel copy (a temporary
// array would double the copying and the fresh memory touched on every read of a big mesh).
template <class HostArray, class T>
KStatus copyOut(const T* values, std::size_t count, HostArray& out) {
    if (KStatus status = out.setLength(static_cast<unsigned int>(count)); !status) {
        return status;
    }
    detail::copyValues(values, count, out.data());
    return KStatus();
}

} // namespace kova::mesh
