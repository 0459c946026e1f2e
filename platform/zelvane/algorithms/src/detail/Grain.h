#pragma once

#include <cstddef>

namespace Zelvane::GeometryAlgorithms::detail {

// Smallest chunk of a parallel loop over points, faces or face-vertices: large enough that
// task overhead stays far below the work of a chunk on simple per-element bodies.
inline constexpr std::size_t kElementGrain = 1024;

// Smallest chunk of a parallel loop over strands, whose bodies walk whole polylines.
inline constexpr std::size_t kStrandGrain = 64;

} // namespace Zelvane::GeometryAlgorithms::detail
