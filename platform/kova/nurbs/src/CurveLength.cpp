#include "MeasureSpan.h"

#include <algorithm>
#include <cmath>
#include <kova/nurbs/ArcLengthTable.h>
#include <kova/nurbs/Curve.h>
#include <limits>

namespace kova::nurbs {

double Curve::usableTolerance(double tolerance) {
    if (!(tolerance > kMinTolerance))
        return kMinTolerance;
    return std::min(tolerance, kMaxTolerance);
}

double Curve::speed(int span, double t) const {
    Vec3 d[2];
    evaluate(span, t, 1, d);
    return norm(d[1]);
}

double Curve::chordLength(int span, double a, double b) const {
    // A linear piece, rational or not, runs straight and monotonically: its length is its chord.
    Vec3 pa;
    Vec3 pb;
    evaluate(span, a, 0, &pa);
    evaluate(span, b, 0, &pb);
    return distance(pa, pb);
}

double Curve::length(double tolerance) const {
    if (!evaluable_)
        return 0.0;
    const auto [start, end] = knotDomain();
    return lengthBetween(start, end, tolerance);
}

double Curve::lengthBetween(double t0, double t1, double tolerance) const {
    if (!evaluable_)
        return 0.0;
    if (std::isnan(t0) || std::isnan(t1))
        return std::numeric_limits<double>::quiet_NaN();
    if (t0 > t1)
        std::swap(t0, t1);
    const double tol = usableTolerance(tolerance);
    const double* U = fullKnots_.data();
    spanOf(t1); // clamps t1 to the domain
    double total = 0.0;
    for (int span = spanOf(t0); span <= lastSpan_; ++span) {
        const double a = std::max(t0, U[span]);
        const double b = std::min(t1, U[span + 1]);
        if (b > a)
            measureSpan(span, a, b, tol,
                        [&](const detail::MeasuredPiece& piece) { total += piece.length; });
        if (U[span + 1] >= t1)
            break;
    }
    return total;
}

double Curve::paramFromLength(double s, double tolerance) const {
    return ArcLengthTable(*this, tolerance).paramAt(s);
}

} // namespace kova::nurbs
