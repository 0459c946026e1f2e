#pragma once

#include "curves_in/CurveFailures.h"

#include <cstddef>
#include <cstdint>
#include <kova/KDataHandle.h>
#include <span>
#include <vector>
#include <zelvane/inputbypath/CurveOptions.h>

// How many strand points each curve gets.
namespace ZelvanePlugin::CurvesInput {

// Relative tolerance of every curve length the conversion asks the host for.
inline constexpr double kLengthTolerance = 0.001;
// Segment-length sampling never steps by less than this.
inline constexpr double kMinSegmentLength = 0.0001;
// A count above this does not fit the strand layout's 32-bit offsets.
inline constexpr std::uint64_t kMaxStrandPoints = 0xFFFFFFFFu;

// Sampling by CV count: max(2, R + 1) with R = `sampleRate` * (numCVs - 1) in single precision,
// rounded to nearest with halves away from zero. A negative or NaN R gives 2; an R too large for
// the strand layout gives a count above kMaxStrandPoints.
std::uint64_t countByCVCount(int numCVs, float sampleRate);

// The segment length actually stepped by: `segmentLength`, or kMinSegmentLength when that is
// not greater.
double effectiveSegmentLength(float segmentLength);

// Sampling by segment length: trunc(max(1, length / s)) + 1 with s the effective segment
// length, so even a curve shorter than s gets its two end points.
std::uint64_t countBySegmentLength(double length, float segmentLength);

// The count rule for curves [begin, end): sets counts[i] for each (0 for a curve that fails)
// and records the failures (a curve that can't be attached, numCVs or length failing, or a
// count above kMaxStrandPoints). Runs on any worker; writes only counts[begin .. end).
void countSamples(const std::vector<KDataHandle>& handles,
                  const ZelvaneBoardInputByPath::CurveOptions& options, std::size_t begin,
                  std::size_t end, std::span<std::uint32_t> counts, CurveFailures& failures);

// The first curve at which the running total of `counts` exceeds kMaxStrandPoints, or
// counts.size() when the total fits.
std::size_t firstCurvePastPointLimit(std::span<const std::uint32_t> counts);

} // namespace ZelvanePlugin::CurvesInput
