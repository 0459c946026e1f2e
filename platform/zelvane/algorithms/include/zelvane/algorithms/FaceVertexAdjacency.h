#pragma once

#include <cstddef>
#include <cstdint>
#include <orsel/Array.h>
#include <span>
#include <zelvane/Object.h>
#include <zelvane/algorithms/Export.h>

namespace Zelvane::GeometryAlgorithms {

/// Which face-vertices (face corners) use each point of a mesh, and which face each
/// face-vertex belongs to, as three flat arrays (a compressed sparse row table plus a
/// back-reference):
///
/// - `pointOffsets`: points + 1 entries, an exclusive prefix sum starting at 0 and ending at
///   the face-vertex count; point p is used by the face-vertices listed in
///   `pointFaceVertices[pointOffsets[p] .. pointOffsets[p+1]-1]`.
/// - `pointFaceVertices`: one entry per face-vertex, the face-vertex indices grouped by point,
///   ascending within each point. A point used by no face has an empty group.
/// - `faceVertexFace`: one entry per face-vertex, the face it belongs to.
///
/// This is what averaging face-vertex data onto points needs (see `averageFaceVertexToPoints`)
/// and what walking from a point to its faces needs. An adjacency that was never built, or
/// whose build failed, has all three arrays empty.
struct FaceVertexAdjacency {
    Orsel::Array<std::uint32_t> pointOffsets;
    Orsel::Array<std::uint32_t> pointFaceVertices;
    Orsel::Array<std::uint32_t> faceVertexFace;

    /// Number of points the table covers (0 when it was not built).
    std::size_t pointCount() const noexcept {
        return pointOffsets.empty() ? 0 : pointOffsets.size() - 1;
    }
    /// Number of face-vertices the table covers.
    std::size_t faceVertexCount() const noexcept { return pointFaceVertices.size(); }
    /// The face-vertices that use point `point` (< `pointCount()`), ascending.
    std::span<const std::uint32_t> faceVerticesOf(std::size_t point) const noexcept {
        return {pointFaceVertices.data() + pointOffsets[point],
                pointFaceVertices.data() + pointOffsets[point + 1]};
    }
};

/// Builds the face-vertex adjacency of `mesh` into `out`, replacing its contents.
///
/// `mesh` must carry the mesh layout exactly as `computeMeshVertexNormals` requires
/// (positions, face offsets, face-vertices and matching element counts); otherwise the result is
/// false and all arrays of `out` are left empty, without reading any array out of bounds.
/// Built in parallel (a counting pass, a parallel prefix sum and a fill); the arrays are the
/// same whatever the number of threads.
ZELVANE_ALGORITHMS_API bool buildFaceVertexAdjacency(const Object& mesh, FaceVertexAdjacency& out);

} // namespace Zelvane::GeometryAlgorithms
