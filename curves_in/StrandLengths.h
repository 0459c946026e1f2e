#pragma once

#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <zelvane/Object.h>

// Arc lengths and ratios of the points of a finished strand object (points and offsets in it).
namespace ZelvanePlugin::CurvesInput {

struct StrandLengths {
    Orsel::MutablePtr<Orsel::Array<float>> pointLengths; // from the strand's first point
    Orsel::MutablePtr<Orsel::Array<float>> strandLengths;
    bool computed = false;
};

struct PointRatios {
    Orsel::MutablePtr<Orsel::Array<float>> ratios; // 0 at a strand's start, 1 at its end
    bool computed = false;
};

// Lengths along each strand's polyline (computeStrandLength); `computed` is false when the
// object does not hold the strand layout.
StrandLengths computeLengths(const Zelvane::Object& strands);

// Each point's arc length over its strand's length (computeStrandRatio); `computed` as above.
PointRatios computePointRatios(const Zelvane::Object& strands);

} // namespace ZelvanePlugin::CurvesInput
