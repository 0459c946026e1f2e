#pragma once

#include "mesh_out/MeshObjectValidation.h"
#include "mesh_out/MeshTopology.h"

#include <kova/KObject.h>
#include <orsel/String.h>
#include <zelvane/Object.h>

namespace ZelvanePlugin {

// Writes the boolean properties of `object` that the channel expression `componentTags`
// accepts as component tags of `meshData`, timed as "write component tags" (nothing happens,
// not even the timing, when the object has no boolean property). A point tag becomes a
// mesh-vertex component, a face tag a mesh-polygon component of the members; a tag on any
// other component gets no contents. The tag's host name is its `sDccName`, else its property
// name without the tag prefix and suffix.
//
// A tag that can't be added or filled is reported ("Could not add component tag named: ",
// "Could not set component tag content for: ") and the others go on. A membership array
// shorter than its component is recorded as a fault before any tag is written, and then
// nothing is written.
void writeComponentTags(const KObject& meshData, const Zelvane::Object& object,
                        const Orsel::String& componentTags, const GraphMeshTopology& topology,
                        MeshObjectValidation& validation);

} // namespace ZelvanePlugin
