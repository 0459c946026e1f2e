#include "common/ParallelFill.h"
#include "mesh_in/HostIndexLists.h"
#include "mesh_in/MeshScope.h"
#include "mesh_in/MeshSteps.h"
#include "mesh_in/RuntimeMessages.h"

#include <kova/KIntArray.h>
#include <utility>
#include <zelvane/algorithms/MeshVertexNormals.h>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/RangeProperty.h>

namespace ZelvanePlugin::MeshInput {

using Zelvane::Math::float3;

void addPointNormals(MeshConversion& conversion) {
    if (!conversion.options.pointNormals) {
        return;
    }
    using namespace Zelvane::Geometry;
    MeshScope scope("get v normals");
    FillableArray<float3> normals = makeFillableArray<float3>();
    conversion.object.set(sPointNormal, createGeoProperty(sPointComp, normals.shared));
    conversion.waitForCoreArrays();
    // Host normals are not read: point normals always follow the converted geometry, each the
    // sum of its faces' vector areas scaled to unit length.
    conversion.groupB.run([normals, mesh = conversion.temporaryMesh(),
                           points = conversion.pointCount] {
        MeshScope taskScope("compute v normals");
        if (!mesh || !Zelvane::GeometryAlgorithms::computeMeshVertexNormals(*mesh, true, true,
                                                                            *normals.writable)) {
            // Faces naming missing points: zero normals, one per point as the layout needs.
            normals.writable->clear();
            normals.writable->resize(points);
        }
    });
}

void addFaceVertexNormals(MeshConversion& conversion) {
    if (!conversion.options.faceVertexNormals) {
        return;
    }
    using namespace Zelvane::Geometry;
    MeshScope scope("get fv normals");
    // Read first, so that a failing read leaves no half-made normals on the object.
    KStatus status;
    const float* rawNormals = conversion.mesh.getRawNormals(&status);
    KIntArray idCounts;
    KIntArray normalIds;
    if (!status || !conversion.mesh.getNormalIds(idCounts, normalIds) ||
        normalIds.length() != conversion.faceVertexCount) {
        return;
    }
    const int normalCount = conversion.mesh.numNormals(&status);
    if (!status || normalCount < 0 || (normalCount > 0 && !rawNormals)) {
        return;
    }

    const Orsel::String rangeName = getGeoPropRangeName(sFaceVertexNormal);
    FillableArray<float3> data = makeFillableArray<float3>();
    FillableArray<std::uint32_t> indices = makeFillableArray<std::uint32_t>();
    conversion.object.set(sFaceVertexNormal, createGeoProperty(rangeName, data.shared));
    Orsel::MutablePtr<Zelvane::Object> range = Zelvane::createObject();
    populateRangeGeoProperty(*range, indices.shared);
    conversion.object.set(rangeName, std::move(range));

    conversion.groupB.run([data, indices, rawNormals, count = std::size_t(normalCount),
                           ids = std::move(normalIds), normalMatrix = conversion.normalMatrix] {
        MeshScope taskScope("copy fv normals");
        data.writable->resizeForOverwrite(count);
        float3* out = data.writable->data();
        // Through the inverse transpose, then back to unit length: a non-uniform scale turns
        // normals without changing which way they face.
        parallelFill(count, [&](std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i) {
                const float3 normal{rawNormals[3 * i], rawNormals[3 * i + 1],
                                    rawNormals[3 * i + 2]};
                out[i] =
                    Zelvane::Math::normalize(Zelvane::Math::transformVector(normalMatrix, normal));
            }
        });
        copyIndices(ids, *indices.writable);
    });
}

void reportFaceNormals(const MeshConversion& conversion) {
    if (conversion.options.faceNormals) {
        showRuntimeError("Face normal conversion not supported");
    }
}

} // namespace ZelvanePlugin::MeshInput
