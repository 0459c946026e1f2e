#pragma once

#include <Eigen/Dense>
#include <cmath>

namespace kova::detail {

using Matrix4d = Eigen::Matrix<double, 4, 4, Eigen::RowMajor>;

// Inverts `m` in place; returns false (leaving `m` unchanged) when it is singular relative to
// the size of its entries.
inline bool invertMatrix(Matrix4d& m) {
    const double scale = m.cwiseAbs().maxCoeff();
    if (!(scale > 0.0) || !std::isfinite(scale)) {
        return false;
    }
    // The determinant of m / scale is free of the units of m.
    const double det = (m / scale).determinant();
    if (!(std::fabs(det) > 1e-14)) {
        return false;
    }
    m = m.inverse().eval();
    return true;
}

} // namespace kova::detail
