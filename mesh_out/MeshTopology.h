#pragma once

#include "mesh_out/MeshObjectValidation.h"

#include <cstddef>
#include <cstdint>
#include <kova/KFloatPointArray.h>
#include <kova/KIntArray.h>
#include <oneapi/tbb/task_group.h>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <zelvane/Object.h>

namespace ZelvanePlugin {

// The topology of a graph mesh object as the writers use it. Counts come from the component
// counts, not from the array sizes. Once readTopology has succeeded, the offsets hold at least
// faceCount + 1 entries (or none when there are no faces and no face-vertices) and the
// face-vertices at least faceVertexCount.
struct GraphMeshTopology {
    std::size_t pointCount = 0;
    std::size_t faceCount = 0;
    std::size_t faceVertexCount = 0;
    Orsel::Ptr<Orsel::Array<std::uint32_t>> faceOffsets;
    Orsel::Ptr<Orsel::Array<std::uint32_t>> faceVertices;
};

// The arrays KFnMesh::create takes.
struct HostMeshArrays {
    KFloatPointArray points;
    KIntArray polygonCounts;
    KIntArray polygonConnects;
};

// Reads the counts, positions, face offsets and face-vertices of `object` into `topology`
// and starts one task per host array on `group`, which fills it in parallel and checks what
// it reads on the way: offsets that decrease, faces of fewer than three vertices, point
// indices out of range. Faults found before any task could start (counts beyond what a host
// mesh holds, arrays missing, of another type or too short, offsets not starting at 0 or not
// ending at the face-vertex count) are recorded at once and no task reads that array. The
// host arrays must outlive the group's tasks.
void readTopology(const Zelvane::Object& object, GraphMeshTopology& topology, HostMeshArrays& host,
                  oneapi::tbb::task_group& group, MeshObjectValidation& validation);

} // namespace ZelvanePlugin
