#pragma once

#include <kova_io/SceneData.h>
#include <string>
#include <vector>

namespace KovaIo {

// Writes `scene` as OBJ text that readObj reads back value for value:
// - each mesh as `o name`, its points (`v x y z`, or `v x y z r g b` when its first colour
//   set holds one colour per point), the first UV set as `vt`, the normals as `vn`, and its
//   faces with v/vt/vn indices; `g` and `usemtl` lines where a face's groups or material
//   change (a bare `usemtl` for faces without one);
// - each curve as `o name`, one `v x y z [w]` per CV, `cstype [rat] bspline`, `deg`,
//   `curv` over its knot domain, `parm u` with the full knot vector (the host's knots with
//   the missing first and last knot made up as KnotVector.h describes), and `end`.
// Numbers are written in the shortest form that reads back to the same value. What OBJ
// cannot carry (further UV and colour sets, colours that differ between the face-vertices of
// a point, alpha) is left out and named in `warnings`.
std::string writeObj(const SceneData& scene, std::vector<std::string>& warnings);

} // namespace KovaIo
