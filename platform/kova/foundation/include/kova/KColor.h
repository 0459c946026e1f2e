#pragma once

#include <cmath>
#include <kova/KExport.h>
#include <kova/KMathTolerance.h>

// An RGBA colour in single precision; alpha defaults to opaque.
class KOVA_API KColor {
public:
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 1.0f;

    constexpr KColor() = default;
    constexpr KColor(float rr, float gg, float bb, float aa = 1.0f) : r(rr), g(gg), b(bb), a(aa) {}

    // Channels by index: 0 is r, 1 is g, 2 is b, anything else a.
    float operator[](unsigned int i) const { return i == 0 ? r : i == 1 ? g : i == 2 ? b : a; }
    float& operator[](unsigned int i) { return i == 0 ? r : i == 1 ? g : i == 2 ? b : a; }

    constexpr KColor operator+(const KColor& o) const {
        return {r + o.r, g + o.g, b + o.b, a + o.a};
    }
    constexpr KColor operator*(float s) const { return {r * s, g * s, b * s, a * s}; }

    bool operator==(const KColor&) const = default;
    bool isEquivalent(const KColor& o, float tolerance = kKovaFloatEpsilon) const {
        return std::fabs(r - o.r) <= tolerance && std::fabs(g - o.g) <= tolerance &&
               std::fabs(b - o.b) <= tolerance && std::fabs(a - o.a) <= tolerance;
    }
};
