#include "MatrixMath.h"

#include <algorithm>
#include <cmath>
#include <kova/KMatrix.h>
#include <kova/KString.h>

namespace {

using kova::detail::Matrix4d;

Matrix4d toEigen(const KMatrix& m) {
    return Eigen::Map<const Matrix4d>(&m.matrix[0][0]);
}

KMatrix fromEigen(const Matrix4d& e) {
    KMatrix m;
    Eigen::Map<Matrix4d>(&m.matrix[0][0]) = e;
    return m;
}

} // namespace

const KMatrix KMatrix::identity;

KMatrix::KMatrix() {
    setToIdentity();
}

KMatrix::KMatrix(const double values[4][4]) {
    std::copy(&values[0][0], &values[0][0] + 16, &matrix[0][0]);
}

KStatus KMatrix::get(double values[4][4]) const {
    if (values == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "KMatrix::get: null target");
    }
    std::copy(&matrix[0][0], &matrix[0][0] + 16, &values[0][0]);
    return KStatus();
}

KMatrix KMatrix::inverse() const {
    Matrix4d e = toEigen(*this);
    return kova::detail::invertMatrix(e) ? fromEigen(e) : KMatrix();
}

KMatrix KMatrix::transpose() const {
    KMatrix t;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            t.matrix[r][c] = matrix[c][r];
        }
    }
    return t;
}

double KMatrix::det4x4() const {
    return toEigen(*this).determinant();
}

bool KMatrix::isSingular() const {
    Matrix4d e = toEigen(*this);
    return !kova::detail::invertMatrix(e);
}

KMatrix& KMatrix::setToIdentity() {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            matrix[r][c] = r == c ? 1.0 : 0.0;
        }
    }
    return *this;
}

KMatrix KMatrix::operator*(const KMatrix& right) const {
    KMatrix product;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k) {
                sum += matrix[r][k] * right.matrix[k][c];
            }
            product.matrix[r][c] = sum;
        }
    }
    return product;
}

KMatrix& KMatrix::operator*=(const KMatrix& right) {
    return *this = *this * right;
}

bool KMatrix::operator==(const KMatrix& other) const {
    return std::equal(&matrix[0][0], &matrix[0][0] + 16, &other.matrix[0][0]);
}

bool KMatrix::isEquivalent(const KMatrix& other, double tolerance) const {
    return std::equal(&matrix[0][0], &matrix[0][0] + 16, &other.matrix[0][0],
                      [tolerance](double a, double b) { return std::fabs(a - b) <= tolerance; });
}

KPoint operator*(const KPoint& p, const KMatrix& m) {
    const auto& a = m.matrix;
    return {p.x * a[0][0] + p.y * a[1][0] + p.z * a[2][0] + p.w * a[3][0],
            p.x * a[0][1] + p.y * a[1][1] + p.z * a[2][1] + p.w * a[3][1],
            p.x * a[0][2] + p.y * a[1][2] + p.z * a[2][2] + p.w * a[3][2],
            p.x * a[0][3] + p.y * a[1][3] + p.z * a[2][3] + p.w * a[3][3]};
}

KVector operator*(const KVector& v, const KMatrix& m) {
    const auto& a = m.matrix;
    return {v.x * a[0][0] + v.y * a[1][0] + v.z * a[2][0],
            v.x * a[0][1] + v.y * a[1][1] + v.z * a[2][1],
            v.x * a[0][2] + v.y * a[1][2] + v.z * a[2][2]};
}
