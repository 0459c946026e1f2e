#include "Offsets.h"

#include <algorithm>
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Mesh.h>
#include <zelvane/geometry/Names.h>

namespace Zelvane::Geometry {

void populateMesh(Object& mesh) {
    populateMesh(nullptr, nullptr, nullptr, mesh);
}

bool populateMesh(Orsel::Ptr<Orsel::Array<Math::float3>> positions,
                  Orsel::Ptr<Orsel::Array<std::uint32_t>> faceVertex,
                  Orsel::Ptr<Orsel::Array<std::uint32_t>> faceOffset, Object& mesh) {
    if (!positions) {
        positions = Orsel::make<Orsel::Array<Math::float3>>();
    }
    if (!faceVertex) {
        faceVertex = Orsel::make<Orsel::Array<std::uint32_t>>();
    }
    if (!faceOffset || faceOffset->empty()) {
        faceOffset = Orsel::make<Orsel::Array<std::uint32_t>>(1u, 0u);
    }
    if (!detail::isPrefixSum(*faceOffset, faceVertex->size())) {
        return false;
    }
    const bool pointsExist =
        faceVertex->empty() ||
        *std::max_element(faceVertex->begin(), faceVertex->end()) < positions->size();
    if (!pointsExist) {
        return false;
    }
    mesh.setPrototype(getMeshPrototype());
    setElementCount(sPointComp, positions->size(), mesh);
    setElementCount(sFaceComp, faceOffset->size() - 1, mesh);
    setElementCount(sFaceVertexComp, faceVertex->size(), mesh);
    mesh.set(sPointPosition, std::move(positions));
    mesh.set(sFaceOffset, std::move(faceOffset));
    mesh.set(sFaceVertex, std::move(faceVertex));
    return true;
}

} // namespace Zelvane::Geometry
