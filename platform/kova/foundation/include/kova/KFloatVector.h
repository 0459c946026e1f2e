#pragma once

#include <cmath>
#include <kova/KExport.h>
#include <kova/KMathTolerance.h>
#include <kova/KStatus.h>
#include <kova/KVector.h>

// A direction in single precision. `a * b` is the dot product and `a ^ b` the cross product.
class KOVA_API KFloatVector {
public:
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    constexpr KFloatVector() = default;
    constexpr KFloatVector(float xx, float yy, float zz = 0.0f) : x(xx), y(yy), z(zz) {}
    constexpr explicit KFloatVector(const KVector& v)
        : x(static_cast<float>(v.x)), y(static_cast<float>(v.y)), z(static_cast<float>(v.z)) {}

    // Components by index: 0 is x, 1 is y, anything else z.
    float operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }
    float& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }

    constexpr KFloatVector operator+(const KFloatVector& o) const {
        return {x + o.x, y + o.y, z + o.z};
    }
    constexpr KFloatVector operator-(const KFloatVector& o) const {
        return {x - o.x, y - o.y, z - o.z};
    }
    constexpr KFloatVector operator-() const { return {-x, -y, -z}; }
    constexpr KFloatVector operator*(float s) const { return {x * s, y * s, z * s}; }
    constexpr KFloatVector operator/(float s) const { return {x / s, y / s, z / s}; }
    friend constexpr KFloatVector operator*(float s, const KFloatVector& v) { return v * s; }
    constexpr float operator*(const KFloatVector& o) const { return x * o.x + y * o.y + z * o.z; }
    constexpr KFloatVector operator^(const KFloatVector& o) const {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    KFloatVector& operator+=(const KFloatVector& o) { return *this = *this + o; }
    KFloatVector& operator-=(const KFloatVector& o) { return *this = *this - o; }
    KFloatVector& operator*=(float s) { return *this = *this * s; }

    float length() const { return std::sqrt(x * x + y * y + z * z); }
    // The unit vector of this direction; the zero vector stays zero.
    KFloatVector normal() const {
        const float len = length();
        return len > 0.0f ? *this / len : KFloatVector();
    }
    // Scales to unit length; fails with kInvalidParameter (and keeps the value) for a zero vector.
    KStatus normalize() {
        const float len = length();
        if (!(len > 0.0f)) {
            return KStatus(KStatus::kInvalidParameter);
        }
        *this = *this / len;
        return KStatus();
    }

    bool operator==(const KFloatVector&) const = default;
    bool isEquivalent(const KFloatVector& o, float tolerance = kKovaFloatEpsilon) const {
        return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance &&
               std::fabs(z - o.z) <= tolerance;
    }
};
