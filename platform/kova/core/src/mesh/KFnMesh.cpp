#include "detail/ParallelLoops.h"
#include "detail/Report.h"
#include "mesh/CheckedCopy.h"
#include "mesh/MeshAccess.h"
#include "mesh/MeshShape.h"

#include <kova/KDagModifier.h>
#include <kova/KFailureInjection.h>
#include <kova/KFnMesh.h>
#include <kova/KFnMeshData.h>
#include <kova/KPlug.h>
#include <string>

using kova::detail::BulkVector;
using kova::detail::forEachRange;
using kova::detail::invalid;
using kova::detail::MeshData;
using kova::detail::report;
using kova::detail::resizeForOverwrite;
using kova::mesh::CheckedCopy;
using kova::mesh::copyChecked;

namespace {

// The arrays of a new mesh, copied from the caller's arrays.
struct Topology {
    BulkVector<float> points;
    BulkVector<int> counts;
    BulkVector<int> connects;
};

// Copies the arrays into `topology`, checking on the way that they describe a mesh that can be
// stored as it is; a failed status names the first fault.
KStatus copyTopology(int numVertices, int numPolygons, const KFloatPointArray& points,
                     const KIntArray& counts, const KIntArray& connects, Topology& topology) {
    if (numVertices < 0 || numPolygons < 0) {
        return invalid("negative vertex or polygon count");
    }
    if (points.length() != static_cast<unsigned int>(numVertices)) {
        return invalid("the point array holds " + std::to_string(points.length()) + " points for " +
                       std::to_string(numVertices) + " vertices");
    }
    if (counts.length() != static_cast<unsigned int>(numPolygons)) {
        return invalid("the polygon counts hold " + std::to_string(counts.length()) +
                       " entries for " + std::to_string(numPolygons) + " polygons");
    }
    resizeForOverwrite(topology.counts, counts.length());
    const CheckedCopy sides = copyChecked(counts.data(), counts.length(), topology.counts.data(),
                                          [](int count, std::size_t) { return count >= 3; });
    if (sides.firstInvalid < counts.length()) {
        return invalid("polygon " + std::to_string(sides.firstInvalid) +
                       " has fewer than 3 vertices");
    }
    if (sides.sum != connects.length()) {
        return invalid("the polygon counts add up to " + std::to_string(sides.sum) +
                       " face-vertices but the connects hold " + std::to_string(connects.length()));
    }
    resizeForOverwrite(topology.connects, connects.length());
    const std::size_t outside =
        copyChecked(connects.data(), connects.length(), topology.connects.data(),
                    [numVertices](int vertex, std::size_t) {
                        return static_cast<unsigned int>(vertex) <
                               static_cast<unsigned int>(numVertices);
                    })
            .firstInvalid;
    if (outside < connects.length()) {
        return invalid("vertex id " + std::to_string(connects[outside]) + " at face-vertex " +
                       std::to_string(outside) + " is out of range");
    }
    resizeForOverwrite(topology.points, 3 * static_cast<std::size_t>(numVertices));
    const KFloatPoint* from = points.data();
    float* xyz = topology.points.data();
    forEachRange(points.length(), [from, xyz](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            xyz[3 * i] = from[i].x;
            xyz[3 * i + 1] = from[i].y;
            xyz[3 * i + 2] = from[i].z;
        }
    });
    return KStatus();
}

// A new mesh shape under `parent` (null: under a new transform) holding `data`; returns
// what the DAG modifier returned (the transform when one was made) and the shape.
KObject createShape(const KObject& parent, const KObject& data, KObject& shape, KStatus& status) {
    KDagModifier modifier;
    KObject made = modifier.createNode("mesh", parent, &status);
    if (status) {
        status = modifier.doIt();
    }
    if (!status) {
        return KObject();
    }
    shape = made.apiType() == KFn::kMesh ? made : KFnDagNode(made).child(0, &status);
    if (status) {
        status = KPlug(shape, kova::mesh::inMeshAttribute()).setKObject(data);
    }
    return status ? made : KObject();
}

} // namespace

KFnMesh::KFnMesh(const KObject& meshOrShape, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnMesh::KFnMesh")) {
        report(status, KFailureInjection::failure("KFnMesh::KFnMesh"));
        return;
    }
    report(status, setObject(meshOrShape));
}

KStatus KFnMesh::setObject(const KObject& meshOrShape) {
    if (!kova::mesh::isMeshObject(meshOrShape)) {
        object_ = KObject();
        return invalid("the object is neither mesh data nor a mesh shape");
    }
    object_ = meshOrShape;
    return KStatus();
}

