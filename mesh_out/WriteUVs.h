#pragma once

#include "mesh_out/MeshObjectValidation.h"
#include "mesh_out/MeshTopology.h"

#include <cstdint>
#include <kova/KFloatArray.h>
#include <kova/KFnMesh.h>
#include <kova/KIntArray.h>
#include <kova/KString.h>
#include <oneapi/tbb/task_group.h>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <vector>
#include <zelvane/Object.h>
#include <zelvane/math/Vector.h>

namespace ZelvanePlugin {

// One UV set to write: its host name, the graph values (float2, or float3 of which x and y
// are used) with one index per face-vertex, and the host arrays filled from them. A set whose
// indices are the mesh's own face-vertex array (UVs stored per point) needs no ids of its
// own: the polygon connects are its UV ids.
struct UVSetRecord {
    KString name;
    Orsel::Ptr<Orsel::Array<Zelvane::Math::float2>> uv2;
    Orsel::Ptr<Orsel::Array<Zelvane::Math::float3>> uv3;
    Orsel::Ptr<Orsel::Array<std::uint32_t>> indices;
    bool idsAreConnects = false;
    KFloatArray u;
    KFloatArray v;
    KIntArray ids;
};

// The UV sets of `object`: every geometry property matching `sFaceVertexUV` + "*" whose data
// is float2 or float3 (others are skipped), with the indices of its index property, or
// 0 .. face-vertices - 1 when it has none. Names: the host set name; names beginning with
// "map" raise a running maximum to their number; then every name still beginning with the
// text of `sFaceVertexUV` becomes "map" + the next number. Throws std::invalid_argument
// ("invalid stoi argument") or std::out_of_range ("stoi argument out of range") for a name
// "map" followed by something that is not an int. Index arrays too short for the
// face-vertices are recorded as faults.
std::vector<UVSetRecord> readUVSets(const Zelvane::Object& object,
                                    const GraphMeshTopology& topology,
                                    MeshObjectValidation& validation);

// Starts one task per set on `group` that fills u, v and the ids, checking every index
// against the values. The records must stay in place until the group's tasks have ended.
void fillUVSets(std::vector<UVSetRecord>& sets, const GraphMeshTopology& topology,
                oneapi::tbb::task_group& group, MeshObjectValidation& validation);

// Writes the sets in order, timed as "write uvs": creates each set but "map1" (every host mesh
// has it), sets its UVs and assigns them (every face mapped, by the polygon counts); stops at
// the first call the host refuses.
void writeUVSets(KFnMesh& mesh, const HostMeshArrays& host, const std::vector<UVSetRecord>& sets);

} // namespace ZelvanePlugin
