#include "mesh_out/MeshTopology.h"

#include "common/ParallelFill.h"
#include "mesh_out/CheckedIndices.h"
#include "mesh_out/GraphProperties.h"

#include <string>
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/math/Vector.h>

namespace ZelvanePlugin {
namespace {

using Zelvane::Math::float3;
namespace Geo = Zelvane::Geometry;

bool fitsHostMesh(std::uint64_t count, const char* elements, MeshStep step,
                  MeshObjectValidation& validation) {
    if (count <= kMaxHostCount) {
        return true;
    }
    validation.fail({step},
                    std::to_string(count) + " " + elements + " are more than a host mesh can hold");
    return false;
}

void noMemory(MeshStep step, std::size_t count, const char* elements,
              MeshObjectValidation& validation) {
    validation.fail({step}, "no memory for " + std::to_string(count) + " " + elements);
}

void fillPoints(Orsel::Ptr<Orsel::Array<float3>> positions, std::size_t count,
                KFloatPointArray& points, MeshObjectValidation& validation) {
    if (!points.setLength(static_cast<unsigned int>(count))) {
        noMemory(MeshStep::positions, count, "points", validation);
        return;
    }
    const float3* source = positions ? positions->data() : nullptr;
    KFloatPoint* target = points.data();
    parallelFill(count, [source, target](std::size_t begin, std::size_t end) {
        const float3* from = source; // locals: the loop must not reload the closure
        KFloatPoint* to = target;
#pragma omp simd
        for (std::size_t i = begin; i < end; ++i) {
            to[i].x = from[i].x;
            to[i].y = from[i].y;
            to[i].z = from[i].z;
            to[i].w = 1.0f;
        }
    });
}

// Vertex counts from the offsets, which must not decrease and must give every face at least
// three vertices.
void fillPolygonCounts(Orsel::Ptr<Orsel::Array<std::uint32_t>> faceOffsets, std::size_t faceCount,
                       KIntArray& counts, MeshObjectValidation& validation) {
    if (!counts.setLength(static_cast<unsigned int>(faceCount))) {
        noMemory(MeshStep::faceOffsets, faceCount, "faces", validation);
        return;
    }
    const std::uint32_t* offsets = faceCount > 0 ? faceOffsets->data() : nullptr;
    int* target = counts.data();
    // Each range is filled by a loop without branches (it vectorises); a range with a fault is
    // scanned again for its first one.
    parallelFill(faceCount, [offsets, target, &validation](std::size_t begin, std::size_t end) {
        const std::uint32_t* from = offsets; // locals: the loop must not reload the closure
        int* to = target;
        unsigned faulty = 0;
#pragma omp simd reduction(| : faulty)
        for (std::size_t f = begin; f < end; ++f) {
            const std::uint32_t first = from[f];
            const std::uint32_t last = from[f + 1];
            to[f] = static_cast<int>(last - first);
            faulty |= static_cast<unsigned>((last < first) | (last - first < 3));
        }
        for (std::size_t f = begin; faulty != 0 && f < end; ++f) {
            const std::uint32_t first = offsets[f];
            const std::uint32_t last = offsets[f + 1];
            if (last < first || last - first < 3) {
                validation.fail(
                    {MeshStep::faceOffsets, 0, f},
                    last < first
                        ? "face offsets decrease at face " + std::to_string(f) + " (" +
                              std::to_string(first) + " then " + std::to_string(last) + ")"
                        : "face " + std::to_string(f) + " has " + std::to_string(last - first) +
                              " vertices; a host polygon needs 3 or more");
                return;
            }
        }
    });
}

void fillPolygonConnects(Orsel::Ptr<Orsel::Array<std::uint32_t>> faceVertices,
                         std::size_t faceVertexCount, std::size_t pointCount, KIntArray& connects,
                         MeshObjectValidation& validation) {
    if (!connects.setLength(static_cast<unsigned int>(faceVertexCount))) {
        noMemory(MeshStep::faceVertices, faceVertexCount, "face-vertices", validation);
        return;
    }
    const std::uint32_t* source = faceVertexCount > 0 ? faceVertices->data() : nullptr;
    // Within uint32: the point count fits a host mesh.
    copyCheckedIndices(source, faceVertexCount, static_cast<std::uint32_t>(pointCount),
                       connects.data(), [&](std::size_t k) {
                           validation.fail({MeshStep::faceVertices, 0, k},
                                           "face-vertex " + std::to_string(k) + " names point " +
                                               std::to_string(source[k]) + " of " +
                                               std::to_string(pointCount));
                       });
}

// The offsets must cover every face, start at 0 and end at the face-vertex count; in between
// the fill checks them.
bool checkOffsetEnds(const GraphMeshTopology& topology, MeshObjectValidation& validation) {
    if (topology.faceCount == 0 && topology.faceVertexCount == 0) {
        return true;
    }
    if (!requireEntries(topology.faceOffsets, topology.faceCount + 1, Geo::sFaceOffset, "uint32",
                        "face offsets", {MeshStep::faceOffsets}, validation)) {
        return false;
    }
    const Orsel::Array<std::uint32_t>& offsets = *topology.faceOffsets;
    if (offsets[0] != 0) {
        validation.fail({MeshStep::faceOffsets},
                        "face offsets start at " + std::to_string(offsets[0]) + ", not at 0");
        return false;
    }
    if (offsets[topology.faceCount] != topology.faceVertexCount) {
        validation.fail({MeshStep::faceOffsets},
                        "face offsets end at " + std::to_string(offsets[topology.faceCount]) +
                            " but there are " + std::to_string(topology.faceVertexCount) +
                            " face-vertices");
        return false;
    }
    return true;
}

} // namespace

void readTopology(const Zelvane::Object& object, GraphMeshTopology& topology, HostMeshArrays& host,
                  oneapi::tbb::task_group& group, MeshObjectValidation& validation) {
    const std::uint64_t pointCount = Geo::getElementCount(object, Geo::sPointComp);
    const Orsel::Ptr<Orsel::Array<float3>> positions = object.getArray<float3>(Geo::sPointPosition);
    if (!fitsHostMesh(pointCount, "points", MeshStep::positions, validation) ||
        !requireEntries(positions, pointCount, Geo::sPointPosition, "float3", "points",
                        {MeshStep::positions}, validation)) {
        return;
    }
    topology.pointCount = pointCount;
    group.run([positions, pointCount, &host, &validation] {
        fillPoints(positions, pointCount, host.points, validation);
    });

    const std::uint64_t faceCount = Geo::getElementCount(object, Geo::sFaceComp);
    const std::uint64_t faceVertexCount = Geo::getElementCount(object, Geo::sFaceVertexComp);
    if (!fitsHostMesh(faceCount, "faces", MeshStep::faceOffsets, validation) ||
        !fitsHostMesh(faceVertexCount, "face-vertices", MeshStep::faceVertices, validation)) {
        return;
    }
    topology.faceCount = faceCount;
    topology.faceVertexCount = faceVertexCount;
    topology.faceOffsets = object.getArray<std::uint32_t>(Geo::sFaceOffset);
    if (!checkOffsetEnds(topology, validation)) {
        return;
    }
    group.run([offsets = topology.faceOffsets, faceCount, &host, &validation] {
        fillPolygonCounts(offsets, faceCount, host.polygonCounts, validation);
    });

    topology.faceVertices = object.getArray<std::uint32_t>(Geo::sFaceVertex);
    if (!requireEntries(topology.faceVertices, faceVertexCount, Geo::sFaceVertex, "uint32",
                        "face-vertices", {MeshStep::faceVertices}, validation)) {
        return;
    }
    group.run(
        [faceVertices = topology.faceVertices, faceVertexCount, pointCount, &host, &validation] {
            fillPolygonConnects(faceVertices, faceVertexCount, pointCount, host.polygonConnects,
                                validation);
        });
}

} // namespace ZelvanePlugin
