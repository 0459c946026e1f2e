#pragma once

#include <kova/KStatus.h>
#include <kova_io/SceneData.h>
#include <string>
#include <vector>

namespace KovaIo {

// Writes the meshes of `scene` through the Assimp exporter `assimpFormat` ("ply", "glb2",
// "stl", "collada", "fbx", ...). Each mesh becomes a node holding one Assimp mesh per
// material (faces without a material share Assimp's default material), so faces are
// regrouped by material. Assimp stores values per vertex: every face-vertex becomes a vertex
// with its point's position and its normal, UVs (up to 8 sets) and colours (up to 8 sets);
// face-vertices without a value get zeros, and normals are written only when every
// face-vertex has one. Reading the file back with welding restores the shared points.
// Curves and face sets are not carried and are named in `warnings`.
KStatus writeWithAssimp(const std::string& path, const std::string& assimpFormat,
                        const SceneData& scene, std::vector<std::string>& warnings);

} // namespace KovaIo
