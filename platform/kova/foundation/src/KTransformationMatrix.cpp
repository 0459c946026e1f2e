#include <cmath>
#include <kova/KTransformationMatrix.h>

KTransformationMatrix& KTransformationMatrix::setTranslation(const KVector& translation) {
    translation_ = translation;
    return *this;
}

KTransformationMatrix& KTransformationMatrix::setRotation(const KVector& radians) {
    rotation_ = radians;
    return *this;
}

KTransformationMatrix& KTransformationMatrix::setScale(const KVector& scale) {
    scale_ = scale;
    return *this;
}

KMatrix KTransformationMatrix::asMatrix() const {
    const double cx = std::cos(rotation_.x), sx = std::sin(rotation_.x);
    const double cy = std::cos(rotation_.y), sy = std::sin(rotation_.y);
    const double cz = std::cos(rotation_.z), sz = std::sin(rotation_.z);
    // Row-vector rotations: p * Rx turns +Y towards +Z, p * Ry turns +Z towards +X and
    // p * Rz turns +X towards +Y.
    const double rx[4][4] = {{1, 0, 0, 0}, {0, cx, sx, 0}, {0, -sx, cx, 0}, {0, 0, 0, 1}};
    const double ry[4][4] = {{cy, 0, -sy, 0}, {0, 1, 0, 0}, {sy, 0, cy, 0}, {0, 0, 0, 1}};
    const double rz[4][4] = {{cz, sz, 0, 0}, {-sz, cz, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    KMatrix s;
    s.matrix[0][0] = scale_.x;
    s.matrix[1][1] = scale_.y;
    s.matrix[2][2] = scale_.z;
    KMatrix m = s * KMatrix(rx) * KMatrix(ry) * KMatrix(rz);
    m.matrix[3][0] = translation_.x;
    m.matrix[3][1] = translation_.y;
    m.matrix[3][2] = translation_.z;
    return m;
}
