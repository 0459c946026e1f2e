#pragma once

#include <kova/detail/ComponentTags.h>
#include <kova/detail/DataObject.h>

namespace kova::detail {

// Base of the geometry data kinds (meshes, NURBS curves): data that carries component tags.
class KOVA_API GeometryData : public DataObject {
public:
    using DataObject::DataObject;

    // The number of elements of a component kind this geometry has (vertices, faces, CVs);
    // -1 when the kind does not belong to this geometry or its count is not tracked, in
    // which case component tags of that kind are stored unchecked.
    virtual int elementCount(KFn::Type componentType) const = 0;

    ComponentTags componentTags;
};

// The geometry data behind `object`, or null.
inline GeometryData* geometryDataOf(const KObject& object) {
    return entityAs<GeometryData>(object.entity());
}

} // namespace kova::detail
