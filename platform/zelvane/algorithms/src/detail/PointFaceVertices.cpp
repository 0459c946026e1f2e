#include "detail/PointFaceVertices.h"

#include "detail/Grain.h"

#include <algorithm>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/parallel_scan.h>
#include <tbb/task_arena.h>

namespace Zelvane::GeometryAlgorithms::detail {

namespace {

// Blocks are at least this many face-vertices long, so small meshes are sorted in one block.
constexpr std::size_t kMinBlockSize = std::size_t(1) << 16;
// More blocks add counter memory and passes over it but no speed on the machines this runs on.
constexpr std::size_t kMaxBlocks = 8;

using Range = tbb::blocked_range<std::size_t>;

// One block per thread, within limits; never more blocks than face-vertices per point, so the
// counters take no more memory than the table they build.
std::size_t blockCount(std::size_t faceVertexCount, std::size_t pointCount) {
    const auto threads = static_cast<std::size_t>(tbb::this_task_arena::max_concurrency());
    const std::size_t blocks = std::min({threads, kMaxBlocks, faceVertexCount / kMinBlockSize,
                                         faceVertexCount / std::max<std::size_t>(pointCount, 1)});
    return std::max<std::size_t>(blocks, 1);
}

} // namespace

void buildPointFaceVertices(std::span<const std::uint32_t> faceVertices, std::size_t pointCount,
                            Orsel::Array<std::uint32_t>& pointOffsets,
                            Orsel::Array<std::uint32_t>& pointFaceVertices) {
    const std::size_t blocks = blockCount(faceVertices.size(), pointCount);
    const auto block = [&faceVertices, blocks](std::size_t b) {
        return faceVertices.subspan(faceVertices.size() * b / blocks,
                                    faceVertices.size() * (b + 1) / blocks -
                                        faceVertices.size() * b / blocks);
    };

    // counters[b * pointCount + p]: how many face-vertices of block b use point p; later where
    // block b writes its next face-vertex of point p.
    Orsel::Array<std::uint32_t> counterArray;
    counterArray.resizeForOverwrite(blocks * pointCount);
    std::uint32_t* counters = counterArray.data();
    tbb::parallel_for(std::size_t(0), blocks, [&](std::size_t b) {
        std::uint32_t* count = counters + b * pointCount;
        std::fill(count, count + pointCount, 0u);
        for (std::uint32_t point : block(b)) {
            ++count[point];
        }
    });

    // offsets[p + 1] = face-vertices of point p, then the inclusive sum over them: offsets[p]
    // becomes the start of point p's group.
    pointOffsets.resizeForOverwrite(pointCount + 1);
    std::uint32_t* offsets = pointOffsets.data();
    offsets[0] = 0;
    tbb::parallel_for(Range(0, pointCount, kElementGrain), [=](const Range& points) {
        for (std::size_t p = points.begin(); p != points.end(); ++p) {
            std::uint32_t total = 0;
            for (std::size_t b = 0; b < blocks; ++b) {
                total += counters[b * pointCount + p];
            }
            offsets[p + 1] = total;
        }
    });
    tbb::parallel_scan(
        Range(1, pointCount + 1, kElementGrain), std::uint32_t(0),
        [offsets](const Range& range, std::uint32_t sum, bool isFinal) {
            for (std::size_t p = range.begin(); p != range.end(); ++p) {
                sum += offsets[p];
                if (isFinal) {
                    offsets[p] = sum;
                }
            }
            return sum;
        },
        [](std::uint32_t left, std::uint32_t right) { return left + right; });

    // Within a point's group, block 0's face-vertices come first, then block 1's, and so on.
    tbb::parallel_for(Range(0, pointCount, kElementGrain), [=](const Range& points) {
        for (std::size_t p = points.begin(); p != points.end(); ++p) {
            std::uint32_t cursor = offsets[p];
            for (std::size_t b = 0; b < blocks; ++b) {
                cursor += std::exchange(counters[b * pointCount + p], cursor);
            }
        }
    });

    pointFaceVertices.resizeForOverwrite(faceVertices.size());
    std::uint32_t* grouped = pointFaceVertices.data();
    tbb::parallel_for(std::size_t(0), blocks, [&](std::size_t b) {
        std::uint32_t* cursor = counters + b * pointCount;
        const std::span<const std::uint32_t> points = block(b);
        const std::size_t first = static_cast<std::size_t>(points.data() - faceVertices.data());
        for (std::size_t i = 0; i < points.size(); ++i) {
            grouped[cursor[points[i]]++] = static_cast<std::uint32_t>(first + i);
        }
    });
}

} // namespace Zelvane::GeometryAlgorithms::detail
