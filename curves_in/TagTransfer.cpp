#include "curves_in/TagTransfer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZelvanePlugin::CurvesInput {

bool TaggedCVs::contains(std::size_t cv) const {
    const int wrapped = static_cast<int>(cv % static_cast<std::size_t>(distinctCVs_));
    return std::binary_search(elements_.begin(), elements_.end(), wrapped);
}

bool sameParameter(double cvParameter, double t) {
    constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
    const double difference = std::abs(cvParameter - t);
    if (difference <= kEpsilon) {
        return true;
    }
    const double smaller = std::min(std::abs(cvParameter), std::abs(t));
    const int exponent = smaller < std::numeric_limits<double>::min() ? -1022 : std::ilogb(smaller);
    return difference <= std::ldexp(4.0 * kEpsilon, exponent);
}

namespace {

std::size_t lowerBound(std::span<const double> parameters, double t) {
    return static_cast<std::size_t>(std::lower_bound(parameters.begin(), parameters.end(), t) -
                                    parameters.begin());
}

} // namespace

std::size_t nearestCV(std::span<const double> parameters, double t) {
    const std::size_t k = lowerBound(parameters, t);
    if (k == parameters.size()) {
        return parameters.size() - 1;
    }
    if (k == 0 || sameParameter(parameters[k], t)) {
        return k;
    }
    return parameters[k] - t <= t - parameters[k - 1] ? k : k - 1;
}

bool bothNeighboursTagged(std::span<const double> parameters, double t, const TaggedCVs& tagged) {
    const std::size_t k = lowerBound(parameters, t);
    if (k == 0) {
        return sameParameter(parameters[0], t) && tagged.contains(0) && tagged.contains(1);
    }
    return k < parameters.size() && tagged.contains(k) && tagged.contains(k - 1);
}

} // namespace ZelvanePlugin::CurvesInput
