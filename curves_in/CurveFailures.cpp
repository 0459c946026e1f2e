#include "curves_in/CurveFailures.h"

#include <algorithm>

namespace ZelvanePlugin::CurvesInput {

void CurveFailures::record(std::uint64_t curve, const KStatus& status) {
    const std::lock_guard lock(mutex_);
    lowestCurve_ = std::min(lowestCurve_, curve);
    status_ = status;
}

bool CurveFailures::failed() const {
    const std::lock_guard lock(mutex_);
    return status_.error();
}

std::uint64_t CurveFailures::lowestCurve() const {
    const std::lock_guard lock(mutex_);
    return lowestCurve_;
}

} // namespace ZelvanePlugin::CurvesInput
