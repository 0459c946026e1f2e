#pragma once

#include <kova/nurbs/Curve.h>

namespace kova::nurbs::detail {

constexpr int kBasisSize = Curve::kMaxDegree + 1;

// The non-zero B-spline basis functions N_{span-p+j,p}(t), j = 0..p, and their derivatives up to
// `order` (any order up to kBasisSize - 1; ders needs order + 1 rows), on the full knot vector U:
// ders[k][j] is the k-th derivative. Orders above p are zero. `span` must be non-empty (U[span] <
// U[span+1]) and t in it; then every knot difference divided by spans it, so no division by zero
// can occur. Recurrence of Cox and de Boor in the triangular form of Piegl and Tiller.
inline void basisDerivatives(const double* U, int span, double t, int p, int order,
                             double (*ders)[kBasisSize]) {
    double ndu[kBasisSize][kBasisSize];
    double left[kBasisSize];
    double right[kBasisSize];
    ndu[0][0] = 1.0;
    for (int j = 1; j <= p; ++j) {
        left[j] = t - U[span + 1 - j];
        right[j] = U[span + j] - t;
        double saved = 0.0;
        for (int r = 0; r < j; ++r) {
            ndu[j][r] = right[r + 1] + left[j - r];
            const double temp = ndu[r][j - 1] / ndu[j][r];
            ndu[r][j] = saved + right[r + 1] * temp;
            saved = left[j - r] * temp;
        }
        ndu[j][j] = saved;
    }
    for (int j = 0; j <= p; ++j)
        ders[0][j] = ndu[j][p];

    const int top = order < p ? order : p;
    for (int k = top + 1; k <= order; ++k)
        for (int j = 0; j <= p; ++j)
            ders[k][j] = 0.0;
    if (top == 0)
        return;

    double a[2][kBasisSize];
    for (int r = 0; r <= p; ++r) {
        int s1 = 0;
        int s2 = 1;
        a[0][0] = 1.0;
        for (int k = 1; k <= top; ++k) {
            double d = 0.0;
            const int rk = r - k;
            const int pk = p - k;
            if (r >= k) {
                a[s2][0] = a[s1][0] / ndu[pk + 1][rk];
                d = a[s2][0] * ndu[rk][pk];
            }
            const int j1 = rk >= -1 ? 1 : -rk;
            const int j2 = r - 1 <= pk ? k - 1 : p - r;
            for (int j = j1; j <= j2; ++j) {
                a[s2][j] = (a[s1][j] - a[s1][j - 1]) / ndu[pk + 1][rk + j];
                d += a[s2][j] * ndu[rk + j][pk];
            }
            if (r <= pk) {
                a[s2][k] = -a[s1][k - 1] / ndu[pk + 1][r];
                d += a[s2][k] * ndu[r][pk];
            }
            ders[k][r] = d;
            s1 = 1 - s1;
            s2 = 1 - s2;
        }
    }
    double factor = p;
    for (int k = 1; k <= top; ++k) {
        for (int j = 0; j <= p; ++j)
            ders[k][j] *= factor;
        factor *= p - k;
    }
}

} // namespace kova::nurbs::detail
