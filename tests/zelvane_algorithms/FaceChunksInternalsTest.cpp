// How the normal computation cuts faces into chunks and sizes their accumulators.

#include "Fixtures.h"
#include "detail/FaceChunks.h"
#include "detail/MeshArrays.h"

#include <vector>

namespace {

namespace detail = Zelvane::GeometryAlgorithms::detail;
using namespace fixtures;

detail::FaceChunks chunksOf(const Zelvane::Object& mesh) {
    detail::MeshArrays arrays;
    EXPECT_TRUE(detail::readMeshLayout(mesh, arrays));
    return detail::cutIntoFaceChunks(arrays);
}

std::vector<std::size_t> slotCounts(const detail::FaceChunks& chunks) {
    std::vector<std::size_t> counts;
    for (std::size_t c = 0; c < chunks.chunkCount(); ++c) {
        counts.push_back(chunks.slotOffsets[c + 1] - chunks.slotOffsets[c]);
    }
    return counts;
}

TEST(FaceChunks, SmallMeshIsOneChunkOverThePointsItUses) {
    const std::vector<float3> p(8, {0, 0, 0});
    const auto small = mesh(p, {0, 3, 6}, {2, 3, 4, 5, 4, 3});
    const detail::FaceChunks chunks = chunksOf(*small);
    EXPECT_EQ(chunks.firstFaces, (std::vector<std::uint32_t>{0, 2}));
    EXPECT_EQ(chunks.firstPoints, (std::vector<std::uint32_t>{2}));
    EXPECT_EQ(chunks.slotOffsets, (std::vector<std::size_t>{0, 4}));
    EXPECT_EQ(chunks.pointEnd, 6u);
}

TEST(FaceChunks, ChunksStartAtTheFirstFaceAtOrAfterEachMultipleOfTheLength) {
    // 29000 face-vertices in chunks of 8192; the long face leaves chunk 1 empty.
    const auto shapes = longFaceThenTriangles();
    const detail::FaceChunks chunks = chunksOf(*shapes);
    EXPECT_EQ(chunks.firstFaces, (std::vector<std::uint32_t>{0, 1, 1, 1527, 3001}));
    EXPECT_EQ(chunks.firstPoints, (std::vector<std::uint32_t>{0, 0, 20000, 24578}));
    EXPECT_EQ(slotCounts(chunks), (std::vector<std::size_t>{20000, 0, 4578, 4422}));
    EXPECT_EQ(chunks.pointEnd, 29000u);
}

TEST(FaceChunks, LengthGrowsToKeepAtMost256Chunks) {
    // 1025 x 512 quads: 2099200 face-vertices in 256 chunks of 8200 (2050 quads).
    const detail::FaceChunks chunks = chunksOf(*bumpyGrid(1025, 512));
    ASSERT_EQ(chunks.chunkCount(), 256u);
    for (std::size_t c = 0; c <= 256; ++c) {
        ASSERT_EQ(chunks.firstFaces[c], 2050 * c) << "chunk " << c;
    }
    // Each chunk holds two rows of quads, so it uses three rows of 1026 points.
    EXPECT_EQ(chunks.firstPoints[1], 2 * 1026u);
    EXPECT_EQ(slotCounts(chunks)[0], 3 * 1026u);
    EXPECT_EQ(chunks.slotCount(), 256 * 3 * 1026u);
}

TEST(FaceChunks, OrderedMeshNeedsFewSlotsAndShuffledOneMoreThanItsFaceVertices) {
    // The meshes the normal tests use for the two ways of summing.
    const auto ordered = bumpyGrid(300, 100);
    const std::size_t points = 301 * 101;
    const std::size_t faceVertices = 4 * 300 * 100;
    EXPECT_LE(chunksOf(*ordered).slotCount(), points * 5 / 4);
    EXPECT_GT(chunksOf(*shuffledFaces(*ordered)).slotCount(), faceVertices);
}

TEST(FaceChunks, PointEndShowsIndicesPastThePoints) {
    const std::vector<float3> p(4, {0, 0, 0});
    const detail::FaceChunks chunks =
        chunksOf(*rawMesh(p, {0, 3, 6}, {0, 1, 2, 1, 0xFFFFFFF0u, 2}));
    EXPECT_EQ(chunks.pointEnd, std::size_t(0xFFFFFFF1u));
    EXPECT_EQ(chunks.slotCount(), std::size_t(0xFFFFFFF1u));
}

} // namespace
