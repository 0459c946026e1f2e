#include "mesh/MeshAccess.h"

#include "mesh/MeshShape.h"

#include <kova/KPlug.h>

namespace kova::mesh {

bool isMeshObject(const KObject& object) {
    return !object.isNull() &&
           (object.apiType() == KFn::kMeshData || object.apiType() == KFn::kMesh);
}

detail::MeshData* resolveMesh(const KObject& object, KStatus& status) {
    if (object.apiType() == KFn::kMeshData) {
        status = KStatus();
        return detail::meshDataOf(object);
    }
    if (object.apiType() != KFn::kMesh) {
        status = KStatus(KStatus::kInvalidParameter, "no mesh attached");
        return nullptr;
    }
    const KObject data = KPlug(object, outMeshAttribute()).asKObject(&status);
    detail::MeshData* mesh = status ? detail::meshDataOf(data) : nullptr;
    if (status && mesh == nullptr) {
        status = KStatus(KStatus::kFailure, "the mesh shape has no mesh");
    }
    return mesh;
}

} // namespace kova::mesh
