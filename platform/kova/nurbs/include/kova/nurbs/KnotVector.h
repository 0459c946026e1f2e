#pragma once

#include <kova/nurbs/CurveForm.h>
#include <kova/nurbs/NurbsExport.h>
#include <span>
#include <vector>

namespace kova::nurbs {

// Knot vector conventions.
//
// The textbook ("full") knot vector U of a curve with n CVs and degree p has n + p + 1 knots. The
// host keeps n + p - 1 of them ("host knots"): the full vector without its first and last knot,
// so host[i] = U[i + 1]. Those two knots never influence the curve on its domain [U[p], U[n]]
// (host [host[p-1], host[n-1]]), which is why the host drops them. A cubic Bezier curve with 4 CVs
// has the host knots 0 0 0 1 1 1 and the full knots 0 0 0 0 1 1 1 1.

// The full knot vector for `hostKnots` of a curve of degree `degree` and form `form`. The two
// missing end knots are made up, each end on its own:
//   - periodic form: extended periodically, so the interval before the first knot equals the
//     interval one period (numCVs - degree intervals) later, and likewise after the last knot;
//   - otherwise, a clamped end (its first or last `degree` host knots are equal) repeats its end
//     knot once more;
//   - otherwise (an unclamped end) the neighbouring interval is repeated outwards.
// Returns an empty vector when degree < 1 or there are fewer than max(2, degree) host knots, or,
// for the periodic form, fewer than 2 * degree.
KOVA_NURBS_API std::vector<double> fullKnotsFromHost(std::span<const double> hostKnots, int degree,
                                                     Form form);

// The host knots for the full knot vector `fullKnots`: all but its first and last knot. Returns an
// empty vector when `fullKnots` has fewer than 3 knots.
KOVA_NURBS_API std::vector<double> hostKnotsFromFull(std::span<const double> fullKnots);

} // namespace kova::nurbs
