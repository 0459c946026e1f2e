#include <algorithm>
#include <cmath>
#include <cstdio>
#include <kova/nurbs/Curve.h>
#include <string>

namespace kova::nurbs {

namespace {

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

bool finite(const ControlVertex& cv) {
    return std::isfinite(cv.x) && std::isfinite(cv.y) && std::isfinite(cv.z) && std::isfinite(cv.w);
}

} // namespace

std::string Curve::validate() const {
    using std::to_string;
    const int p = degree_;
    const int n = numCVs();
    if (p < 1)
        return "The degree must be at least 1 (it is " + to_string(p) + ").";
    if (p > kMaxDegree)
        return "The degree " + to_string(p) + " exceeds the supported maximum of " +
               to_string(kMaxDegree) + ".";
    const int formValue = static_cast<int>(form_);
    if (formValue < 1 || formValue > 3)
        return "The form " + to_string(formValue) +
               " is unknown (1 is open, 2 closed, 3 periodic).";
    if (n < p + 1)
        return "A curve of degree " + to_string(p) + " needs at least " + to_string(p + 1) +
               " CVs (it has " + to_string(n) + ").";
    const std::size_t expected = static_cast<std::size_t>(n + p - 1);
    if (knots_.size() != expected)
        return "A curve with " + to_string(n) + " CVs of degree " + to_string(p) + " needs " +
               to_string(expected) + " knots (it has " + to_string(knots_.size()) + ").";

    std::size_t run = 1;
    for (std::size_t i = 0; i < knots_.size(); ++i) {
        if (!std::isfinite(knots_[i]))
            return "Knot " + to_string(i) + " is not a finite number.";
        if (i == 0)
            continue;
        if (knots_[i] < knots_[i - 1])
            return "The knots decrease at knot " + to_string(i) + " (from " +
                   number(knots_[i - 1]) + " to " + number(knots_[i]) + ").";
        run = knots_[i] == knots_[i - 1] ? run + 1 : 1;
        if (run > static_cast<std::size_t>(p))
            return "Knot " + to_string(i) + " (" + number(knots_[i]) +
                   ") is repeated more often than the degree " + to_string(p) + " allows.";
    }
    const double start = knots_[p - 1];
    const double end = knots_[n - 1];
    if (!(end > start))
        return "The knot domain [" + number(start) + ", " + number(end) + "] is empty.";

    double largest = 0.0;
    for (int j = 0; j < n; ++j) {
        const ControlVertex& cv = cvs_[j];
        if (!finite(cv))
            return "CV " + to_string(j) +
                   " has a coordinate or weight that is not a finite number.";
        if (!(cv.w > 0.0))
            return "CV " + to_string(j) + " has the weight " + number(cv.w) +
                   "; weights must be positive.";
        largest = std::max({largest, std::abs(cv.x), std::abs(cv.y), std::abs(cv.z)});
    }

    // Matches of geometry are judged relative to the size and position of the data.
    const double tolerance = 1e-10 * std::max(scale_, largest);
    if (form_ == Form::Closed) {
        const double gap = distance(pointAt(start), pointAt(end));
        if (gap > tolerance)
            return "The curve is closed but its ends are " + number(gap) + " apart.";
    }
    if (form_ == Form::Periodic) {
        for (int i = 0; i < p; ++i) {
            const ControlVertex& a = cvs_[i];
            const ControlVertex& b = cvs_[n - p + i];
            if (distance(a.position(), b.position()) > tolerance ||
                std::abs(a.w - b.w) > 1e-10 * a.w)
                return "CV " + to_string(n - p + i) + " of the periodic curve does not repeat CV " +
                       to_string(i) + ".";
        }
        const std::size_t period = static_cast<std::size_t>(n - p);
        const double intervalTolerance = 1e-10 * (end - start);
        for (std::size_t i = 0; i + period + 1 < knots_.size(); ++i) {
            const double first = knots_[i + 1] - knots_[i];
            const double later = knots_[i + period + 1] - knots_[i + period];
            if (std::abs(first - later) > intervalTolerance)
                return "The knot intervals of the periodic curve do not repeat every " +
                       to_string(period) + " intervals (interval " + to_string(i + period) +
                       " differs from interval " + to_string(i) + ").";
        }
    }
    return {};
}

} // namespace kova::nurbs
