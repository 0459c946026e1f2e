#pragma once

#include "curves_in/CurveFailures.h"

#include <cstddef>
#include <cstdint>
#include <kova/KDataHandle.h>
#include <span>
#include <vector>
#include <zelvane/inputbypath/CurveOptions.h>
#include <zelvane/math/Vector.h>

// Writes the strand points of curves into the shared arrays of the strand object.
namespace ZelvanePlugin::CurvesInput {

// The arrays the sampler writes, all indexed by point: curve i owns entries offsets[i] ..
// offsets[i+1]-1 of each. `tangents` and `params` are empty when not wanted.
struct StrandSlices {
    std::span<const std::uint32_t> offsets;
    std::span<Zelvane::Math::float3> positions;
    std::span<Zelvane::Math::float3> tangents;
    std::span<double> params;
};

// Samples curves [begin, end) in world space, each into its own slice:
// - CVs: point j is CV j, divided through by its weight (unless that is 1 or 0);
// - by CV count: evenly in parameter over the knot domain, or evenly in arc length with
//   `uniformByLength`;
// - by segment length: at arc lengths j * s (s the effective segment length), or j * L/(n-1)
//   with `evenSegments`.
// Parameters are clamped to the knot domain; with `params` wanted each point's parameter is
// stored. Tangents are unit vectors: of the curve itself (its derivative, normalised; a zero
// derivative stays zero) for sampled curves of degree 2 and up, of the point polyline
// (computeStrandTangent) for CV strands and linear curves.
// Failures are recorded: a curve that can't be attached, `length`, `getKnotDomain` or `getCVs`
// failing (the curve is left at once), `getPointAtParam` failing (the other samples are still
// taken, the failure is recorded once).
void sampleCurves(const std::vector<KDataHandle>& handles,
                  const ZelvaneBoardInputByPath::CurveOptions& options, const StrandSlices& slices,
                  std::size_t begin, std::size_t end, CurveFailures& failures);

} // namespace ZelvanePlugin::CurvesInput
