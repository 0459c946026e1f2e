#pragma once

#include <array>
#include <vector>

namespace KovaIo {

// The host form (1 open, 2 closed, 3 periodic) of a curve that a file gives without one, from
// its CVs (x, y, z, w) and its full knot vector (numCVs + degree + 1 knots):
// - periodic when the last `degree` CVs repeat the first ones exactly and the knot intervals
//   repeat every numCVs - degree intervals;
// - closed when both ends are clamped (degree + 1 equal knots) and the first and last CV are
//   the same;
// - open otherwise.
int inferCurveForm(int degree, const std::vector<std::array<double, 4>>& cvs,
                   const std::vector<double>& fullKnots);

} // namespace KovaIo
