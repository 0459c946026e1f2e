#include "mesh_out/WriteNormals.h"

#include "common/ParallelFill.h"
#include "common/ProfilerCategories.h"
#include "mesh_out/GraphProperties.h"

#include <kova/KProfilingScope.h>
#include <kova/KSpace.h>
#include <string>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/RangeProperty.h>
#include <zelvane/math/Vector.h>

namespace ZelvanePlugin {
namespace {

using Zelvane::Math::float3;
namespace Geo = Zelvane::Geometry;

using Float3Array = Orsel::Ptr<Orsel::Array<float3>>;
using IndexArray = Orsel::Ptr<Orsel::Array<std::uint32_t>>;

bool allocate(NormalsRecord& record, std::size_t count) {
    const auto length = static_cast<unsigned int>(count);
    return record.normals.setLength(length) && record.faces.setLength(length) &&
           record.vertices.setLength(length);
}

void noMemory(MeshStep step, std::size_t count, MeshObjectValidation& validation) {
    validation.fail({step}, "no memory for " + std::to_string(count) + " normals");
}

// One normal per face-vertex k: the value at index k, the face that owns k and its point. The
// offsets are walked per face; their order is checked by the topology fill, and the walk stays
// within the face-vertices whatever they hold.
void fillFaceVertexNormals(Float3Array values, IndexArray indices, GraphMeshTopology topology,
                           NormalsRecord& record, MeshObjectValidation& validation) {
    if (!allocate(record, topology.faceVertexCount)) {
        noMemory(MeshStep::faceVertexNormals, topology.faceVertexCount, validation);
        return;
    }
    const std::size_t valueCount = values->size();
    const std::size_t faceVertexCount = topology.faceVertexCount;
    const float3* value = values->data();
    const std::uint32_t* index = indices->data();
    const std::uint32_t* offsets = topology.faceCount > 0 ? topology.faceOffsets->data() : nullptr;
    const std::uint32_t* points = faceVertexCount > 0 ? topology.faceVertices->data() : nullptr;
    KVector* normals = record.normals.data();
    int* faces = record.faces.data();
    int* vertices = record.vertices.data();
    parallelFill(topology.faceCount, [&, value, index, offsets, points, normals, faces,
                                      vertices](std::size_t begin, std::size_t end) {
        for (std::size_t f = begin; f < end; ++f) {
            for (std::size_t k = offsets[f]; k < offsets[f + 1] && k < faceVertexCount; ++k) {
                if (index[k] >= valueCount) {
                    validation.fail({MeshStep::faceVertexNormals, 0, k},
                                    "normal index " + std::to_string(index[k]) +
                                        " at face-vertex " + std::to_string(k) + " of " +
                                        quoted(Geo::getGeoPropRangeName(Geo::sFaceVertexNormal)) +
                                        " is out of range (" + std::to_string(valueCount) +
                                        " normals)");
                    return;
                }
                const float3& n = value[index[k]];
                normals[k] = KVector(n.x, n.y, n.z);
                faces[k] = static_cast<int>(f);
                vertices[k] = static_cast<int>(points[k]);
            }
        }
    });
}

void fillPointNormals(Float3Array values, std::size_t pointCount, NormalsRecord& record,
                      MeshObjectValidation& validation) {
    if (!record.normals.setLength(static_cast<unsigned int>(pointCount)) ||
        !record.vertices.setLength(static_cast<unsigned int>(pointCount))) {
        noMemory(MeshStep::pointNormals, pointCount, validation);
        return;
    }
    const float3* value = values->data();
    KVector* normals = record.normals.data();
    int* vertices = record.vertices.data();
    parallelFill(pointCount, [value, normals, vertices](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            normals[i] = KVector(value[i].x, value[i].y, value[i].z);
            vertices[i] = static_cast<int>(i);
        }
    });
}

} // namespace

void readNormals(const Zelvane::Object& object, const GraphMeshTopology& topology,
                 NormalsRecord& record, oneapi::tbb::task_group& group,
                 MeshObjectValidation& validation) {
    const Float3Array pointNormals = geoPropertyData<float3>(object, Geo::sPointNormal);
    const Float3Array faceVertexNormals = geoPropertyData<float3>(object, Geo::sFaceVertexNormal);
    const Orsel::String rangeName = Geo::getGeoPropRangeName(Geo::sFaceVertexNormal);
    const IndexArray indices = Geo::getRangeGeoPropIndices(object, rangeName);
    if (faceVertexNormals && indices) {
        if (!requireEntries(indices, topology.faceVertexCount, rangeName, "uint32", "face-vertices",
                            {MeshStep::faceVertexNormals}, validation)) {
            return;
        }
        record.kind = NormalsRecord::Kind::faceVertex;
        group.run([faceVertexNormals, indices, topology, &record, &validation] {
            fillFaceVertexNormals(faceVertexNormals, indices, topology, record, validation);
        });
    } else if (pointNormals) {
        if (!requireEntries(pointNormals, topology.pointCount, Geo::sPointNormal, "float3",
                            "points", {MeshStep::pointNormals}, validation)) {
            return;
        }
        record.kind = NormalsRecord::Kind::point;
        group.run([pointNormals, pointCount = topology.pointCount, &record, &validation] {
            fillPointNormals(pointNormals, pointCount, record, validation);
        });
    }
}

void writeNormals(KFnMesh& mesh, const NormalsRecord& record) {
    if (record.kind == NormalsRecord::Kind::faceVertex) {
        KProfilingScope scope(meshConverterCategory(), kProfilerColor, "write face normals");
        mesh.setFaceVertexNormals(record.normals, record.faces, record.vertices, KSpace::kObject);
    } else if (record.kind == NormalsRecord::Kind::point) {
        KProfilingScope scope(meshConverterCategory(), kProfilerColor, "write vertex normals");
        mesh.setVertexNormals(record.normals, record.vertices, KSpace::kObject);
    }
}

} // namespace ZelvanePlugin