MeshData* KFnMesh::mesh(const char* operation, KStatus& status) const {
    if (KFailureInjection::shouldFail(operation)) {
        status = KFailureInjection::failure(operation);
        return nullptr;
    }
    return kova::mesh::resolveMesh(object_, status);
}

KStatus KFnMesh::objectSpaceOnly(KSpace::Space space) const {
    return space == KSpace::kWorld ? invalid("mesh edits take object space only") : KStatus();
}

KObject KFnMesh::create(int numVertices, int numPolygons, const KFloatPointArray& vertexArray,
                        const KIntArray& polygonCounts, const KIntArray& polygonConnects,
                        const KObject& parentOrOwner, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnMesh::create")) {
        report(status, KFailureInjection::failure("KFnMesh::create"));
        return KObject();
    }
    Topology topology;
    KStatus result = copyTopology(numVertices, numPolygons, vertexArray, polygonCounts,
                                  polygonConnects, topology);
    MeshData* owner = kova::detail::meshDataOf(parentOrOwner);
    if (result && !parentOrOwner.isNull() && owner == nullptr &&
        !parentOrOwner.hasFn(KFn::kTransform)) {
        result = invalid("the owner is neither mesh data nor a transform");
    }
    if (!result) {
        report(status, result);
        return KObject();
    }
    if (owner != nullptr) {
        owner->reset(std::move(topology.points), std::move(topology.counts),
                     std::move(topology.connects));
        object_ = parentOrOwner;
        report(status, result);
        return parentOrOwner;
    }
    KFnMeshData dataFn;
    const KObject data = dataFn.create(&result);
    if (result) {
        kova::detail::meshDataOf(data)->reset(
            std::move(topology.points), std::move(topology.counts), std::move(topology.connects));
    }
    KObject shape;
    const KObject made = result ? createShape(parentOrOwner, data, shape, result) : KObject();
    object_ = result ? shape : KObject();
    report(status, result);
    return made;
}

int KFnMesh::numVertices(KStatus* status) const {
    KStatus result;
    const MeshData* m = mesh("KFnMesh::numVertices", result);
    report(status, result);
    return m ? m->numVertices() : 0;
}

int KFnMesh::numPolygons(KStatus* status) const {
    KStatus result;
    const MeshData* m = mesh("KFnMesh::numPolygons", result);
    report(status, result);
    return m ? m->numPolygons() : 0;
}

int KFnMesh::numFaceVertices(KStatus* status) const {
    KStatus result;
    const MeshData* m = mesh("KFnMesh::numFaceVertices", result);
    report(status, result);
    return m ? m->numFaceVertices() : 0;
}

const float* KFnMesh::getRawPoints(KStatus* status) const {
    KStatus result;
    const MeshData* m = mesh("KFnMesh::getRawPoints", result);
    report(status, result);
    return m ? MeshData::rawStart(m->points) : nullptr;
}

KStatus KFnMesh::getPoints(KFloatPointArray& points, KSpace::Space space) const {
    KStatus status;
    const MeshData* m = mesh("KFnMesh::getPoints", status);
    if (m == nullptr) {
        return status;
    }
    KMatrix world;
    if (space == KSpace::kWorld && object_.apiType() == KFn::kMesh) {
        world = dagPath(&status).inclusiveMatrix(&status);
    }
    if (status) {
        status = points.setLength(static_cast<unsigned int>(m->numVertices()));
    }
    for (unsigned int i = 0; status && i < points.length(); ++i) {
        const float* p = &m->points[3 * static_cast<std::size_t>(i)];
        points[i] = KFloatPoint(KPoint(p[0], p[1], p[2]) * world);
    }
    return status;
}

KStatus KFnMesh::getVertices(KIntArray& vertexCounts, KIntArray& vertexList) const {
    KStatus status;
    const MeshData* m = mesh("KFnMesh::getVertices", status);
    if (m != nullptr) {
        status = kova::mesh::copyOut(m->counts.data(), m->numPolygons(), vertexCounts);
    }
    if (m != nullptr && status) {
        status = kova::mesh::copyOut(m->connects.data(), m->numFaceVertices(), vertexList);
    }
    return status;
}

KStatus KFnMesh::getPolygonVertices(int polygonId, KIntArray& vertexList) const {
    KStatus status;
    const MeshData* m = mesh("KFnMesh::getPolygonVertices", status);
    if (m == nullptr) {
        return status;
    }
    if (polygonId < 0 || polygonId >= m->numPolygons()) {
        return invalid("polygon " + std::to_string(polygonId) + " does not exist");
    }
    int first = 0;
    for (int f = 0; f < polygonId; ++f) {
        first += m->counts[f];
    }
    return vertexList.copy(
        KIntArray(m->connects.data() + first, static_cast<unsigned int>(m->counts[polygonId])));
}
