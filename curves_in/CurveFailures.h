#pragma once

#include <cstdint>
#include <kova/KStatus.h>
#include <limits>
#include <mutex>

namespace ZelvanePlugin::CurvesInput {

// The failure record of one curve conversion, shared by the workers of its per-curve passes:
// the lowest index of a curve that failed and the status of the latest failure. Workers go on
// after recording; the conversion checks the record once the pass is over.
class CurveFailures {
public:
    static constexpr std::uint64_t kNoCurve = std::numeric_limits<std::uint64_t>::max();

    void record(std::uint64_t curve, const KStatus& status);

    bool failed() const;
    // kNoCurve while nothing failed.
    std::uint64_t lowestCurve() const;

private:
    mutable std::mutex mutex_;
    std::uint64_t lowestCurve_ = kNoCurve;
    KStatus status_;
};

} // namespace ZelvanePlugin::CurvesInput
