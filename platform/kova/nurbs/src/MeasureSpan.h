#pragma once

#include "GaussLegendre.h"

#include <kova/nurbs/Curve.h>
#include <limits>

namespace kova::nurbs {

// Curve length and the arc-length table share this, so that both add the same pieces in the same
// order and Curve::length() equals ArcLengthTable::totalLength() exactly.
template <class Piece>
void Curve::measureSpan(int span, double a, double b, double tolerance, Piece&& piece) const {
    if (degree_ == 1) {
        piece(a, b, chordLength(span, a, b));
        return;
    }
    // Below rounding noise of the data there is nothing left to refine.
    const double floor = 64.0 * std::numeric_limits<double>::epsilon() * scale_;
    detail::adaptiveGaussKronrod([&](double t) { return speed(span, t); }, a, b, tolerance, floor,
                                 piece);
}

} // namespace kova::nurbs
