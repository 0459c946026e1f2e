#pragma once

#include <cmath>

namespace kova::nurbs::detail {

// Deepest halving of one adaptive piece: 2^-12 of the interval it started from.
constexpr int kMaxRefinement = 12;

// One application of the 7-point Gauss-Legendre rule and its 15-point Kronrod extension to the
// integral of f over [a, b]: `kronrod` is the estimate (exact for polynomials of degree 22),
// |kronrod - gauss| a pessimistic bound of its error.
struct GaussKronrod {
    double kronrod;
    double gauss;
};

template <class F>
GaussKronrod gaussKronrod15(const F& f, double a, double b) {
    // Nodes on [-1, 1], outermost first; the odd ones (and the centre) are the Gauss nodes.
    static constexpr double kNodes[7] = {
        0.991455371120812639206854697526329, 0.949107912342758524526189684047851,
        0.864864423359769072789712788640926, 0.741531185599394439863864773280788,
        0.586087235467691130294144845693013, 0.405845151377397166906606412076961,
        0.207784955007898467600689403773245};
    static constexpr double kKronrodWeights[8] = {
        0.022935322010529224963732008058970, 0.063092092629978553290700663189204,
        0.104790010322250183839876322541518, 0.140653259715525918745189590510238,
        0.169004726639267902826583426598550, 0.190350578064785409913256402421014,
        0.204432940075298892414161999234649, 0.209482141084727828012999174891714};
    static constexpr double kGaussWeights[4] = {
        0.129484966168869693270611432679082, 0.279705391489276667901467771423780,
        0.381830050505118944950369775488975, 0.417959183673469387755102040816327};
    const double half = 0.5 * (b - a);
    const double mid = 0.5 * (a + b);
    const double centre = f(mid);
    double kronrod = kKronrodWeights[7] * centre;
    double gauss = kGaussWeights[3] * centre;
    for (int i = 0; i < 7; ++i) {
        const double pair = f(mid - half * kNodes[i]) + f(mid + half * kNodes[i]);
        kronrod += kKronrodWeights[i] * pair;
        if (i % 2 == 1)
            gauss += kGaussWeights[i / 2] * pair;
    }
    return {kronrod * half, gauss * half};
}

// The Kronrod estimate over [a, b] alone, as a piece of an adaptive integration measured it.
template <class F>
double kronrod15(const F& f, double a, double b) {
    return gaussKronrod15(f, a, b).kronrod;
}

// The 4-point Gauss-Legendre rule for the integral of f over [a, b] (exact for polynomials of
// degree 7): cheap corrections over short intervals.
template <class F>
double gauss4(const F& f, double a, double b) {
    static constexpr double kNodes[2] = {0.339981043584856264802665759103245,
                                         0.861136311594052575223946488892809};
    static constexpr double kWeights[2] = {0.652145154862546142626936050778000,
                                           0.347854845137453857373063949221999};
    const double half = 0.5 * (b - a);
    const double mid = 0.5 * (a + b);
    double sum = 0.0;
    for (int i = 0; i < 2; ++i)
        sum += kWeights[i] * (f(mid - half * kNodes[i]) + f(mid + half * kNodes[i]));
    return sum * half;
}

// Integrates f over [a, b], halving until the error bound of a piece is within `budget` (halved
// with each level), and reports every accepted piece to piece(a, b, integral), in order from a
// to b. A NaN bound is accepted rather than chased.
template <class F, class Piece>
void refineGaussKronrod(const F& f, double a, double b, const GaussKronrod& estimate, double budget,
                        int depth, Piece& piece) {
    const double m = 0.5 * (a + b);
    const bool settled = !(std::abs(estimate.kronrod - estimate.gauss) > budget);
    if (settled || depth >= kMaxRefinement || !(m > a && m < b)) {
        piece(a, b, estimate.kronrod);
        return;
    }
    refineGaussKronrod(f, a, m, gaussKronrod15(f, a, m), 0.5 * budget, depth + 1, piece);
    refineGaussKronrod(f, m, b, gaussKronrod15(f, m, b), 0.5 * budget, depth + 1, piece);
}

// The integral of f over [a, b] to `tolerance` relative to its own size (but never chasing an
// absolute error below `floor`), reported piece by piece as refineGaussKronrod does.
template <class F, class Piece>
void adaptiveGaussKronrod(const F& f, double a, double b, double tolerance, double floor,
                          Piece&& piece) {
    const GaussKronrod whole = gaussKronrod15(f, a, b);
    const double budget = std::fmax(tolerance * std::abs(whole.kronrod), floor);
    refineGaussKronrod(f, a, b, whole, budget, 0, piece);
}

} // namespace kova::nurbs::detail
