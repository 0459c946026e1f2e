#pragma once

#include <kova/KStatus.h>
#include <kova_io/SceneData.h>
#include <string>

namespace KovaIo {

// Reads a file through Assimp (PLY, glTF/GLB, FBX, COLLADA, STL and the other formats it
// reads). Each node with meshes becomes one mesh record: the node's meshes (Assimp splits a
// mesh by material) are merged, their points moved by the node's world matrix (normals by its
// inverse transpose), and each face gets the material of its Assimp mesh (Assimp's stand-in
// "DefaultMaterial" is no material). Points and lines are skipped with a warning.
//
// Formats that store values per vertex split a point wherever its normal, UV or colour
// differs. With `weld` the points are welded back: face-vertices at exactly the same position
// (bit for bit) share one point, while normals, UVs (sets "map1", "map2", ...) and colours
// ("colorSet1", ... RGBA) stay per face-vertex, each as a table of distinct values plus ids.
// Without `weld` every Assimp vertex stays a point of its own.
// Reading takes at most a memory budget tied to the file's size (256 MiB plus 64 bytes per
// byte of the file): a file that declares more elements than it holds is refused, as Assimp's
// readers would otherwise allocate whatever it declares.
// On failure the status carries Assimp's reason in one line and `scene` is empty.
KStatus readWithAssimp(const std::string& path, bool weld, SceneData& scene);

} // namespace KovaIo
