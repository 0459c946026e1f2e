#include "GaussLegendre.h"

#include <cmath>
#include <numbers>

namespace kova::nurbs::detail {

namespace {

// P_0(x) .. P_{count-1}(x) by the three-term recurrence.
void legendreValues(double x, int count, double* values) {
    values[0] = 1.0;
    if (count > 1)
        values[1] = x;
    for (int k = 1; k + 1 < count; ++k)
        values[k + 1] = ((2 * k + 1) * x * values[k] - k * values[k - 1]) / (k + 1);
}

// Nodes are the roots of P_n, found by Newton's method from Chebyshev-like first guesses for the
// positive half and mirrored; the weights are 2 / ((1 - x^2) P_n'(x)^2).
GaussLegendreRule makeRule() {
    constexpr int n = GaussLegendreRule::order;
    GaussLegendreRule rule;
    double values[n + 1];
    for (int i = 0; i < n / 2; ++i) {
        double x = std::cos(std::numbers::pi * (i + 0.75) / (n + 0.5));
        double slope = 0.0;
        for (int iteration = 0; iteration < 100; ++iteration) {
            legendreValues(x, n + 1, values);
            slope = n * (x * values[n] - values[n - 1]) / (x * x - 1.0);
            const double step = values[n] / slope;
            x -= step;
            if (std::abs(step) <= 4e-16)
                break;
        }
        legendreValues(x, n + 1, values);
        slope = n * (x * values[n] - values[n - 1]) / (x * x - 1.0);
        const int mirror = n - 1 - i;
        rule.nodes[i] = x;
        rule.nodes[mirror] = -x;
        rule.weights[i] = rule.weights[mirror] = 2.0 / ((1.0 - x * x) * slope * slope);
        for (int k = 0; k < n; ++k) {
            const double transform = 0.5 * (2 * k + 1) * rule.weights[i] * values[k];
            const double sign = k % 2 == 0 ? 1.0 : -1.0; // P_k(-x) = (-1)^k P_k(x)
            (k % 2 == 0 ? rule.even : rule.odd)[i][k / 2] = transform;
            // P_k(-1) = (-1)^k, P_k(1) = 1.
            rule.atEnds[0][i] += sign * transform;
            rule.atEnds[1][i] += transform;
            rule.atEnds[0][mirror] += transform;
            rule.atEnds[1][mirror] += sign * transform;
        }
    }
    return rule;
}

} // namespace

const GaussLegendreRule& gaussLegendreRule() {
    static const GaussLegendreRule rule = makeRule();
    return rule;
}

} // namespace kova::nurbs::detail
