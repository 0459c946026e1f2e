#pragma once

#include <cstddef>
#include <cstdint>
#include <orsel/Array.h>
#include <span>

namespace Zelvane::GeometryAlgorithms::detail {

// Builds the point -> face-vertex table of a mesh whose face-vertex i uses point
// `faceVertices[i]` (every entry below `pointCount`): `pointOffsets` gets pointCount + 1
// prefix sums, `pointFaceVertices` the face-vertex indices grouped by point, ascending within
// each point. Both arrays are resized.
//
// This is a stable counting sort of the face-vertices by point, run in parallel without
// atomics: the face-vertices are cut into a few contiguous blocks (about one per thread, at
// most 8, fewer for small meshes); each block counts its face-vertices per point in a
// counter array of its own; the counts become offsets (a parallel prefix sum over points) and
// then per-block cursors; each block finally writes its face-vertices in order through its
// cursors. A stable sort has one result, so the table is the same whatever the number of
// blocks or threads. Scratch: one counter per point and block, allocated once.
void buildPointFaceVertices(std::span<const std::uint32_t> faceVertices, std::size_t pointCount,
                            Orsel::Array<std::uint32_t>& pointOffsets,
                            Orsel::Array<std::uint32_t>& pointFaceVertices);

} // namespace Zelvane::GeometryAlgorithms::detail
