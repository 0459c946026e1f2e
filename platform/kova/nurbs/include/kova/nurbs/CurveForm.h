#pragma once

namespace kova::nurbs {

// The host's curve forms, with the host's numeric values.
//   Open:     the ends are free.
//   Closed:   the curve starts and ends at the same point (typically a clamped knot vector whose
//             first and last CVs coincide); continuity at the joint is not implied.
//   Periodic: the last `degree` CVs repeat the first `degree` CVs and the knot intervals repeat
//             with the same period, so the curve is smooth across the seam.
enum class Form : int { Open = 1, Closed = 2, Periodic = 3 };

} // namespace kova::nurbs
