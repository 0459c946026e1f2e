#pragma once

#include "mesh_in/MeshConversion.h"

#include <kova/KFnGeometryData.h>
#include <kova/KStringArray.h>

// The steps of the mesh converter after points and faces, in the order it runs them. Each
// adds its properties to the conversion's object; a set, tag or channel that can't be
// converted is left out and the others are converted.
namespace ZelvanePlugin::MeshInput {

// "N": point normals computed from the converted geometry, when the options ask for them.
void addPointNormals(MeshConversion& conversion);
// Starts building the face-vertex adjacency when the channel filter accepts one of
// `colorSetNames` (the colour copies need it); nothing is built otherwise.
void startFaceVertexAdjacency(MeshConversion& conversion, const KStringArray& colorSetNames);
// "faceVertexN" and its index property: the host's normals through the normal matrix.
void addFaceVertexNormals(MeshConversion& conversion);
// Face normals are not converted; asking for them is reported.
void reportFaceNormals(const MeshConversion& conversion);
// "uv", "uv1", ...: the accepted UV sets that map every face, "map1" first.
void addUVSets(MeshConversion& conversion);
// One point property per accepted colour set, named after it.
void addColorSets(MeshConversion& conversion, const KStringArray& colorSetNames);
// "pointTag(<tag>)" / "faceTag(<tag>)": the component tags that the tag filter accepts.
void addComponentTags(MeshConversion& conversion, const KFnGeometryData& geometry);
// One point or face membership property per accepted set that the mesh's node belongs to.
void addFaceSets(MeshConversion& conversion);

} // namespace ZelvanePlugin::MeshInput
