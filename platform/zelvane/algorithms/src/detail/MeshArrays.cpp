#include "detail/MeshArrays.h"

#include "detail/Validation.h"

#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Names.h>

namespace Zelvane::GeometryAlgorithms::detail {

bool readMeshLayout(const Object& mesh, MeshArrays& out) {
    out.positionArray = mesh.getArray<Math::float3>(Geometry::sPointPosition);
    out.faceOffsetArray = mesh.getArray<std::uint32_t>(Geometry::sFaceOffset);
    out.faceVertexArray = mesh.getArray<std::uint32_t>(Geometry::sFaceVertex);
    if (!out.positionArray || !out.faceOffsetArray || !out.faceVertexArray ||
        out.faceOffsetArray->empty()) {
        return false;
    }
    const bool countsMatch =
        Geometry::getElementCount(mesh, Geometry::sPointComp) == out.pointCount() &&
        Geometry::getElementCount(mesh, Geometry::sFaceComp) == out.faceCount() &&
        Geometry::getElementCount(mesh, Geometry::sFaceVertexComp) == out.faceVertexCount();
    return countsMatch && isPrefixSum(out.faceOffsets(), out.faceVertexCount());
}

bool readMeshArrays(const Object& mesh, MeshArrays& out) {
    return readMeshLayout(mesh, out) && allBelow(out.faceVertices(), out.pointCount());
}

} // namespace Zelvane::GeometryAlgorithms::detail
