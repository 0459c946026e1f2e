#include "mesh_in/MeshMaterials.h"

#include <kova/KDagPath.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnSet.h>
#include <kova/KGlobal.h>
#include <kova/KObjectArray.h>
#include <kova/KPlug.h>
#include <kova/KPlugArray.h>
#include <kova/KSelectionList.h>
#include <utility>
#include <zelvane/geometry/Names.h>

namespace ZelvanePlugin {
namespace {

using ObjectArray = Orsel::Array<Orsel::Ptr<Zelvane::Object>>;

// The first renderable-only set (a shading group) associated with the shape; null if none.
KObject shadingGroupOf(const KObject& shape) {
    KDagPath path;
    if (!KFnDagNode(shape).getPath(path)) {
        return KObject::kNullObj;
    }
    KSelectionList items;
    KObjectArray sets;
    if (!items.add(path, KObject::kNullObj) || !KGlobal::getAssociatedSets(items, sets)) {
        return KObject::kNullObj;
    }
    for (unsigned int i = 0; i < sets.length(); ++i) {
        if (KFnSet(sets[i]).restriction() == KFnSet::kRenderableOnly) {
            return sets[i];
        }
    }
    return KObject::kNullObj;
}

// The node of the first source connected to the shading group's input `input`; null if none.
KObject shaderFeeding(const KObject& shadingGroup, const char* input) {
    if (shadingGroup.isNull()) {
        return KObject::kNullObj;
    }
    KStatus status;
    const KPlug plug = KFnDependencyNode(shadingGroup).findPlug(input, false, &status);
    KPlugArray sources;
    if (!status || !plug.connectedTo(sources, true, false)) {
        return KObject::kNullObj;
    }
    for (unsigned int i = 0; i < sources.length(); ++i) {
        const KObject node = sources[i].node();
        if (!node.isNull()) {
            return node;
        }
    }
    return KObject::kNullObj;
}

// A one-element array holding the reference to `shader` (an empty name for the null node).
Orsel::MutablePtr<ObjectArray> referenceTo(const KObject& shader) {
    Orsel::MutablePtr<Zelvane::Object> reference = Zelvane::createObject();
    const Orsel::String name = shader.isNull()
                                   ? Orsel::String()
                                   : Orsel::String(KFnDependencyNode(shader).name().asChar());
    reference->set(Zelvane::Geometry::sMaterialReferenceID, name);
    Orsel::MutablePtr<ObjectArray> references = Orsel::make<ObjectArray>();
    references->push_back(std::move(reference));
    return references;
}

} // namespace

void readMaterials(const KObject& shape, Orsel::MutablePtr<Zelvane::Object>& object) {
    if (!object) {
        return;
    }
    using namespace Zelvane::Geometry;
    const KObject shadingGroup = shadingGroupOf(shape);
    Orsel::MutablePtr<ObjectArray> surface =
        referenceTo(shaderFeeding(shadingGroup, "surfaceShader"));
    Orsel::MutablePtr<ObjectArray> displacement =
        referenceTo(shaderFeeding(shadingGroup, "displacementShader"));
    Orsel::MutablePtr<Zelvane::Object> settings = Zelvane::createObject();
    settings->set(sMaterialSurface, std::move(surface));
    settings->set(sMaterialDisplacement, std::move(displacement));
    if (!sRenderSettings.empty()) {
        object->set(sRenderSettings, std::move(settings));
    }
}

} // namespace ZelvanePlugin
