#include "detail/ParallelLoops.h"
#include "detail/Report.h"
#include "mesh/MeshAccess.h"

#include <atomic>
#include <kova/KFnMesh.h>
#include <kova/detail/MeshData.h>
#include <numeric>
#include <string>
#include <tuple>

using kova::detail::BulkVector;
using kova::detail::firstIndexWhere;
using kova::detail::forEachRange;
using kova::detail::invalid;
using kova::detail::MeshData;
using kova::detail::report;
using kova::detail::resizeForOverwrite;

namespace {

// The normals as a table of three floats each, converted in parallel.
BulkVector<float> normalTable(const KVectorArray& normals) {
    BulkVector<float> table;
    resizeForOverwrite(table, 3 * static_cast<std::size_t>(normals.length()));
    forEachRange(normals.length(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            const KVector& n = normals[static_cast<unsigned int>(i)];
            table[3 * i] = static_cast<float>(n.x);
            table[3 * i + 1] = static_cast<float>(n.y);
            table[3 * i + 2] = static_cast<float>(n.z);
        }
    });
    return table;
}

// The face-vertex of face `face` whose vertex is `vertex` (the first one), or -1 when the face
// does not exist or has no such vertex.
int faceVertexOf(const MeshData& mesh, const BulkVector<int>& offsets, int face, int vertex) {
    if (face < 0 || face >= mesh.numPolygons()) {
        return -1;
    }
    for (int k = offsets[face]; k < offsets[face + 1]; ++k) {
        if (mesh.connects[k] == vertex) {
            return k;
        }
    }
    return -1;
}

// Gives the face-vertices listed by `ids` (normal ids, -1 where a face-vertex keeps its normal)
// the normals of `table`, keeping the mesh's normals elsewhere, and drops unused normals.
void mergeNormals(MeshData& mesh, BulkVector<float> table, BulkVector<int> ids) {
    BulkVector<float> normals;
    BulkVector<int> normalIds;
    std::tie(normals, normalIds) = mesh.takeNormals();
    const int base = static_cast<int>(normals.size() / 3);
    normals.insert(normals.end(), table.begin(), table.end());
    forEachRange(ids.size(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t k = begin; k < end; ++k) {
            if (ids[k] >= 0) {
                normalIds[k] = base + ids[k];
            }
        }
    });
    mesh.setNormals(std::move(normals), std::move(normalIds));
    mesh.compactNormals();
}

} // namespace

int KFnMesh::numNormals(KStatus* status) const {
    KStatus result;
    const MeshData* m = mesh("KFnMesh::numNormals", result);
    report(status, result);
    return m ? m->numNormals() : 0;
}

const float* KFnMesh::getRawNormals(KStatus* status) const {
    KStatus result;
    const MeshData* m = mesh("KFnMesh::getRawNormals", result);
    report(status, result);
    return m ? MeshData::rawStart(m->normals()) : nullptr;
}

KStatus KFnMesh::getNormalIds(KIntArray& normalIdCounts, KIntArray& normalIds) const {
    KStatus status;
    const MeshData* m = mesh("KFnMesh::getNormalIds", status);
    if (m != nullptr) {
        status = kova::mesh::copyOut(m->counts.data(), m->numPolygons(), normalIdCounts);
    }
    if (m != nullptr && status) {
        status = kova::mesh::copyOut(m->normalIds().data(), m->numFaceVertices(), normalIds);
    }
    return status;
}

