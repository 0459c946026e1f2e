#include "common/ParallelFill.h"
#include "mesh_in/HostIndexLists.h"
#include "mesh_in/KovaMeshToObject.h"
#include "mesh_in/MeshConversion.h"
#include "mesh_in/MeshScope.h"
#include "mesh_in/MeshSteps.h"
#include "mesh_in/RuntimeMessages.h"

#include <exception>
#include <kova/KDataHandle.h>
#include <kova/KFloatMatrix.h>
#include <kova/KFnGeometryData.h>
#include <kova/KIntArray.h>
#include <kova/KPlug.h>
#include <kova/KStringArray.h>
#include <tbb/task_group.h>
#include <utility>
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Mesh.h>
#include <zelvane/geometry/Names.h>

namespace ZelvanePlugin::MeshInput {
namespace {

using Zelvane::Math::float3;
using Zelvane::Math::float4x4;

float4x4 toFloat4x4(const KFloatMatrix& matrix) {
    return float4x4::fromRowMajor(&matrix.matrix[0][0]);
}

// Task "Copy positions": every raw host point, as [x y z 1], through the geometry transform;
// w is dropped.
void startCopyPositions(MeshConversion& conversion, const float* rawPoints,
                        const float4x4& toWorld) {
    conversion.groupA.run(
        [positions = conversion.positions, rawPoints, toWorld, count = conversion.pointCount] {
            MeshScope scope("Copy positions");
            positions.writable->resizeForOverwrite(count);
            float3* out = positions.writable->data();
            const auto& m = toWorld.m;
            parallelFill(count, [&](std::size_t begin, std::size_t end) {
                for (std::size_t i = begin; i < end; ++i) {
                    const float x = rawPoints[3 * i];
                    const float y = rawPoints[3 * i + 1];
                    const float z = rawPoints[3 * i + 2];
                    out[i] = {x * m[0][0] + y * m[1][0] + z * m[2][0] + m[3][0],
                              x * m[0][1] + y * m[1][1] + z * m[2][1] + m[3][1],
                              x * m[0][2] + y * m[1][2] + z * m[2][2] + m[3][2]};
                }
            });
        });
}

// Task "copy faces": face offsets as an exclusive prefix sum of the vertex counts (serial),
// then the host's vertex list as point indices. The task owns the two host arrays.
void startCopyFaces(MeshConversion& conversion, KIntArray&& vertexCounts, KIntArray&& vertexList) {
    conversion.groupA.run([offsets = conversion.faceOffsets, faceVertices = conversion.faceVertices,
                           counts = std::move(vertexCounts), connects = std::move(vertexList)] {
        MeshScope scope("copy faces");
        const std::size_t faces = counts.length();
        const std::size_t corners = connects.length();
        offsets.writable->resizeForOverwrite(faces + 1);
        std::uint32_t* offset = offsets.writable->data();
        const int* count = counts.data();
        std::uint32_t running = 0;
        for (std::size_t f = 0; f < faces; ++f) {
            offset[f] = running;
            running += static_cast<std::uint32_t>(count[f]);
        }
        offset[faces] = static_cast<std::uint32_t>(corners);
        copyIndices(connects, *faceVertices.writable);
    });
}

// The mesh layout with its counts and the three core arrays, installed while group A may
// still be filling them.
void installCoreArrays(const MeshConversion& conversion) {
    using namespace Zelvane::Geometry;
    Zelvane::Object& object = conversion.object;
    populateMesh(object);
    setElementCount(sPointComp, conversion.pointCount, object);
    setElementCount(sFaceComp, conversion.faceCount, object);
    setElementCount(sFaceVertexComp, conversion.faceVertexCount, object);
    object.set(sPointPosition, conversion.positions.shared);
    object.set(sFaceVertex, conversion.faceVertices.shared);
    object.set(sFaceOffset, conversion.faceOffsets.shared);
}

// Both groups must be waited for before their arrays are used or released; a group left
// unwaited would only be cancelled by its destructor.
struct TaskGroups {
    tbb::task_group a;
    tbb::task_group b;

