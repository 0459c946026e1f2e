#include <kova/nurbs/KnotVector.h>

namespace kova::nurbs {

std::vector<double> fullKnotsFromHost(std::span<const double> hostKnots, int degree, Form form) {
    const std::size_t size = hostKnots.size();
    const std::size_t p = degree > 0 ? static_cast<std::size_t>(degree) : 0;
    if (p == 0 || size < 2 || size < p)
        return {};
    const bool periodic = form == Form::Periodic;
    if (periodic && size < 2 * p)
        return {};

    double first;
    double last;
    if (periodic) {
        // size = n + p - 1 with n CVs; the period is n - p = size - 2p + 1 intervals.
        const std::size_t period = size - 2 * p + 1;
        first = hostKnots[0] - (hostKnots[period] - hostKnots[period - 1]);
        last = hostKnots[size - 1] + (hostKnots[2 * p - 1] - hostKnots[2 * p - 2]);
    } else {
        const bool clampedStart = hostKnots[0] == hostKnots[p - 1];
        const bool clampedEnd = hostKnots[size - 1] == hostKnots[size - p];
        first = clampedStart ? hostKnots[0] : hostKnots[0] - (hostKnots[1] - hostKnots[0]);
        last = clampedEnd ? hostKnots[size - 1]
                          : hostKnots[size - 1] + (hostKnots[size - 1] - hostKnots[size - 2]);
    }

    std::vector<double> full;
    full.reserve(size + 2);
    full.push_back(first);
    full.insert(full.end(), hostKnots.begin(), hostKnots.end());
    full.push_back(last);
    return full;
}

std::vector<double> hostKnotsFromFull(std::span<const double> fullKnots) {
    if (fullKnots.size() < 3)
        return {};
    return {fullKnots.begin() + 1, fullKnots.end() - 1};
}

} // namespace kova::nurbs
