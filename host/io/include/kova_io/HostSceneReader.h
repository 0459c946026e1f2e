#pragma once

#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <kova_io/SceneData.h>
#include <vector>

namespace KovaIo {

// Every "mesh" and "nurbsCurve" shape of the current host scene, in scene order.
std::vector<KObject> geometryShapes();

// Reads host geometry back into scene data. `objects` may hold mesh or "nurbsCurve" shapes,
// transforms (their mesh and curve shapes are taken) and mesh or curve data objects; other
// objects fail naming their type.
// - Meshes: points in world space (through the shape's world matrix; data objects as they
//   are), faces, the UV sets that map at least one face (the current set first), colour sets
//   (the current first) and the normals when they are user normals (they differ from what the
//   host computes for the same points and faces), turned to world space by the inverse
//   transpose when the shape is transformed. Face sets are the non-renderable sets holding the
//   shape whole or with face components (vertex components are named in `warnings`);
//   materials are the shading groups other than "initialShadingGroup", each named after the
//   node feeding its "surfaceShader" (else after the group).
// - Curves: world-space CVs (cartesian, with weights), host knots, degree and form; rational
//   when a weight differs from 1.
// Names are the transforms' names (data objects: "mesh1", "curve1", ...).
KStatus readHostScene(const std::vector<KObject>& objects, SceneData& scene);

} // namespace KovaIo
