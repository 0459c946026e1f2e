#include "common/ParallelFill.h"
#include "mesh_in/HostIndexLists.h"
#include "mesh_in/MeshScope.h"
#include "mesh_in/MeshSteps.h"
#include "mesh_in/RuntimeMessages.h"

#include <kova/KFloatArray.h>
#include <kova/KIntArray.h>
#include <kova/KStringArray.h>
#include <string>
#include <utility>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/RangeProperty.h>

namespace ZelvanePlugin::MeshInput {
namespace {

using Zelvane::Math::float2;

// "map1", the host's default UV set, goes first so that it becomes the bare "uv".
void moveDefaultSetFirst(KStringArray& names) {
    for (unsigned int i = 0; i < names.length(); ++i) {
        if (names[i] == "map1") {
            const KString name = names[i];
            names.remove(i);
            names.insert(name, 0);
            return;
        }
    }
}

// The property name of the UV set at `position`: "uv", then "uv1", "uv2", ...
Orsel::String uvPropertyName(unsigned int position) {
    if (position == 0) {
        return Zelvane::Geometry::sFaceVertexUV;
    }
    return Zelvane::Geometry::sFaceVertexUV + std::to_string(position).c_str();
}

// Task "copy uvs": the (u, v) table and the per-face-vertex UV ids; the task owns the host
// arrays.
void startCopyUVs(MeshConversion& conversion, KFloatArray&& u, KFloatArray&& v, KIntArray&& uvIds,
                  const FillableArray<float2>& table, const FillableArray<std::uint32_t>& indices) {
    conversion.groupB.run(
        [table, indices, us = std::move(u), vs = std::move(v), ids = std::move(uvIds)] {
            MeshScope scope("copy uvs");
            const std::size_t count = us.length();
            table.writable->resizeForOverwrite(count);
            float2* out = table.writable->data();
            const float* uIn = us.data();
            const float* vIn = vs.data();
            parallelFill(count, [&](std::size_t begin, std::size_t end) {
                for (std::size_t i = begin; i < end; ++i) {
                    out[i] = {uIn[i], vIn[i]};
                }
            });
            copyIndices(ids, *indices.writable);
        });
}

} // namespace

void addUVSets(MeshConversion& conversion) {
    using namespace Zelvane::Geometry;
    KStringArray names;
    if (!conversion.mesh.getUVSetNames(names)) {
        return;
    }
    moveDefaultSetFirst(names);
    for (unsigned int position = 0; position < names.length(); ++position) {
        MeshScope scope("get uvs");
        const KString& setName = names[position];
        if (!conversion.acceptsChannel(setName)) {
            continue;
        }
        KFloatArray u;
        KFloatArray v;
        KIntArray uvCounts;
        KIntArray uvIds;
        const bool read = conversion.mesh.getUVs(u, v, &setName) &&
                          conversion.mesh.getAssignedUVs(uvCounts, uvIds, &setName);
        // A set that leaves faces unmapped has fewer ids than face-vertices: it is dropped,
        // not padded, since the graph's UVs are indexed per face-vertex.
        if (!read || u.length() != v.length() || uvIds.length() != conversion.faceVertexCount) {
            showRuntimeError(KString("Could not convert this uv component: ") + setName);
            continue;
        }
        const Orsel::String name = uvPropertyName(position);
        const Orsel::String indexName = name + sIndexSuffix;
        FillableArray<float2> table = makeFillableArray<float2>();
        FillableArray<std::uint32_t> indices = makeFillableArray<std::uint32_t>();

        Orsel::MutablePtr<Zelvane::Object> range = Zelvane::createObject();
        populateRangeGeoProperty(*range, indices.shared);
        conversion.object.set(indexName, std::move(range));
        Orsel::MutablePtr<Zelvane::Object> data = createGeoProperty(indexName, table.shared);
        data->set(sDccName, Orsel::String(setName.asUTF8()));
        conversion.object.set(name, std::move(data));

        startCopyUVs(conversion, std::move(u), std::move(v), std::move(uvIds), table, indices);
    }
}

} // namespace ZelvanePlugin::MeshInput
