#include <Eigen/LU>
#include <zelvane/math/Matrix.h>

namespace Zelvane::Math {

std::optional<float4x4> inverse(const float4x4& a) {
    const Eigen::Matrix4d source =
        Eigen::Map<const Eigen::Matrix<float, 4, 4, Eigen::RowMajor>>(a.data()).cast<double>();
    if (!source.allFinite()) {
        return std::nullopt;
    }
    // Full pivoting judges invertibility relative to the largest pivot, so uniformly tiny or
    // huge scales are not mistaken for singular matrices.
    const Eigen::FullPivLU<Eigen::Matrix4d> lu(source);
    if (!lu.isInvertible()) {
        return std::nullopt;
    }
    const Eigen::Matrix4d inverted = lu.inverse();
    if (!inverted.allFinite()) {
        return std::nullopt;
    }
    float4x4 result{};
    Eigen::Map<Eigen::Matrix<float, 4, 4, Eigen::RowMajor>>(&result.m[0][0]) =
        inverted.cast<float>();
    return result;
}

} // namespace Zelvane::Math
