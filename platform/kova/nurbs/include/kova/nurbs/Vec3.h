#pragma once

#include <cmath>

namespace kova::nurbs {

// A cartesian point or vector in double precision; the result type of curve evaluation.
struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    friend constexpr bool operator==(const Vec3&, const Vec3&) = default;
};

constexpr Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr Vec3 operator*(double s, const Vec3& v) {
    return {s * v.x, s * v.y, s * v.z};
}
constexpr double dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline double norm(const Vec3& v) {
    return std::sqrt(dot(v, v));
}
inline double distance(const Vec3& a, const Vec3& b) {
    return norm(a - b);
}

} // namespace kova::nurbs
