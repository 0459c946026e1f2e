#pragma once

#include <cmath>
#include <zelvane/math/Vector.h>

namespace Zelvane::GeometryAlgorithms::detail {

// A double-precision vector for face geometry: squared lengths of small faces would underflow
// in single precision and make them look degenerate.
struct double3 {
    double x, y, z;
};

inline double3 widen(const Math::float3& v) {
    return {v.x, v.y, v.z};
}
inline Math::float3 narrow(const double3& v) {
    return {float(v.x), float(v.y), float(v.z)};
}
inline double3 operator-(const double3& a, const double3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline double3 operator+(const double3& a, const double3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline double3 operator*(const double3& a, double s) {
    return {a.x * s, a.y * s, a.z * s};
}
inline double dot(const double3& a, const double3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline double3 cross(const double3& a, const double3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const double3& a) {
    return std::sqrt(dot(a, a));
}

} // namespace Zelvane::GeometryAlgorithms::detail
