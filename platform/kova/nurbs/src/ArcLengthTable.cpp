#include "LegendreSeries.h"
#include "MeasureSpan.h"

#include <algorithm>
#include <cmath>
#include <kova/nurbs/ArcLengthTable.h>
#include <limits>

namespace kova::nurbs {

namespace {

constexpr int kMaxSolverSteps = 100;
// A Halley step this small (relative to the piece) leaves an error of about its cube: done.
constexpr double kSettledStep = 1e-7;

static_assert(detail::kRuleOrder <= detail::kMaxSeriesDegree);

// Cuts the series s of `degree` (a piece's length from its start, `size` in all) by dropping
// trailing coefficients whose magnitudes sum to at most half of `slack` (each P_k is at most 1 in
// magnitude on [-1, 1]), then resets the linear part so that the cut series is still 0 at -1 and
// `size` at 1, which moves it by no more than what was dropped. Returns the new degree.
int truncateSeries(double* s, int degree, double size, double slack) {
    double dropped = 0.0;
    while (degree > 1 && dropped + std::abs(s[degree]) <= 0.5 * slack)
        dropped += std::abs(s[degree--]);
    double even = 0.0; // sum of s_k, k >= 2, with the signs of P_k at -1 and 1
    double odd = 0.0;
    for (int k = 2; k <= degree; ++k)
        (k % 2 == 0 ? even : odd) += s[k];
    // s0 - s1 + even - odd = 0 and s0 + s1 + even + odd = size.
    s[0] = 0.5 * size - even;
    s[1] = 0.5 * size - odd;
    return degree;
}

} // namespace

ArcLengthTable::ArcLengthTable(Curve curve, double tolerance) : curve_(std::move(curve)) {
    if (!curve_.evaluable())
        return;
    const double tol = Curve::usableTolerance(tolerance);
    const double* U = curve_.fullKnots_.data();
    // Built in scratch space of the thread, then copied at their exact sizes: a table lives as
    // long as its curve, and the memory it holds is what a conversion of many curves touches.
    static thread_local std::vector<Piece> pieces;
    static thread_local std::vector<double> series;
    pieces.clear();
    series.clear();
    for (int span = curve_.firstSpan_; span <= curve_.lastSpan_; ++span) {
        if (!(U[span + 1] > U[span]))
            continue;
        curve_.measureSpan(span, U[span], U[span + 1], tol, [&](const detail::MeasuredPiece& m) {
            Piece piece{.span = span,
                        .degree = -1,
                        .series = series.size(),
                        .t0 = m.t0,
                        .t1 = m.t1,
                        .start = total_,
                        .size = m.length,
                        .speed0 = m.ends.start,
                        .speed1 = m.ends.end};
            if (m.speeds) {
                // The speed's interpolating series, then the series of its integral, cut where
                // the rest is within what the piece's budget leaves over.
                constexpr int n = detail::GaussLegendreRule::order;
                double speed[n];
                detail::legendreCoefficients(detail::gaussLegendreRule(), m.speeds, speed);
                const double half = 0.5 * (m.t1 - m.t0);
                double length[n + 1];
                detail::integrateLegendre(speed, n - 1, half, length);
                piece.degree =
                    truncateSeries(length, n, m.length, std::fmax(m.budget - m.error, 0.0));
                series.insert(series.end(), length, length + piece.degree + 1);
            }
            pieces.push_back(piece);
            total_ += m.length;
        });
    }
    pieces_.assign(pieces.begin(), pieces.end());
    series_.assign(series.begin(), series.end());
}

ArcLengthTable::PieceLength ArcLengthTable::pieceLength(const Piece& piece, double t) const {
    if (piece.degree < 0)
        return {curve_.chordLength(piece.span, piece.t0, t), curve_.speed(piece.span, t), 0.0};
    // The series is exact at the ends up to rounding; report them exactly.
    const double half = 0.5 * (piece.t1 - piece.t0);
    const double x = (t - (piece.t0 + half)) / half;
    const auto [length, slope, curvature] = detail::evaluateLegendre(
        series_.data() + piece.series, piece.degree, std::clamp(x, -1.0, 1.0));
    const double exact = t <= piece.t0 ? 0.0 : t >= piece.t1 ? piece.size : length;
    return {exact, slope / half, curvature / (half * half)};
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
    return piece.start + pieceLength(piece, t).length;
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
    if (!(piece.size > 0.0))
        return piece.t0;
    const double target = std::min(s - piece.start, piece.size);

    // Halley's method (Newton's with the second derivative, converging cubically) on the piece's
    // length minus the target, kept inside a shrinking bracket; a step that leaves the bracket
    // (or a zero slope) falls back to bisection. Stops once the length error is at the rounding
    // level of the data, or after a step so small that what it leaves is.
    const double width = piece.t1 - piece.t0;
    double lo = piece.t0;
    double hi = piece.t1;
    double t = firstGuess(piece, target);
    constexpr double eps = std::numeric_limits<double>::epsilon();
    const double resolution = 2.0 * eps * std::max({std::abs(lo), std::abs(hi), width});
    const double lengthResolution = 4.0 * eps * s;
    for (int step = 0; step < kMaxSolverSteps; ++step) {
        const auto [length, slope, curvature] = pieceLength(piece, t);
        const double error = length - target;
        if (std::abs(error) <= lengthResolution)
            break;
        if (error > 0.0)
            hi = t;
        else
            lo = t;
        double next = t - 2.0 * error * slope / (2.0 * slope * slope - error * curvature);
        const bool halley = next > lo && next < hi;
        if (!halley)
            next = 0.5 * (lo + hi);
        if ((halley && std::abs(next - t) <= kSettledStep * width) ||
            std::abs(next - t) <= resolution || hi - lo <= resolution) {
            t = next;
            break;
        }
        t = next;
    }
    return t;
}

} // namespace kova::nurbs
