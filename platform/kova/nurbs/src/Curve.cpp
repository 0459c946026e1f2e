#include "BasisFunctions.h"

#include <algorithm>
#include <cmath>
#include <kova/nurbs/Curve.h>
#include <kova/nurbs/KnotVector.h>
#include <limits>

namespace kova::nurbs {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr Vec3 kNaNVector{kNaN, kNaN, kNaN};

double boundingDiagonal(const std::vector<ControlVertex>& cvs) {
    constexpr double inf = std::numeric_limits<double>::infinity();
    Vec3 lo{inf, inf, inf};
    Vec3 hi{-inf, -inf, -inf};
    for (const ControlVertex& cv : cvs) {
        if (!std::isfinite(cv.x) || !std::isfinite(cv.y) || !std::isfinite(cv.z))
            continue;
        lo = {std::min(lo.x, cv.x), std::min(lo.y, cv.y), std::min(lo.z, cv.z)};
        hi = {std::max(hi.x, cv.x), std::max(hi.y, cv.y), std::max(hi.z, cv.z)};
    }
    return hi.x >= lo.x ? distance(lo, hi) : 0.0;
}

} // namespace

Curve::Curve(int degree, Form form, std::vector<ControlVertex> cvs, std::vector<double> knots)
    : degree_(degree), form_(form), cvs_(std::move(cvs)), knots_(std::move(knots)) {
    rational_ =
        std::any_of(cvs_.begin(), cvs_.end(), [](const ControlVertex& cv) { return cv.w != 1.0; });
    scale_ = boundingDiagonal(cvs_);
    fullKnots_ = fullKnotsFromHost(knots_, degree_, form_);

    const int p = degree_;
    const int n = numCVs();
    if (p < 1 || p > kMaxDegree || n < p + 1 ||
        knots_.size() != static_cast<std::size_t>(n + p - 1))
        return;
    if (!std::all_of(knots_.begin(), knots_.end(), [](double k) { return std::isfinite(k); }) ||
        !std::is_sorted(knots_.begin(), knots_.end()))
        return;
    const double* U = fullKnots_.data();
    if (fullKnots_.size() != static_cast<std::size_t>(n + p + 1) || !(U[n] > U[p]))
        return;
    firstSpan_ = p;
    while (!(U[firstSpan_ + 1] > U[firstSpan_]))
        ++firstSpan_;
    lastSpan_ = n - 1;
    while (!(U[lastSpan_ + 1] > U[lastSpan_]))
        --lastSpan_;
    evaluable_ = true;
}

std::pair<double, double> Curve::knotDomain() const {
    if (!evaluable_)
        return {kNaN, kNaN};
    return {fullKnots_[degree_], fullKnots_[cvs_.size()]};
}

int Curve::spanOf(double& t) const {
    const double* U = fullKnots_.data();
    const int p = degree_;
    const int n = numCVs();
    if (!(t > U[p])) {
        t = U[p];
        return firstSpan_;
    }
    if (t >= U[n]) {
        t = U[n];
        return lastSpan_;
    }
    return static_cast<int>(std::upper_bound(U + p, U + n, t) - U) - 1;
}

void Curve::evaluate(int span, double t, int order, Vec3* out) const {
    const int p = degree_;
    double ders[kMaxDerivativeOrder + 1][detail::kBasisSize];
    detail::basisDerivatives(fullKnots_.data(), span, t, p, order, ders);
    const ControlVertex* P = cvs_.data() + (span - p);

    if (!rational_) {
        for (int k = 0; k <= order; ++k) {
            Vec3 sum;
            for (int i = 0; i <= p; ++i)
                sum = sum + ders[k][i] * P[i].position();
            out[k] = sum;
        }
        return;
    }

    // Rational basis R_i = N_i w_i / W and its derivatives by the quotient rule; dividing each
    // term (rather than the weighted sum) keeps R_i exactly 1 where a single N_i is 1.
    double W[kMaxDerivativeOrder + 1] = {};
    for (int k = 0; k <= order; ++k)
        for (int i = 0; i <= p; ++i) {
            ders[k][i] *= P[i].w;
            W[k] += ders[k][i];
        }
    double R[kMaxDerivativeOrder + 1][detail::kBasisSize];
    for (int i = 0; i <= p; ++i) {
        R[0][i] = ders[0][i] / W[0];
        if (order >= 1)
            R[1][i] = (ders[1][i] - W[1] * R[0][i]) / W[0];
        if (order >= 2)
            R[2][i] = (ders[2][i] - 2.0 * W[1] * R[1][i] - W[2] * R[0][i]) / W[0];
    }
    for (int k = 0; k <= order; ++k) {
        Vec3 sum;
        for (int i = 0; i <= p; ++i)
            sum = sum + R[k][i] * P[i].position();
        out[k] = sum;
    }
}

Vec3 Curve::pointAt(double t) const {
    return derivativeAt(t, 0);
}

Vec3 Curve::derivativeAt(double t, int order) const {
    if (!evaluable_ || std::isnan(t) || order < 0 || order > kMaxDerivativeOrder)
        return kNaNVector;
    Vec3 out[kMaxDerivativeOrder + 1];
    const int span = spanOf(t);
    evaluate(span, t, order, out);
    return out[order];
}

void Curve::samplePoints(const double* params, std::size_t count, double* xyzOut) const {
    const double* U = fullKnots_.data();
    const double end = evaluable_ ? U[cvs_.size()] : 0.0;
    int span = -1;
    for (std::size_t i = 0; i < count; ++i) {
        double t = params[i];
        Vec3 point = kNaNVector;
        if (evaluable_ && !std::isnan(t)) {
            if (span >= 0 && t >= U[span] && t < U[span + 1]) {
                // Same span as the previous sample.
            } else if (span >= 0 && t >= U[span + 1] && t < end) {
                while (U[span + 1] <= t)
                    ++span;
            } else {
                span = spanOf(t);
            }
            evaluate(span, t, 0, &point);
        }
        xyzOut[3 * i] = point.x;
        xyzOut[3 * i + 1] = point.y;
        xyzOut[3 * i + 2] = point.z;
    }
}

} // namespace kova::nurbs
