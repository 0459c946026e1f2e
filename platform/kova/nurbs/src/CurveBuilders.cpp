#include <cmath>
#include <kova/nurbs/Curve.h>
#include <kova/nurbs/KnotVector.h>

namespace kova::nurbs {

namespace {

std::vector<ControlVertex> verticesOf(std::span<const Vec3> points) {
    std::vector<ControlVertex> cvs;
    cvs.reserve(points.size());
    for (const Vec3& p : points)
        cvs.push_back({p.x, p.y, p.z, 1.0});
    return cvs;
}

} // namespace

Curve Curve::line(const Vec3& a, const Vec3& b) {
    const Vec3 points[2] = {a, b};
    return polyline(points);
}

Curve Curve::polyline(std::span<const Vec3> points) {
    std::vector<double> knots(points.size());
    for (std::size_t i = 0; i < knots.size(); ++i)
        knots[i] = static_cast<double>(i);
    return Curve(1, Form::Open, verticesOf(points), std::move(knots));
}

Curve Curve::bezier(std::vector<ControlVertex> cvs) {
    const int p = static_cast<int>(cvs.size()) - 1;
    std::vector<double> knots;
    if (p >= 1) {
        knots.assign(static_cast<std::size_t>(p), 0.0);
        knots.resize(2 * static_cast<std::size_t>(p), 1.0);
    }
    return Curve(p, Form::Open, std::move(cvs), std::move(knots));
}

Curve Curve::clampedUniform(int degree, std::span<const Vec3> points) {
    const int n = static_cast<int>(points.size());
    std::vector<double> knots;
    if (degree >= 1 && n >= degree + 1) {
        const int spans = n - degree;
        knots.assign(static_cast<std::size_t>(degree), 0.0);
        for (int i = 1; i < spans; ++i)
            knots.push_back(i);
        knots.resize(knots.size() + static_cast<std::size_t>(degree), spans);
    }
    return Curve(degree, Form::Open, verticesOf(points), std::move(knots));
}

Curve Curve::periodicUniform(int degree, std::span<const Vec3> polygon) {
    const std::size_t m = polygon.size();
    if (degree < 1 || m == 0)
        return Curve(degree, Form::Periodic, verticesOf(polygon), {});
    const std::size_t p = static_cast<std::size_t>(degree);
    std::vector<ControlVertex> cvs = verticesOf(polygon);
    for (std::size_t i = 0; i < p; ++i)
        cvs.push_back(cvs[i % m]);
    std::vector<double> knots(m + 2 * p - 1);
    for (std::size_t i = 0; i < knots.size(); ++i)
        knots[i] = static_cast<double>(i) - static_cast<double>(p) + 1.0;
    return Curve(degree, Form::Periodic, std::move(cvs), std::move(knots));
}

Curve Curve::circle(const Vec3& center, double radius, Form form) {
    // Four rational quadratic quarter arcs: the corners of the circumscribed square carry the
    // weight cos(45 degrees).
    const double r = radius;
    const double corner = std::sqrt(0.5);
    const ControlVertex offsets[8] = {{r, 0, 0, 1},       {r, r, 0, corner}, {0, r, 0, 1},
                                      {-r, r, 0, corner}, {-r, 0, 0, 1},     {-r, -r, 0, corner},
                                      {0, -r, 0, 1},      {r, -r, 0, corner}};
    const bool periodic = form == Form::Periodic;
    std::vector<ControlVertex> cvs;
    for (int i = 0; i < (periodic ? 10 : 9); ++i) {
        const ControlVertex& o = offsets[i % 8];
        cvs.push_back({center.x + o.x, center.y + o.y, center.z, o.w});
    }
    std::vector<double> knots = {0, 0, 0.25, 0.25, 0.5, 0.5, 0.75, 0.75, 1, 1};
    if (periodic)
        knots.push_back(1.25);
    return Curve(2, periodic ? Form::Periodic : Form::Closed, std::move(cvs), std::move(knots));
}

Curve Curve::fromFullKnots(int degree, Form form, std::vector<ControlVertex> cvs,
                           std::span<const double> fullKnots) {
    return Curve(degree, form, std::move(cvs), hostKnotsFromFull(fullKnots));
}

} // namespace kova::nurbs
