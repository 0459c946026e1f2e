#pragma once

#include "mesh_out/MeshObjectValidation.h"
#include "mesh_out/MeshTopology.h"

#include <kova/KFnMesh.h>
#include <kova/KIntArray.h>
#include <kova/KVectorArray.h>
#include <oneapi/tbb/task_group.h>
#include <zelvane/Object.h>

namespace ZelvanePlugin {

// The normals to write: face-vertex normals (one per face-vertex, with the face and vertex of
// each) or point normals (one per point, vertex list 0 .. n-1), or none.
struct NormalsRecord {
    enum class Kind { none, faceVertex, point };
    Kind kind = Kind::none;
    KVectorArray normals;
    KIntArray faces;
    KIntArray vertices;
};

// Reads the face-vertex normals (`sFaceVertexNormal` with its index property) and the point
// normals (`sPointNormal`) of `object`; face-vertex normals take precedence, so point normals
// are only filled when there are no face-vertex normals. The fill runs as a task on `group`
// and checks the normal indices against the normal values. Needs a topology that
// readTopology accepted; the record must outlive the group's tasks.
void readNormals(const Zelvane::Object& object, const GraphMeshTopology& topology,
                 NormalsRecord& record, oneapi::tbb::task_group& group,
                 MeshObjectValidation& validation);

// Writes the record in object space, timed as "write face normals" or "write vertex
// normals". A write the host refuses leaves the mesh with its computed normals.
void writeNormals(KFnMesh& mesh, const NormalsRecord& record);

} // namespace ZelvanePlugin
