#include "CurveFormInference.h"

#include <algorithm>
#include <cmath>

namespace KovaIo {

namespace {

bool periodic(std::size_t p, const std::vector<std::array<double, 4>>& cvs,
              const std::vector<double>& knots) {
    const std::size_t n = cvs.size();
    if (n < 2 * p) {
        return false;
    }
    for (std::size_t i = 0; i < p; ++i) {
        if (cvs[i] != cvs[n - p + i]) {
            return false;
        }
    }
    // The host keeps the knots without the first and last one; compare those intervals.
    const std::size_t period = n - p;
    const double tolerance = 1e-10 * (knots[n] - knots[p]);
    for (std::size_t i = 1; i + period + 2 < knots.size(); ++i) {
        const double first = knots[i + 1] - knots[i];
        const double later = knots[i + period + 1] - knots[i + period];
        if (std::abs(first - later) > tolerance) {
            return false;
        }
    }
    return true;
}

bool clampedClosed(std::size_t p, const std::vector<std::array<double, 4>>& cvs,
                   const std::vector<double>& knots) {
    const auto allEqual = [](auto begin, auto end) {
        return std::adjacent_find(begin, end, std::not_equal_to<>()) == end;
    };
    const auto p1 = static_cast<std::ptrdiff_t>(p + 1);
    return allEqual(knots.begin(), knots.begin() + p1) && allEqual(knots.end() - p1, knots.end()) &&
           cvs.front() == cvs.back();
}

} // namespace

int inferCurveForm(int degree, const std::vector<std::array<double, 4>>& cvs,
                   const std::vector<double>& fullKnots) {
    const auto p = static_cast<std::size_t>(degree);
    if (periodic(p, cvs, fullKnots)) {
        return 3;
    }
    return clampedClosed(p, cvs, fullKnots) ? 2 : 1;
}

} // namespace KovaIo
