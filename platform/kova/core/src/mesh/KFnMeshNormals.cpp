#include "detail/ParallelLoops.h"
#include "detail/Report.h"
#include "mesh/MeshAccess.h"

#include <kova/KFnMesh.h>
#include <kova/detail/MeshData.h>
#include <string>

using kova::detail::MeshData;
using kova::detail::report;

namespace {

KStatus invalid(const std::string& text) {
    return KStatus(KStatus::kInvalidParameter, KString(text));
}

void appendNormal(MeshData& mesh, const KVector& n) {
    mesh.normals.push_back(static_cast<float>(n.x));
    mesh.normals.push_back(static_cast<float>(n.y));
    mesh.normals.push_back(static_cast<float>(n.z));
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
    return m ? MeshData::rawStart(m->normals) : nullptr;
}

KStatus KFnMesh::getNormalIds(KIntArray& normalIdCounts, KIntArray& normalIds) const {
    KStatus status;
    const MeshData* m = mesh("KFnMesh::getNormalIds", status);
    if (m != nullptr) {
        status = kova::mesh::copyOut(m->counts.data(), m->numPolygons(), normalIdCounts);
    }
    if (m != nullptr && status) {
        status = kova::mesh::copyOut(m->normalIds.data(), m->numFaceVertices(), normalIds);
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
    // Find every target face-vertex first, so that a bad pair changes nothing.
    const auto offsets = m->faceOffsets();
    std::vector<int> targets(normals.length());
    for (unsigned int i = 0; i < normals.length(); ++i) {
        const int face = faces[i];
        if (face < 0 || face >= m->numPolygons()) {
            return invalid("face " + std::to_string(face) + " does not exist");
        }
        int k = offsets[face];
        while (k < offsets[face + 1] && m->connects[k] != vertices[i]) {
            ++k;
        }
        if (k == offsets[face + 1]) {
            return invalid("vertex " + std::to_string(vertices[i]) + " is not on face " +
                           std::to_string(face));
        }
        targets[i] = k;
    }
    for (unsigned int i = 0; i < normals.length(); ++i) {
        m->normalIds[targets[i]] = m->numNormals();
        appendNormal(*m, normals[i]);
    }
    m->compactNormals();
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
    for (int vertex : vertices) {
        if (vertex < 0 || vertex >= m->numVertices()) {
            return invalid("vertex " + std::to_string(vertex) + " does not exist");
        }
    }
    std::vector<int> normalOf(static_cast<std::size_t>(m->numVertices()), -1);
    for (unsigned int i = 0; i < normals.length(); ++i) {
        normalOf[vertices[i]] = m->numNormals();
        appendNormal(*m, normals[i]);
    }
    kova::detail::forEachRange(m->connects.size(), [&](std::size_t begin, std::size_t end) {
        for (std::size_t k = begin; k < end; ++k) {
            if (const int id = normalOf[static_cast<std::size_t>(m->connects[k])]; id >= 0) {
                m->normalIds[k] = id;
            }
        }
    });
    m->compactNormals();
    return KStatus();
}
