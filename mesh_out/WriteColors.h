#pragma once

#include "mesh_out/MeshObjectValidation.h"
#include "mesh_out/MeshTopology.h"

#include <cstdint>
#include <kova/KColorArray.h>
#include <kova/KFnMesh.h>
#include <kova/KIntArray.h>
#include <oneapi/tbb/task_group.h>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <variant>
#include <vector>
#include <zelvane/Object.h>
#include <zelvane/math/Vector.h>

namespace ZelvanePlugin {

// One colour set to write. The graph values convert by element type, which also gives the
// set's host colour representation:
//   float  -> 1 (alpha): white with the value as alpha
//   float3 -> 3 (RGB):   opaque colours
//   float4 -> 4 (RGBA)
// Point colours are one per point and are assigned through the polygon connects (ids stay
// empty); face-vertex colours carry one id per face-vertex, from their index property or
// 0 .. face-vertices - 1 when they have none.
struct ColorSetRecord {
    using Values = std::variant<Orsel::Ptr<Orsel::Array<float>>,
                                Orsel::Ptr<Orsel::Array<Zelvane::Math::float3>>,
                                Orsel::Ptr<Orsel::Array<Zelvane::Math::float4>>>;

    Orsel::String name;
    int representation = 4;
    Values values;
    Orsel::Ptr<Orsel::Array<std::uint32_t>> indices; // null for point colours
    KColorArray colors;
    KIntArray ids;
};

// The colour sets of `object`: the geometry properties matching the channel expression
// `properties` whose component is points or face-vertices and whose data converts (see
// ColorSetRecord); others are passed over. Value or index arrays too short for their
// component are recorded as faults.
std::vector<ColorSetRecord> readColorSets(const Zelvane::Object& object,
                                          const Orsel::String& properties,
                                          const GraphMeshTopology& topology,
                                          MeshObjectValidation& validation);

// Starts one task per set on `group` that converts the colours and fills the ids, checking
// every index against the values. The records must stay in place until the tasks have ended.
void fillColorSets(std::vector<ColorSetRecord>& sets, const GraphMeshTopology& topology,
                   oneapi::tbb::task_group& group, MeshObjectValidation& validation);

// Writes the sets that have colours, in order, timed as "write cpvs": creates the set
// (unclamped, in its representation) and, when that worked, sets it unclamped, sets its
// colours and assigns them by its ids, or by `polygonConnects` for point colours.
void writeColorSets(KFnMesh& mesh, const KIntArray& polygonConnects,
                    const std::vector<ColorSetRecord>& sets);

} // namespace ZelvanePlugin
