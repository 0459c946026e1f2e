#pragma once

#include <kova/KStatus.h>
#include <kova_io/SceneData.h>
#include <string>
#include <string_view>

namespace KovaIo {

// Reads OBJ text into `scene`, keeping its indexing:
// - `o name` starts a new piece of geometry; everything before the first `o` is named
//   `defaultName`. Each piece's faces make one mesh, its free-form curves one curve each.
// - A mesh takes the points, texture coordinates and normals its faces use, in file order
//   (entries that nothing uses are not kept), with the file's per-face-vertex indices; `vt`
//   becomes the UV set "map1"; `v x y z r g b [a]` colours the colour set "colorSet1".
// - `g a b ...` puts the faces that follow in the face sets a, b, ...; `usemtl name` assigns
//   them the material `name` (a bare `usemtl` or `g` clears). `mtllib`, `s` and the display
//   statements are accepted and ignored; points (`p`), lines (`l`) and surfaces are skipped
//   with a warning.
// - `cstype [rat] bspline`, `deg`, `curv u0 u1 i...`, `parm u ...`, `end` make a NURBS curve;
//   the file's full knot vector (numCVs + degree + 1 knots) loses its first and last knot to
//   become the host's; rational weights come from `v x y z w`. The form is read from the
//   data: periodic when the last `degree` CVs repeat the first ones and the knot intervals
//   repeat with the period, closed when a curve clamped at both ends starts and ends on the
//   same CV, open otherwise.
// On failure (not text, a bad number, an index out of range, a curve whose knot count does
// not fit) the status reads "line N: reason" and `scene` is left empty. Warnings go to
// `scene.warnings`.
KStatus readObj(std::string_view text, const std::string& defaultName, SceneData& scene);

} // namespace KovaIo
