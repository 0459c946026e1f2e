#pragma once

#include <kova/KFnNurbsCurve.h>
#include <vector>

namespace ZelvanePlugin::CurvesInput {

// The parameter of each CV: its Greville abscissa, the mean of the `degree` host knots starting
// at knot j (the host's knot vector has numCVs + degree - 1 knots). Ascending for a valid
// curve. Empty when the degree is below 1 or the knots can't be read or are too few. Parallel
// over the CVs.
std::vector<double> cvParameters(const KFnNurbsCurve& curve, int numCVs, int degree);

} // namespace ZelvanePlugin::CurvesInput
