#pragma once

#include "AdaptiveLegendre.h"
#include "SpanSpeed.h"

#include <kova/nurbs/Curve.h>
#include <limits>

namespace kova::nurbs {

// Curve length and the arc-length table share this, so that both add the same pieces in the same
// order and Curve::length() equals ArcLengthTable::totalLength() exactly. A linear span is one
// piece measured as its chord (no rule).
template <class Piece>
void Curve::measureSpan(int span, double a, double b, double tolerance, Piece&& piece) const {
    if (degree_ == 1) {
        const detail::EndValues ends{speed(span, a), speed(span, b)};
        piece(detail::MeasuredPiece{a, b, chordLength(span, a, b), nullptr, ends, 0.0, 0.0});
        return;
    }
    // Below rounding noise of the data there is nothing left to refine.
    const double floor = 64.0 * std::numeric_limits<double>::epsilon() * scale_;
    detail::adaptiveLegendre(detail::SpanSpeed(*this, span), a, b, tolerance, floor, piece);
}

} // namespace kova::nurbs