KStatus KFnMesh::setFaceVertexNormals(const KVectorArray& normals, const KIntArray& faces,
                                      const KIntArray& vertices, KSpace::Space space) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::setFaceVertexNormals", status);
    if (m == nullptr) {
        return status;
    }
    if (KStatus s = objectSpaceOnly(space); !s) {
        return s;
    }
    if (faces.length() != normals.length() || vertices.length() != normals.length()) {
        return invalid("normals, faces and vertices differ in length");
    }
    // One pass finds the first bad pair (so that a bad pair changes nothing) and whether pair i
    // is face-vertex i for every i, the usual case of one normal per face-vertex in order.
    const BulkVector<int> offsets = m->faceOffsets();
    const std::size_t count = normals.length();
    std::atomic<bool> inOrder = count == static_cast<std::size_t>(m->numFaceVertices());
    const std::size_t bad = firstIndexWhere(count, [&](std::size_t i) {
        const int k = faceVertexOf(*m, offsets, faces[i], vertices[i]);
        if (k != static_cast<int>(i)) {
            inOrder.store(false, std::memory_order_relaxed);
        }
        return k < 0;
    });
    if (bad < count) {
        const int face = faces[bad];
        return face < 0 || face >= m->numPolygons()
                   ? invalid("face " + std::to_string(face) + " does not exist")
                   : invalid("vertex " + std::to_string(vertices[bad]) + " is not on face " +
                             std::to_string(face));
    }
    BulkVector<float> table = normalTable(normals);
    BulkVector<int> ids;
    resizeForOverwrite(ids, static_cast<std::size_t>(m->numFaceVertices()));
    if (inOrder.load(std::memory_order_relaxed)) {
        // Every face-vertex gets a normal of its own, in face-vertex order: the table as it is.
        forEachRange(ids.size(), [&](std::size_t begin, std::size_t end) {
            std::iota(ids.begin() + begin, ids.begin() + end, static_cast<int>(begin));
        });
        m->setNormals(std::move(table), std::move(ids));
        return KStatus();
    }
    kova::detail::fillValues(ids, -1);
    for (unsigned int i = 0; i < normals.length(); ++i) {
        ids[faceVertexOf(*m, offsets, faces[i], vertices[i])] = static_cast<int>(i);
    }
    mergeNormals(*m, std::move(table), std::move(ids));
    return KStatus();
}

KStatus KFnMesh::setVertexNormals(const KVectorArray& normals, const KIntArray& vertices,
                                  KSpace::Space space) {
    KStatus status;
    MeshData* m = mesh("KFnMesh::setVertexNormals", status);
    if (m == nullptr) {
        return status;
    }
    if (KStatus s = objectSpaceOnly(space); !s) {
        return s;
    }
    if (vertices.length() != normals.length()) {
        return invalid("normals and vertices differ in length");
    }
    const std::size_t outside = firstIndexWhere(vertices.length(), [&](std::size_t i) {
        return vertices[i] < 0 || vertices[i] >= m->numVertices();
    });
    if (outside < vertices.length()) {
        return invalid("vertex " + std::to_string(vertices[outside]) + " does not exist");
    }
    BulkVector<int> normalOf;
    resizeForOverwrite(normalOf, static_cast<std::size_t>(m->numVertices()));
    kova::detail::fillValues(normalOf, -1);
    for (unsigned int i = 0; i < vertices.length(); ++i) {
        normalOf[vertices[i]] = static_cast<int>(i);
    }
    BulkVector<int> ids;
    resizeForOverwrite(ids, m->connects.size());
    std::atomic<bool> everyFaceVertex = true;
    forEachRange(ids.size(), [&](std::size_t begin, std::size_t end) {
        bool all = true;
        for (std::size_t k = begin; k < end; ++k) {
            ids[k] = normalOf[static_cast<std::size_t>(m->connects[k])];
            all = all && ids[k] >= 0;
        }
        if (!all) {
            everyFaceVertex.store(false, std::memory_order_relaxed);
        }
    });
    if (everyFaceVertex.load(std::memory_order_relaxed)) {
        // No face-vertex keeps its normal, so the mesh's normals are not needed.
        m->setNormals(normalTable(normals), std::move(ids));
        m->compactNormals();
    } else {
        mergeNormals(*m, normalTable(normals), std::move(ids));
    }
    return KStatus();
}
