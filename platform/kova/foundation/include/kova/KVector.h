#pragma once

#include <cmath>
#include <kova/KExport.h>
#include <kova/KMathTolerance.h>
#include <kova/KStatus.h>

// A direction in double precision. `a * b` is the dot product and `a ^ b` the cross product.
class KOVA_API KVector {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr KVector() = default;
    constexpr KVector(double xx, double yy, double zz = 0.0) : x(xx), y(yy), z(zz) {}

    // Components by index: 0 is x, 1 is y, anything else z.
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }

    constexpr KVector operator+(const KVector& o) const { return {x + o.x, y + o.y, z + o.z}; }
    constexpr KVector operator-(const KVector& o) const { return {x - o.x, y - o.y, z - o.z}; }
    constexpr KVector operator-() const { return {-x, -y, -z}; }
    constexpr KVector operator*(double s) const { return {x * s, y * s, z * s}; }
    constexpr KVector operator/(double s) const { return {x / s, y / s, z / s}; }
    friend constexpr KVector operator*(double s, const KVector& v) { return v * s; }
    constexpr double operator*(const KVector& o) const { return x * o.x + y * o.y + z * o.z; }
    constexpr KVector operator^(const KVector& o) const {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    KVector& operator+=(const KVector& o) { return *this = *this + o; }
    KVector& operator-=(const KVector& o) { return *this = *this - o; }
    KVector& operator*=(double s) { return *this = *this * s; }
    KVector& operator/=(double s) { return *this = *this / s; }

    double length() const { return std::sqrt(x * x + y * y + z * z); }
    // The unit vector of this direction; the zero vector stays zero.
    KVector normal() const {
        const double len = length();
        return len > 0.0 ? *this / len : KVector();
    }
    // Scales to unit length; fails with kInvalidParameter (and keeps the value) for a zero vector.
    KStatus normalize() {
        const double len = length();
        if (!(len > 0.0)) {
            return KStatus(KStatus::kInvalidParameter);
        }
        *this /= len;
        return KStatus();
    }
    // Angle to `o` in radians, 0 when either vector is zero.
    double angle(const KVector& o) const {
        const double len = length() * o.length();
        return len > 0.0 ? std::acos(std::fmax(-1.0, std::fmin(1.0, (*this * o) / len))) : 0.0;
    }

    bool operator==(const KVector&) const = default;
    bool isEquivalent(const KVector& o, double tolerance = kKovaDoubleEpsilon) const {
        return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance &&
               std::fabs(z - o.z) <= tolerance;
    }
};
