#include "detail/Grain.h"
#include "detail/MeshArrays.h"
#include "detail/PointFaceVertices.h"

#include <algorithm>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <zelvane/algorithms/FaceVertexAdjacency.h>

namespace Zelvane::GeometryAlgorithms {

bool buildFaceVertexAdjacency(const Object& mesh, FaceVertexAdjacency& out) {
    detail::MeshArrays arrays;
    if (!detail::readMeshArrays(mesh, arrays)) {
        out.pointOffsets.clear();
        out.pointFaceVertices.clear();
        out.faceVertexFace.clear();
        return false;
    }

    detail::buildPointFaceVertices(arrays.faceVertices(), arrays.pointCount(), out.pointOffsets,
                                   out.pointFaceVertices);

    out.faceVertexFace.resizeForOverwrite(arrays.faceVertexCount());
    const std::uint32_t* faceOffsets = arrays.faceOffsets().data();
    std::uint32_t* faceOf = out.faceVertexFace.data();
    using Range = tbb::blocked_range<std::size_t>;
    tbb::parallel_for(Range(0, arrays.faceCount(), detail::kElementGrain),
                      [faceOffsets, faceOf](const Range& faces) {
                          for (std::size_t face = faces.begin(); face != faces.end(); ++face) {
                              std::fill(faceOf + faceOffsets[face], faceOf + faceOffsets[face + 1],
                                        static_cast<std::uint32_t>(face));
                          }
                      });
    return true;
}

} // namespace Zelvane::GeometryAlgorithms