    void waitAll() {
        a.wait();
        b.wait();
    }
};

Orsel::MutablePtr<Zelvane::Object> convertMesh(const KPlug& plug, KDataHandle& handle,
                                               const MeshOptions& options) {
    const KObject meshObject = handle.asMesh();
    double values[4][4];
    handle.geometryTransformMatrix().get(values);
    const KFloatMatrix toWorld(values);
    const KFloatMatrix normalMatrix = toWorld.inverse().transpose();
    const KObject node = plug.node();

    if (meshObject.isNull()) {
        return {};
    }
    KStatus status;
    const KFnMesh mesh(meshObject, &status);
    if (!status) {
        return {};
    }
    KStatus vertexStatus, faceVertexStatus, polygonStatus;
    const int vertices = mesh.numVertices(&vertexStatus);
    const int faceVertices = mesh.numFaceVertices(&faceVertexStatus);
    const int polygons = mesh.numPolygons(&polygonStatus);
    if (!vertexStatus || !faceVertexStatus || !polygonStatus || vertices < 0 || faceVertices < 0 ||
        polygons < 0) {
        return {};
    }
    const float* rawPoints = mesh.getRawPoints(&status);
    if (!status || (vertices > 0 && !rawPoints)) {
        return {};
    }

    Orsel::MutablePtr<Zelvane::Object> object = Zelvane::createObject();
    TaskGroups tasks;
    MeshConversion conversion{options,
                              mesh,
                              node,
                              toFloat4x4(normalMatrix),
                              static_cast<std::size_t>(vertices),
                              static_cast<std::size_t>(polygons),
                              static_cast<std::size_t>(faceVertices),
                              *object,
                              tasks.a,
                              tasks.b,
                              makeFillableArray<float3>(),
                              makeFillableArray<std::uint32_t>(),
                              makeFillableArray<std::uint32_t>(),
                              nullptr};
    startCopyPositions(conversion, rawPoints, toFloat4x4(toWorld));
    {
        MeshScope scope("get faces");
        KIntArray vertexCounts;
        KIntArray vertexList;
        // Lists that disagree with the counts would make the face arrays inconsistent.
        if (!mesh.getVertices(vertexCounts, vertexList) ||
            vertexCounts.length() != conversion.faceCount ||
            vertexList.length() != conversion.faceVertexCount) {
            tasks.waitAll();
            return {};
        }
        startCopyFaces(conversion, std::move(vertexCounts), std::move(vertexList));
    }
    installCoreArrays(conversion);

    addPointNormals(conversion);
    KStringArray colorSetNames;
    if (!mesh.getColorSetNames(colorSetNames)) {
        colorSetNames.clear();
    }
    startFaceVertexAdjacency(conversion, colorSetNames);
    addFaceVertexNormals(conversion);
    reportFaceNormals(conversion);
    addUVSets(conversion);
    addColorSets(conversion, colorSetNames);

    const KFnGeometryData geometry(meshObject, &status);
    if (!status) {
        // No object without its geometry data: the tasks drop their references when done,
        // and the object releases the rest.
        tasks.waitAll();
        return {};
    }
    addComponentTags(conversion, geometry);
    addFaceSets(conversion);

    tasks.waitAll();
    return object;
}

} // namespace
} // namespace ZelvanePlugin::MeshInput

Orsel::MutablePtr<Zelvane::Object> kovaMeshToObject(const KPlug& plug, KDataHandle& handle,
                                                    const MeshOptions& options) {
    using namespace ZelvanePlugin::MeshInput;
    MeshScope scope("Kova to Zelvane Mesh translation");
    try {
        return convertMesh(plug, handle, options);
    } catch (const std::exception& error) {
        // Out of memory, most likely; the host gets no half-converted mesh.
        showRuntimeError(KString("Kova to Zelvane mesh translation failed: ") + error.what());
        return {};
    }
}
