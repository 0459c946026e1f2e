#pragma once

#include <kova/nurbs/Vec3.h>

namespace kova::nurbs {

// One control vertex of a curve: its cartesian position (x, y, z) and its rational weight w.
// Non-rational curves have w = 1 everywhere. The position is stored as is, not premultiplied by
// the weight; the homogeneous form of the vertex is (w*x, w*y, w*z, w).
struct ControlVertex {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;

    constexpr Vec3 position() const { return {x, y, z}; }

    // The vertex whose homogeneous coordinates are (hx, hy, hz, hw). A weight of 0 (a point at
    // infinity) cannot be divided through and keeps (hx, hy, hz) as its position.
    static constexpr ControlVertex fromHomogeneous(double hx, double hy, double hz, double hw) {
        if (hw == 0.0)
            return {hx, hy, hz, hw};
        return {hx / hw, hy / hw, hz / hw, hw};
    }

    friend constexpr bool operator==(const ControlVertex&, const ControlVertex&) = default;
};

} // namespace kova::nurbs
