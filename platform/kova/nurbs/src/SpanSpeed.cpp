#include "SpanSpeed.h"

#include "BasisFunctions.h"

namespace kova::nurbs::detail {

SpanSpeed::SpanSpeed(const Curve& curve, int span) {
    const int p = curve.degree();
    const double* U = curve.fullKnots().data();
    const double halfWidth = 0.5 * (U[span + 1] - U[span]);
    middle_ = 0.5 * (U[span] + U[span + 1]);
    inverseHalfWidth_ = 1.0 / halfWidth;

    // Taylor coefficients of the homogeneous curve: a[k] = A^(k)(middle) h^k / k!, likewise w.
    double ders[kBasisSize][kBasisSize];
    basisDerivatives(U, span, middle_, p, p, ders);
    const ControlVertex* P = curve.cvs().data() + (span - p);
    Vec3 a[kBasisSize];
    double w[kBasisSize];
    double factor = 1.0;
    for (int k = 0; k <= p; ++k) {
        a[k] = Vec3();
        w[k] = 0.0;
        for (int i = 0; i <= p; ++i) {
            const double weighted = ders[k][i] * P[i].w;
            a[k] = a[k] + weighted * P[i].position();
            w[k] += weighted;
        }
        a[k] = factor * a[k];
        w[k] *= factor;
        factor *= halfWidth / (k + 1);
    }

    if (!curve.isRational()) {
        numeratorDegree_ = p - 1;
        for (int j = 0; j < p; ++j)
            numerator_[j] = static_cast<double>(j + 1) * a[j + 1];
        return;
    }
    // A'w - Aw': the terms of degree 2p - 1 cancel.
    numeratorDegree_ = 2 * p - 2;
    weightDegree_ = p;
    for (int k = 0; k <= p; ++k)
        weight_[k] = w[k];
    for (int i = 0; i < p; ++i)
        for (int j = 0; j <= p; ++j)
            numerator_[i + j] = numerator_[i + j] + static_cast<double>(i + 1) * w[j] * a[i + 1];
    for (int i = 0; i <= p; ++i)
        for (int j = 0; j < p; ++j)
            numerator_[i + j] = numerator_[i + j] - static_cast<double>(j + 1) * w[j + 1] * a[i];
}

} // namespace kova::nurbs::detail
