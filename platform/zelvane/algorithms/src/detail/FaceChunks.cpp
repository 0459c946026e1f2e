#include "detail/FaceChunks.h"

#include <algorithm>
#include <limits>
#include <tbb/parallel_for.h>

namespace Zelvane::GeometryAlgorithms::detail {

namespace {

// Long enough that a chunk's work dwarfs its bookkeeping, short enough that its accumulator
// and positions stay in a core's cache on ordinary meshes.
constexpr std::size_t kMinChunkLength = 8192;
constexpr std::size_t kMaxChunks = 256;

} // namespace

FaceChunks cutIntoFaceChunks(const MeshArrays& mesh) {
    const std::span<const std::uint32_t> offsets = mesh.faceOffsets();
    const std::span<const std::uint32_t> points = mesh.faceVertices();
    const std::size_t length =
        std::max(kMinChunkLength, (points.size() + kMaxChunks - 1) / kMaxChunks);
    const std::size_t chunks = std::max<std::size_t>(1, (points.size() + length - 1) / length);

    FaceChunks out;
    out.firstFaces.resize(chunks + 1);
    for (std::size_t c = 1; c < chunks; ++c) {
        out.firstFaces[c] = static_cast<std::uint32_t>(
            std::lower_bound(offsets.begin(), offsets.end() - 1, c * length) - offsets.begin());
    }
    out.firstFaces[chunks] = static_cast<std::uint32_t>(mesh.faceCount());

    out.firstPoints.resize(chunks);
    out.slotOffsets.resize(chunks + 1);
    tbb::parallel_for(std::size_t(0), chunks, [&](std::size_t c) {
        const auto used =
            points.subspan(offsets[out.firstFaces[c]],
                           offsets[out.firstFaces[c + 1]] - offsets[out.firstFaces[c]]);
        std::uint32_t low = std::numeric_limits<std::uint32_t>::max();
        std::uint32_t high = 0;
        // Whole blocks of a fixed length first: the compiler turns those into vector code.
        constexpr std::size_t kBlock = 64;
        std::size_t i = 0;
        for (; i + kBlock <= used.size(); i += kBlock) {
            const std::uint32_t* block = used.data() + i;
            for (std::size_t k = 0; k < kBlock; ++k) {
                low = std::min(low, block[k]);
                high = std::max(high, block[k]);
            }
        }
        for (; i < used.size(); ++i) {
            low = std::min(low, used[i]);
            high = std::max(high, used[i]);
        }
        out.firstPoints[c] = used.empty() ? 0 : low;
        out.slotOffsets[c + 1] = used.empty() ? 0 : std::size_t(high) - low + 1;
    });
    for (std::size_t c = 0; c < chunks; ++c) {
        out.slotOffsets[c + 1] += out.slotOffsets[c];
        out.pointEnd = std::max(out.pointEnd, out.endPoint(c));
    }
    return out;
}

} // namespace Zelvane::GeometryAlgorithms::detail
