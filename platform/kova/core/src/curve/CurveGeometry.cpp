#include "curve/CurveGeometry.h"

#include <kova/KPoint.h>

namespace kova::detail {

const nurbs::ArcLengthTable& CurveGeometry::arcLength() const {
    std::call_once(tableBuilt_,
                   [this] { table_ = nurbs::ArcLengthTable(curve_, nurbs::Curve::kMaxTolerance); });
    return table_;
}

std::shared_ptr<const CurveGeometry> CurveGeometry::transformed(const KMatrix& matrix) const {
    std::vector<nurbs::ControlVertex> cvs;
    cvs.reserve(curve_.cvs().size());
    for (const nurbs::ControlVertex& cv : curve_.cvs()) {
        const KPoint p = KPoint(cv.x * cv.w, cv.y * cv.w, cv.z * cv.w, cv.w) * matrix;
        cvs.push_back(nurbs::ControlVertex::fromHomogeneous(p.x, p.y, p.z, p.w));
    }
    return std::make_shared<const CurveGeometry>(
        nurbs::Curve(curve_.degree(), curve_.form(), std::move(cvs), curve_.knots()));
}

} // namespace kova::detail
