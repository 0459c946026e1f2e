#pragma once

#include <array>

namespace kova::nurbs::detail {

// Highest degree a series may have.
constexpr int kMaxSeriesDegree = 32;

// A Legendre series sum_k a[k] P_k(x), k = 0 .. degree, on [-1, 1].

// Value, first and second derivative of a series at x, by the three-term recurrences
// P_{k+1} = ((2k+1) x P_k - k P_{k-1}) / (k+1) and P^(d)_{k+1} = P^(d)_{k-1} + (2k+1) P^(d-1)_k.
struct SeriesPoint {
    double value;
    double slope;
    double curvature;
};

// Factors of the recurrence: kRecurrence[k] = {(2k+1) / (k+1), k / (k+1)}.
inline constexpr auto kRecurrence = [] {
    std::array<std::array<double, 2>, kMaxSeriesDegree> factors{};
    for (int k = 0; k < kMaxSeriesDegree; ++k)
        factors[k] = {(2.0 * k + 1.0) / (k + 1.0), k / (k + 1.0)};
    return factors;
}();

// `degree` at most kMaxSeriesDegree.
inline SeriesPoint evaluateLegendre(const double* a, int degree, double x) {
    SeriesPoint sum{a[0], 0.0, 0.0};
    if (degree == 0)
        return sum;
    double p0 = 1.0; // P_{k-1}, P'_{k-1}, P''_{k-1}
    double d0 = 0.0;
    double c0 = 0.0;
    double p1 = x; // P_k, P'_k, P''_k
    double d1 = 1.0;
    double c1 = 0.0;
    sum.value += a[1] * x;
    sum.slope += a[1];
    for (int k = 1; k < degree; ++k) {
        const double p2 = kRecurrence[k][0] * x * p1 - kRecurrence[k][1] * p0;
        const double d2 = d0 + (2 * k + 1) * p1;
        const double c2 = c0 + (2 * k + 1) * d1;
        sum.value += a[k + 1] * p2;
        sum.slope += a[k + 1] * d2;
        sum.curvature += a[k + 1] * c2;
        p0 = p1;
        p1 = p2;
        d0 = d1;
        d1 = d2;
        c0 = c1;
        c1 = c2;
    }
    return sum;
}

// The series of the integral scale * (integral of f from -1 to x), where f is the series c of
// `degree`: degree + 1 coefficients into s. Uses integral_{-1}^{x} P_0 = P_0 + P_1 and
// integral_{-1}^{x} P_k = (P_{k+1} - P_{k-1}) / (2k+1) for k >= 1.
inline void integrateLegendre(const double* c, int degree, double scale, double* s) {
    for (int k = 0; k <= degree + 1; ++k)
        s[k] = 0.0;
    s[0] = scale * c[0];
    s[1] = scale * c[0];
    for (int k = 1; k <= degree; ++k) {
        const double part = scale * c[k] / (2 * k + 1);
        s[k + 1] += part;
        s[k - 1] -= part;
    }
}

} // namespace kova::nurbs::detail
