#pragma once

#include "GaussLegendre.h"

#include <algorithm>
#include <cmath>

namespace kova::nurbs::detail {

// Deepest halving of one adaptive piece: 2^-12 of the interval it started from.
constexpr int kMaxRefinement = 12;

// f at the ends of an interval, evaluated once and shared with its halves.
struct EndValues {
    double start;
    double end;
};

// One piece of an interval as an adaptive integration accepted it: the integral over [t0, t1],
// the integrand at the rule's nodes mapped onto [t0, t1] (speeds[i] at node i; null for a piece
// measured otherwise), from which the integral at any point inside can be recovered (see
// ArcLengthTable), the integrand at the ends, and the error the piece was allowed and the one
// estimated for it.
struct MeasuredPiece {
    double t0;
    double t1;
    double length;
    const double* speeds;
    EndValues ends;
    double budget;
    double error;
};

// What one rule says about the integral of f over [a, b]: its value, and a bound of the error of
// the integral of the interpolating series at any point of the interval: twice the half width
// times the larger of the last two Legendre coefficients (which dominate the rest of a converging
// series) and the series' miss of f at the two ends (where interpolation at the nodes is worst,
// and which exposes kinks that leave the last coefficients small).
struct RuleEstimate {
    double length;
    double error;
};

template <class F>
RuleEstimate applyRule(const F& f, double a, double b, EndValues ends, double* values) {
    const GaussLegendreRule& rule = gaussLegendreRule();
    constexpr int n = GaussLegendreRule::order;
    const double half = 0.5 * (b - a);
    const double mid = 0.5 * (a + b);
    double sum = 0.0;
    double atStart = 0.0;
    double atEnd = 0.0;
    for (int i = 0; i < n; ++i) {
        values[i] = f(mid + half * rule.nodes[i]);
        sum += rule.weights[i] * values[i];
        atStart += rule.atEnds[0][i] * values[i];
        atEnd += rule.atEnds[1][i] * values[i];
    }
    // c_{n-2} and c_{n-1}: the last even and odd coefficients.
    double lastEven = 0.0;
    double lastOdd = 0.0;
    for (int i = 0; i < n / 2; ++i) {
        lastEven += rule.even[i][n / 2 - 1] * (values[i] + values[n - 1 - i]);
        lastOdd += rule.odd[i][n / 2 - 1] * (values[i] - values[n - 1 - i]);
    }
    const double tail = std::abs(lastEven) + std::abs(lastOdd);
    const double miss = std::fmax(std::abs(ends.start - atStart), std::abs(ends.end - atEnd));
    return {half * sum, 2.0 * half * std::fmax(tail, miss)};
}

// Settles [a, b], for which the rule gave `estimate` from `values`: accepts it when the estimate
// is within `budget`, else halves it, the budget halving with it, and reports every accepted
// piece in order. A NaN error is accepted rather than chased.
template <class F, class Piece>
void refineLegendre(const F& f, double a, double b, EndValues ends, double budget, int depth,
                    const RuleEstimate& estimate, const double* values, Piece& piece) {
    const double m = 0.5 * (a + b);
    if (!(estimate.error > budget) || depth >= kMaxRefinement || !(m > a && m < b)) {
        piece(MeasuredPiece{a, b, estimate.length, values, ends, budget, estimate.error});
        return;
    }
    const double atMiddle = f(m);
    const auto settle = [&](double lo, double hi, EndValues halfEnds) {
        double halfValues[GaussLegendreRule::order];
        const RuleEstimate half = applyRule(f, lo, hi, halfEnds, halfValues);
        refineLegendre(f, lo, hi, halfEnds, 0.5 * budget, depth + 1, half, halfValues, piece);
    };
    settle(a, m, EndValues{ends.start, atMiddle});
    settle(m, b, EndValues{atMiddle, ends.end});
}

// The integral of f over [a, b] to `tolerance` relative to its own size (but never chasing an
// absolute error below `floor`), reported piece by piece as refineLegendre does.
template <class F, class Piece>
void adaptiveLegendre(const F& f, double a, double b, double tolerance, double floor,
                      Piece&& piece) {
    const EndValues ends{f(a), f(b)};
    double values[GaussLegendreRule::order];
    const RuleEstimate whole = applyRule(f, a, b, ends, values);
    const double budget = std::fmax(tolerance * std::abs(whole.length), floor);
    refineLegendre(f, a, b, ends, budget, 0, whole, values, piece);
}

} // namespace kova::nurbs::detail
