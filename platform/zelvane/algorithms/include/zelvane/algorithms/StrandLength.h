#pragma once

#include <orsel/Array.h>
#include <zelvane/Object.h>
#include <zelvane/algorithms/Export.h>
#include <zelvane/algorithms/RuntimeServices.h>

namespace Zelvane::GeometryAlgorithms {

/// Measures the strands of `strands` along their polylines.
///
/// `strands` must carry the strand layout (see `zelvane/geometry/Strand.h`): `sPointPosition`
/// (float3 per point), `sStrandOffset` (strands + 1 uint32 entries, first 0, non-decreasing,
/// last the point count), and element counts on `sPointComp` and `sStrandComp` equal to the
/// sizes of those arrays. Otherwise the result is false and both outputs are left empty.
///
/// On success, `pointLengths` holds one value per point: the arc length from its strand's
/// first point to it (0 at every strand's first point, non-decreasing along the strand), and
/// `strandLengths` one value per strand: its total length (0 for a strand of zero or one
/// points). Lengths are accumulated in double precision and stored as float, so the last
/// point's length equals its strand's length exactly. Parallel over strands with oneTBB.
/// `services` may be null; it is not used.
ZELVANE_ALGORITHMS_API bool computeStrandLength(const Object& strands,
                                                Orsel::Array<float>& strandLengths,
                                                Orsel::Array<float>& pointLengths,
                                                const RuntimeServices* services);

} // namespace Zelvane::GeometryAlgorithms
