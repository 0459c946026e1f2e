// The parallel mesh algorithms on large meshes: the same bits with one thread and with all
// threads, and structurally sound.

#include "Fixtures.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <random>
#include <tbb/task_arena.h>
#include <zelvane/algorithms/FaceVertexAdjacency.h>
#include <zelvane/algorithms/MeshVertexNormals.h>

namespace {

namespace GA = Zelvane::GeometryAlgorithms;
using Zelvane::Math::float3;
using namespace fixtures;

template <class Work>
void onOneThread(Work&& work) {
    tbb::task_arena single(1);
    single.execute(work);
}

template <class T>
bool sameBits(const Orsel::Array<T>& a, const Orsel::Array<T>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

// 200k faces of 3 to 5 corners over 100k random points, some with repeated points, and one
// point used by every 20th face (a fan of 10k faces).
Orsel::Ptr<Zelvane::Object> randomMesh() {
    constexpr std::uint32_t kPoints = 100'000;
    constexpr std::uint32_t kFaces = 200'000;
    std::mt19937 random(7);
    std::uniform_real_distribution<float> coordinate(-10.0f, 10.0f);
    std::vector<float3> positions(kPoints);
    for (float3& p : positions) {
        p = {coordinate(random), coordinate(random), coordinate(random)};
    }
    std::uniform_int_distribution<std::uint32_t> point(0, kPoints - 1);
    std::uniform_int_distribution<std::uint32_t> corners(3, 5);
    std::vector<std::uint32_t> offsets{0};
    std::vector<std::uint32_t> faceVertices;
    for (std::uint32_t face = 0; face < kFaces; ++face) {
        const std::uint32_t count = corners(random);
        for (std::uint32_t c = 0; c < count; ++c) {
            faceVertices.push_back(face % 20 == 0 && c == 0 ? 0 : point(random));
        }
        if (face % 97 == 0) {
            faceVertices.back() = faceVertices[faceVertices.size() - 2];
        }
        offsets.push_back(static_cast<std::uint32_t>(faceVertices.size()));
    }
    return mesh(positions, offsets, faceVertices);
}

TEST(ThreadIndependence, VertexNormalsAreBitIdenticalOnOneAndAllThreads) {
    // The random mesh is summed point by point, the grid chunk by chunk.
    const auto random = randomMesh();
    const auto grid = bumpyGrid(400, 250);
    for (const auto* object : {&random, &grid}) {
        for (int mode = 0; mode < 4; ++mode) {
            const bool byArea = mode & 1;
            const bool normalize = mode & 2;
            Orsel::Array<float3> parallel;
            Orsel::Array<float3> serial;
            ASSERT_TRUE(GA::computeMeshVertexNormals(**object, byArea, normalize, parallel));
            onOneThread([&] {
                ASSERT_TRUE(GA::computeMeshVertexNormals(**object, byArea, normalize, serial));
            });
            ASSERT_EQ(parallel.size(),
                      (*object)->getArray<float3>(Zelvane::Geometry::sPointPosition)->size());
            EXPECT_TRUE(sameBits(parallel, serial)) << "mode " << mode;
            for (const float3& n : parallel) {
                const float norm = Zelvane::Math::length(n);
                ASSERT_TRUE(!normalize || norm == 0.0f || std::abs(norm - 1.0f) < 1e-5f)
                    << "mode " << mode;
            }
        }
    }
}

TEST(ThreadIndependence, AdjacencyIsIdenticalOnOneAndAllThreadsAndConsistent) {
    const auto random = randomMesh();
    GA::FaceVertexAdjacency parallel;
    GA::FaceVertexAdjacency serial;
    ASSERT_TRUE(GA::buildFaceVertexAdjacency(*random, parallel));
    onOneThread([&] { ASSERT_TRUE(GA::buildFaceVertexAdjacency(*random, serial)); });
    EXPECT_TRUE(sameBits(parallel.pointOffsets, serial.pointOffsets));
    EXPECT_TRUE(sameBits(parallel.pointFaceVertices, serial.pointFaceVertices));
    EXPECT_TRUE(sameBits(parallel.faceVertexFace, serial.faceVertexFace));

    // Each group holds face-vertices of its own point, strictly ascending; with one entry per
    // face-vertex in all, that makes the table a permutation. Each face-vertex knows its face.
    const auto& faceVertex = *random->getArray<std::uint32_t>(Zelvane::Geometry::sFaceVertex);
    const auto& faceOffset = *random->getArray<std::uint32_t>(Zelvane::Geometry::sFaceOffset);
    ASSERT_EQ(parallel.faceVertexCount(), faceVertex.size());
    EXPECT_EQ(parallel.pointOffsets.front(), 0u);
    EXPECT_EQ(parallel.pointOffsets.back(), faceVertex.size());
    for (std::size_t p = 0; p < parallel.pointCount(); ++p) {
        const auto group = parallel.faceVerticesOf(p);
        ASSERT_TRUE(std::adjacent_find(group.begin(), group.end(), std::greater_equal<>()) ==
                    group.end());
        ASSERT_TRUE(std::all_of(group.begin(), group.end(),
                                [&](std::uint32_t fv) { return faceVertex[fv] == p; }));
    }
    for (std::size_t face = 0; face + 1 < faceOffset.size(); ++face) {
        for (std::uint32_t fv = faceOffset[face]; fv < faceOffset[face + 1]; ++fv) {
            ASSERT_EQ(parallel.faceVertexFace[fv], face);
        }
    }
    EXPECT_GT(parallel.faceVerticesOf(0).size(), 10'000u);
}

} // namespace
