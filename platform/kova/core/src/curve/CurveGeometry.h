#pragma once

#include <kova/KMatrix.h>
#include <kova/nurbs/ArcLengthTable.h>
#include <kova/nurbs/Curve.h>
#include <memory>
#include <mutex>

namespace kova::detail {

// An immutable NURBS curve together with its arc-length table. The table is integrated on the
// first length query and then shared by every reader, so that a caller asking for the length
// once and for a parameter per sample integrates the curve only once. All members are safe to
// call from any number of threads.
class CurveGeometry {
public:
    explicit CurveGeometry(nurbs::Curve curve) : curve_(std::move(curve)) {}

    const nurbs::Curve& curve() const { return curve_; }
    // The table at nurbs::Curve::kMaxTolerance, the accuracy every coarser request is served at.
    const nurbs::ArcLengthTable& arcLength() const;
    // The curve with every CV mapped by `matrix` in homogeneous form ((w*x, w*y, w*z, w) times
    // the matrix), which is exact for any affine matrix and carries the weights of a projective
    // one. Knots, degree and form are kept.
    std::shared_ptr<const CurveGeometry> transformed(const KMatrix& matrix) const;

private:
    nurbs::Curve curve_;
    mutable std::once_flag tableBuilt_;
    mutable nurbs::ArcLengthTable table_;
};

} // namespace kova::detail
