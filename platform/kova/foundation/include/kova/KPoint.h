#pragma once

#include <cmath>
#include <kova/KExport.h>
#include <kova/KMathTolerance.h>
#include <kova/KVector.h>

// A position in double precision with a homogeneous coordinate w (1 for ordinary points).
//
// Forms of a point with weight w:
// - cartesian:   (x, y, z, 1)
// - rational:    (x, y, z, w) with x, y, z cartesian; how NURBS control points are stored
// - homogeneous: (w*x, w*y, w*z, w); how rational curves are evaluated
// Arithmetic with vectors and distances works on the cartesian form and yields w = 1.
class KOVA_API KPoint {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;

    constexpr KPoint() = default;
    constexpr KPoint(double xx, double yy, double zz = 0.0, double ww = 1.0)
        : x(xx), y(yy), z(zz), w(ww) {}
    constexpr explicit KPoint(const KVector& v) : x(v.x), y(v.y), z(v.z) {}

    // Components by index: 0 is x, 1 is y, 2 is z, anything else w.
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }

    // Homogeneous to cartesian: divides x, y, z by w and sets w to 1. A point with w == 1 is
    // already cartesian and a point with w == 0 (a direction at infinity) has no cartesian
    // form; both are left unchanged.
    KPoint& cartesianize() {
        if (w != 0.0 && w != 1.0) {
            x /= w;
            y /= w;
            z /= w;
            w = 1.0;
        }
        return *this;
    }
    // Homogeneous to rational: divides x, y, z by w and keeps w; w == 0 is left unchanged.
    KPoint& rationalize() {
        if (w != 0.0) {
            x /= w;
            y /= w;
            z /= w;
        }
        return *this;
    }
    // Rational to homogeneous: multiplies x, y, z by w.
    KPoint& homogenize() {
        x *= w;
        y *= w;
        z *= w;
        return *this;
    }
    KPoint cartesian() const { return KPoint(*this).cartesianize(); }

    KPoint operator+(const KVector& v) const {
        const KPoint c = cartesian();
        return {c.x + v.x, c.y + v.y, c.z + v.z};
    }
    KPoint operator-(const KVector& v) const { return *this + (-v); }
    KVector operator-(const KPoint& o) const {
        const KPoint a = cartesian();
        const KPoint b = o.cartesian();
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    KPoint& operator+=(const KVector& v) { return *this = *this + v; }
    KPoint& operator-=(const KVector& v) { return *this = *this - v; }

    double distanceTo(const KPoint& o) const { return (*this - o).length(); }

    bool operator==(const KPoint&) const = default;
    bool isEquivalent(const KPoint& o, double tolerance = kKovaDoubleEpsilon) const {
        return std::fabs(x - o.x) <= tolerance && std::fabs(y - o.y) <= tolerance &&
               std::fabs(z - o.z) <= tolerance && std::fabs(w - o.w) <= tolerance;
    }
};
