#include "MeasureSpan.h"

#include <algorithm>
#include <cmath>
#include <kova/nurbs/ArcLengthTable.h>
#include <limits>

namespace kova::nurbs {

namespace {

constexpr int kMaxNewtonSteps = 100;
// Steps up to this fraction of a piece are integrated on their own by a 4-point rule, whose error
// on them is far below rounding.
constexpr double kShortStep = 1e-2;

} // namespace

ArcLengthTable::ArcLengthTable(Curve curve, double tolerance) : curve_(std::move(curve)) {
    if (!curve_.evaluable())
        return;
    const double tol = Curve::usableTolerance(tolerance);
    const double* U = curve_.fullKnots_.data();
    pieces_.reserve(2 * static_cast<std::size_t>(curve_.lastSpan_ - curve_.firstSpan_ + 1));
    for (int span = curve_.firstSpan_; span <= curve_.lastSpan_; ++span) {
        if (!(U[span + 1] > U[span]))
            continue;
        curve_.measureSpan(span, U[span], U[span + 1], tol, [&](double t0, double t1, double size) {
            const bool follows = !pieces_.empty() && pieces_.back().span == span;
            const double speed0 = follows ? pieces_.back().speed1 : curve_.speed(span, t0);
            pieces_.push_back({span, t0, t1, total_, size, speed0, curve_.speed(span, t1)});
            total_ += size;
        });
    }
}

double ArcLengthTable::pieceLength(const Piece& piece, double t) const {
    if (curve_.degree() == 1)
        return curve_.chordLength(piece.span, piece.t0, t);
    return detail::kronrod15([&](double u) { return curve_.speed(piece.span, u); }, piece.t0, t);
}

double ArcLengthTable::firstGuess(const Piece& piece, double target) {
    const double width = piece.t1 - piece.t0;
    const double u = std::clamp(target / piece.size, 0.0, 1.0);
    const double linear = piece.t0 + width * u;
    // Slopes dt/du at the ends; a (nearly) stationary end makes the inverse steep, where the
    // Hermite form would overshoot: stay linear then.
    const double m0 = piece.size / piece.speed0;
    const double m1 = piece.size / piece.speed1;
    if (!(m0 < 3.0 * width && m1 < 3.0 * width))
        return linear;
    const double u2 = u * u;
    const double u3 = u2 * u;
    const double guess = (2 * u3 - 3 * u2 + 1) * piece.t0 + (u3 - 2 * u2 + u) * m0 +
                         (3 * u2 - 2 * u3) * piece.t1 + (u3 - u2) * m1;
    return guess > piece.t0 && guess < piece.t1 ? guess : linear;
}

double ArcLengthTable::lengthAt(double t) const {
    if (pieces_.empty())
        return 0.0;
    if (std::isnan(t))
        return std::numeric_limits<double>::quiet_NaN();
    t = std::clamp(t, pieces_.front().t0, pieces_.back().t1);
    auto it = std::upper_bound(pieces_.begin(), pieces_.end(), t,
                               [](double value, const Piece& piece) { return value < piece.t0; });
    const Piece& piece = *std::prev(it);
    return piece.start + pieceLength(piece, t);
}

double ArcLengthTable::paramAt(double s) const {
    if (pieces_.empty())
        return std::numeric_limits<double>::quiet_NaN();
    if (!(s > 0.0))
        return pieces_.front().t0;
    if (s >= total_)
        return pieces_.back().t1;
    auto it =
        std::upper_bound(pieces_.begin(), pieces_.end(), s,
                         [](double value, const Piece& piece) { return value < piece.start; });
    const Piece& piece = *std::prev(it);
    const double target = s - piece.start;
    if (!(piece.size > 0.0))
        return piece.t0;

    // Newton on lengthAt(t) - s, kept inside a shrinking bracket; a step that leaves the bracket
    // (or a zero speed) falls back to bisection. After a short step the length is updated by
    // integrating over the step alone. Stops once the step or the length error is at the
    // rounding level of the data.
    const auto speed = [&](double u) { return curve_.speed(piece.span, u); };
    const double width = piece.t1 - piece.t0;
    double lo = piece.t0;
    double hi = piece.t1;
    double t = firstGuess(piece, target);
    double length = pieceLength(piece, t);
    constexpr double eps = std::numeric_limits<double>::epsilon();
    const double resolution = 2.0 * eps * std::max({std::abs(lo), std::abs(hi), width});
    const double lengthResolution = 4.0 * eps * s;
    for (int step = 0; step < kMaxNewtonSteps; ++step) {
        const double error = length - target;
        if (std::abs(error) <= lengthResolution)
            break;
        if (error > 0.0)
            hi = t;
        else
            lo = t;
        double next = t - error / speed(t);
        if (!(next > lo && next < hi))
            next = 0.5 * (lo + hi);
        if (std::abs(next - t) <= resolution || hi - lo <= resolution) {
            t = next;
            break;
        }
        const bool shortStep = std::abs(next - t) <= kShortStep * width;
        length = shortStep && curve_.degree() > 1 ? length + detail::gauss4(speed, t, next)
                                                  : pieceLength(piece, next);
        t = next;
    }
    return t;
}

} // namespace kova::nurbs
