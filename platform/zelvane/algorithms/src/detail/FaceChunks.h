#pragma once

#include "detail/MeshArrays.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Zelvane::GeometryAlgorithms::detail {

// The faces of a mesh cut into runs of consecutive faces ("chunks") of about the same number
// of face-vertices, each with the range of point indices its face-vertices use. The cut
// depends on the face offsets alone, never on the number of threads.
//
// A chunk with an accumulator over its point range only (slots `slotOffsets[c]` onwards, one
// per point from `firstPoints[c]`) can sum its faces' per-point values without touching any
// other chunk's memory; for a mesh whose faces and points are both in spatial order the
// ranges are short and overlap little, so all accumulators together hold few more slots
// than there are points.
struct FaceChunks {
    std::vector<std::uint32_t> firstFaces;  // chunks + 1 entries, the last the face count
    std::vector<std::uint32_t> firstPoints; // lowest point index each chunk uses
    std::vector<std::size_t> slotOffsets;   // chunks + 1 prefix sums of the range lengths
    std::size_t pointEnd = 0;               // one past the highest point index of any chunk

    std::size_t chunkCount() const noexcept { return firstPoints.size(); }
    std::size_t slotCount() const noexcept { return slotOffsets.back(); }
    // One past the highest point index chunk `c` uses (its first point when it uses none).
    std::size_t endPoint(std::size_t c) const noexcept {
        return firstPoints[c] + (slotOffsets[c + 1] - slotOffsets[c]);
    }
};

// Cuts the faces of `mesh` into chunks that start at the first face beginning at or after a
// multiple of the chunk length: max(8192, face-vertices / 256 rounded up) face-vertices, so
// at most 256 chunks, some empty when a face is longer than a chunk. Finds the point range of
// each chunk in parallel. Reads only the layout arrays (`readMeshLayout` suffices), so
// `pointEnd` tells whether every face-vertex names an existing point.
FaceChunks cutIntoFaceChunks(const MeshArrays& mesh);

} // namespace Zelvane::GeometryAlgorithms::detail
