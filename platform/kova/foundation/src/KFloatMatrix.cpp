#include "MatrixMath.h"

#include <algorithm>
#include <cmath>
#include <kova/KFloatMatrix.h>
#include <kova/KString.h>

const KFloatMatrix KFloatMatrix::identity;

KFloatMatrix::KFloatMatrix() {
    setToIdentity();
}

KFloatMatrix::KFloatMatrix(const float values[4][4]) {
    std::copy(&values[0][0], &values[0][0] + 16, &matrix[0][0]);
}

KFloatMatrix::KFloatMatrix(const double values[4][4]) {
    std::transform(&values[0][0], &values[0][0] + 16, &matrix[0][0],
                   [](double v) { return static_cast<float>(v); });
}

KFloatMatrix::KFloatMatrix(const KMatrix& m) : KFloatMatrix(m.matrix) {}

KStatus KFloatMatrix::get(float values[4][4]) const {
    if (values == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "KFloatMatrix::get: null target");
    }
    std::copy(&matrix[0][0], &matrix[0][0] + 16, &values[0][0]);
    return KStatus();
}

KMatrix KFloatMatrix::asMatrix() const {
    KMatrix m;
    std::copy(&matrix[0][0], &matrix[0][0] + 16, &m.matrix[0][0]);
    return m;
}

KFloatMatrix KFloatMatrix::inverse() const {
    kova::detail::Matrix4d e;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            e(r, c) = matrix[r][c];
        }
    }
    if (!kova::detail::invertMatrix(e)) {
        return KFloatMatrix();
    }
    KFloatMatrix result;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            result.matrix[r][c] = static_cast<float>(e(r, c));
        }
    }
    return result;
}

KFloatMatrix KFloatMatrix::transpose() const {
    KFloatMatrix t;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            t.matrix[r][c] = matrix[c][r];
        }
    }
    return t;
}

KFloatMatrix& KFloatMatrix::setToIdentity() {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            matrix[r][c] = r == c ? 1.0f : 0.0f;
        }
    }
    return *this;
}

KFloatMatrix KFloatMatrix::operator*(const KFloatMatrix& right) const {
    KFloatMatrix product;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            float sum = 0.0f;
            for (int k = 0; k < 4; ++k) {
                sum += matrix[r][k] * right.matrix[k][c];
            }
            product.matrix[r][c] = sum;
        }
    }
    return product;
}

bool KFloatMatrix::operator==(const KFloatMatrix& other) const {
    return std::equal(&matrix[0][0], &matrix[0][0] + 16, &other.matrix[0][0]);
}

bool KFloatMatrix::isEquivalent(const KFloatMatrix& other, float tolerance) const {
    return std::equal(&matrix[0][0], &matrix[0][0] + 16, &other.matrix[0][0],
                      [tolerance](float a, float b) { return std::fabs(a - b) <= tolerance; });
}

KFloatPoint operator*(const KFloatPoint& p, const KFloatMatrix& m) {
    const auto& a = m.matrix;
    return {p.x * a[0][0] + p.y * a[1][0] + p.z * a[2][0] + p.w * a[3][0],
            p.x * a[0][1] + p.y * a[1][1] + p.z * a[2][1] + p.w * a[3][1],
            p.x * a[0][2] + p.y * a[1][2] + p.z * a[2][2] + p.w * a[3][2],
            p.x * a[0][3] + p.y * a[1][3] + p.z * a[2][3] + p.w * a[3][3]};
}

KFloatVector operator*(const KFloatVector& v, const KFloatMatrix& m) {
    const auto& a = m.matrix;
    return {v.x * a[0][0] + v.y * a[1][0] + v.z * a[2][0],
            v.x * a[0][1] + v.y * a[1][1] + v.z * a[2][1],
            v.x * a[0][2] + v.y * a[1][2] + v.z * a[2][2]};
}
