#include "mesh_in/MeshConversion.h"

#include <zelvane/geometry/Mesh.h>

namespace ZelvanePlugin::MeshInput {

Orsel::Ptr<Zelvane::Object> MeshConversion::temporaryMesh() const {
    Orsel::MutablePtr<Zelvane::Object> mesh = Zelvane::createObject();
    if (!Zelvane::Geometry::populateMesh(positions.shared, faceVertices.shared, faceOffsets.shared,
                                         *mesh)) {
        return {};
    }
    return mesh;
}

} // namespace ZelvanePlugin::MeshInput
