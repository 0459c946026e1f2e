#pragma once

#include <cmath>
#include <kova/KExport.h>
#include <kova/KFloatVector.h>
#include <kova/KMathTolerance.h>
#include <kova/KPoint.h>

// A position in single precision with a homogeneous coordinate w (1 for ordinary points); see
// KPoint for the forms of a point.
class KOVA_API KFloatPoint {
public:
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 1.0f;

    constexpr KFloatPoint() = default;
    constexpr KFloatPoint(float xx, float yy, float zz = 0.0f, float ww = 1.0f)
        : x(xx), y(yy), z(zz), w(ww) {}
    constexpr explicit KFloatPoint(const KPoint& p)
        : x(static_cast<float>(p.x)), y(static_cast<float>(p.y)), z(static_cast<float>(p.z)),
          w(static_cast<float>(p.w)) {}

    // Components by index: 0 is x, 1 is y, 2 is z, anything else w.
    float operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    float& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }

    // Divides x, y, z by w and sets w to 1; w == 0 and w == 1 are left unchanged (see KPoint).
    KFloatPoint& cartesianize() {
        if (w != 0.0f && w != 1.0f) {
            x /= w;
            y /= w;
            z /= w;
            w = 1.0f;
        }
        return *this;
    }
    KPoint asPoint() const { return KPoint(x, y, z, w); }

    KFloatPoint operator+(const KFloatVector& v) const {
        const KFloatPoint c = KFloatPoint(*this).cartesianize();
        return {c.x + v.x, c.y + v.y, c.z + v.z};
    }
    KFloatVector operator-(const KFloatPoint& o) const {
        const KFloatPoint a = KFloatPoint(*this).cartesianize();
        const KFloatPoint b = KFloatPoint(o).cartesianize();
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }

    bool operator==(const KFloatPoint&) const = default;
    bool isEquivalent(const KFloatPoint& o, float tolerance = kKovaFloatEpsilon) const {
        return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance &&
               std::fabs(z - o.z) <= tolerance && std::fabs(w - o.w) <= tolerance;
    }
};
