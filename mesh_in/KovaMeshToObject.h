#pragma once

#include "mesh_in/MeshOptions.h"

#include <orsel/Ptr.h>
#include <zelvane/Object.h>

class KPlug;
class KDataHandle;

// Turns the host polygon mesh held by `handle` (the value of `plug`) into a graph mesh object:
// points through the handle's geometry transform, faces and face-vertices, then, as `options`
// ask, point normals, face-vertex normals, UV sets, colour sets, component tags and the face
// sets of the plug's node. Steps are timed in the "Zelvane/MeshConverter" profiler category.
//
// Empty when the handle holds no mesh, when a mesh query (counts, points, faces) fails, or
// when the mesh's geometry data can't be read; no partial object is returned then. A UV set,
// colour set, tag or set that can't be converted is left out and the rest is converted.
// Messages about left-out sets are shown only when "ZELVANE_LOG_RUNTIME_MESSAGES" is true.
__attribute__((visibility("default"))) Orsel::MutablePtr<Zelvane::Object>
kovaMeshToObject(const KPlug& plug, KDataHandle& handle, const MeshOptions& options);
