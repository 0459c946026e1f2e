#pragma once

#include <array>

namespace kova::nurbs::detail {

// Order of the Gauss-Legendre rule arc lengths are measured with. On the spans of typical curves
// it converges where lower orders fail (their failed attempts would cost more than they save),
// and the series it yields is cut to the degree each piece needs (ArcLengthTable).
constexpr int kRuleOrder = 32;

// The n-point Gauss-Legendre rule on [-1, 1] (n even; exact for polynomials of degree 2n - 1)
// and the discrete Legendre transform that belongs to it: from the values f_i of a function at
// the nodes, the coefficients c_k (k < n) of the Legendre series of degree n - 1 that
// interpolates f at the nodes.
//
// Node n - 1 - i mirrors node i (nodes descend from near 1 to near -1), and P_k is even or odd
// with k, so the transform works on the sums e_i = f_i + f_{n-1-i} and differences
// o_i = f_i - f_{n-1-i} of the first n/2 nodes: c_{2j} = sum_i even[i][j] e_i and
// c_{2j+1} = sum_i odd[i][j] o_i. The series at -1 and at 1 is sum_i atEnds[0][i] f_i and
// sum_i atEnds[1][i] f_i over all nodes.
struct GaussLegendreRule {
    static constexpr int order = kRuleOrder;
    std::array<double, order> nodes{};
    std::array<double, order> weights{};
    std::array<std::array<double, order / 2>, order / 2> even{};
    std::array<std::array<double, order / 2>, order / 2> odd{};
    std::array<std::array<double, order>, 2> atEnds{};
};

// The rule; built on first use, then shared.
const GaussLegendreRule& gaussLegendreRule();

// The coefficients c_0 .. c_{n-1} of the series that interpolates `values` (one per node of
// `rule`, n = rule.order).
inline void legendreCoefficients(const GaussLegendreRule& rule, const double* values, double* c) {
    constexpr int half = GaussLegendreRule::order / 2;
    double evenSums[half] = {};
    double oddSums[half] = {};
    // Node by node, so that the inner loops are independent and vectorise.
    for (int i = 0; i < half; ++i) {
        const double e = values[i] + values[rule.order - 1 - i];
        const double o = values[i] - values[rule.order - 1 - i];
        for (int j = 0; j < half; ++j) {
            evenSums[j] += rule.even[i][j] * e;
            oddSums[j] += rule.odd[i][j] * o;
        }
    }
    for (int j = 0; j < half; ++j) {
        c[2 * j] = evenSums[j];
        c[2 * j + 1] = oddSums[j];
    }
}

} // namespace kova::nurbs::detail
