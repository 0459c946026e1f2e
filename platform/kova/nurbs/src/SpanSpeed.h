#pragma once

#include <array>
#include <kova/nurbs/Curve.h>

namespace kova::nurbs::detail {

// The parametric speed |C'(t)| of a curve on one knot span, in polynomial form so that the many
// evaluations of an arc-length integration cost a few multiplications each.
//
// The span's homogeneous curve (w*P, w) is expanded once into Taylor polynomials about the
// middle of the span in x = (t - middle) / halfWidth. A polynomial curve keeps the polynomial of
// dC/dt; a rational one the numerator A'w - Aw' of the quotient rule (degree 2p - 2) and the
// weight w, so |C'| = |A'w - Aw'| / w^2. Nothing is allocated.
class SpanSpeed {
public:
    // `span` (full knot indexing) must be a non-empty span of an evaluable curve.
    SpanSpeed(const Curve& curve, int span);

    // |C'(t)|; meant for t within the span. Inline: integrations call it in tight loops.
    double operator()(double t) const {
        const double x = (t - middle_) * inverseHalfWidth_;
        Vec3 d = numerator_[numeratorDegree_];
        for (int k = numeratorDegree_ - 1; k >= 0; --k)
            d = Vec3{d.x * x + numerator_[k].x, d.y * x + numerator_[k].y,
                     d.z * x + numerator_[k].z};
        double speed = norm(d) * inverseHalfWidth_;
        if (weightDegree_ > 0) {
            double weight = weight_[weightDegree_];
            for (int k = weightDegree_ - 1; k >= 0; --k)
                weight = weight * x + weight_[k];
            speed /= weight * weight;
        }
        return speed;
    }

private:
    double middle_ = 0.0;
    double inverseHalfWidth_ = 0.0;
    int numeratorDegree_ = 0;
    int weightDegree_ = 0; // 0 for polynomial curves: the weight is 1
    std::array<Vec3, 2 * Curve::kMaxDegree> numerator_{}; // room for the cancelling top terms
    std::array<double, Curve::kMaxDegree + 1> weight_{};
};

} // namespace kova::nurbs::detail
