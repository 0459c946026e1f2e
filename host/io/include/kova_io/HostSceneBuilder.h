#pragma once

#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <kova_io/SceneData.h>
#include <string>
#include <vector>

namespace KovaIo {

struct HostBuildOptions {
    bool faceSets = true;  // groups become "objectSet" nodes with face members
    bool materials = true; // materials become shading groups with a "lambert" each
};

// The nodes a build made, in the order of the scene data.
struct HostNodes {
    std::vector<KObject> meshShapes;  // "mesh" shapes, each under a transform of its own
    std::vector<KObject> curveShapes; // "nurbsCurve" shapes, each under a transform
    std::vector<KObject> faceSets;    // "objectSet" nodes
    std::vector<KObject> shadingGroups;
};

// Makes host nodes of `scene` in the current host scene:
// - each mesh: a transform named after it with a "mesh" shape "<name>Shape" under it, holding
//   the points and faces, its UV sets (the first one current; the default "map1" is dropped
//   when the data has no set of that name), colour sets and user normals with their indexing;
// - each curve: a transform with a "nurbsCurve" shape, with the curve's degree, form, knots
//   and (rational) weights;
// - each face set name: one "objectSet" node of that name holding the faces of every mesh
//   that has the set;
// - each material name: a shading group "<name>SG" whose "surfaceShader" is fed by a "lambert"
//   node named after the material, holding the mesh faces assigned to it; faces without a
//   material go to "initialShadingGroup". A group that holds all of a mesh's faces holds the
//   shape whole.
// Node names keep letters, digits and '_' only (others become '_', a leading digit gets a
// '_' before it) and are made unique by the scene; each change of a name is noted in
// `renamed` as "kind 'file name' -> 'host name'".
// Everything is validated before the scene changes: data the host refuses (bad topology,
// indices out of range, an invalid curve) fails naming the mesh or curve and the reason, and
// leaves the scene as it was.
KStatus buildHostScene(const SceneData& scene, const HostBuildOptions& options, HostNodes& nodes,
                       std::vector<std::string>& renamed);

} // namespace KovaIo
