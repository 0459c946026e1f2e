#include "MeshFixtures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <kova/KColorArray.h>
#include <kova/KFloatArray.h>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

// Meshes far above the size at which the host splits its per-element work between threads:
// the results must be the ones an element-by-element pass gives.
namespace {

// A side x side grid of quads over a bumpy height field, row by row; unless `ordered`, with the
// vertex ids shuffled so that every face mixes vertices from all over the id range.
struct BumpyGrid {
    explicit BumpyGrid(int side, bool ordered = false) {
        const int perRow = side + 1;
        vertexCount = perRow * perRow;
        faceCount = side * side;
        std::mt19937 random(7);
        std::uniform_real_distribution<float> height(-0.5f, 0.5f);
        std::vector<int> id(static_cast<std::size_t>(vertexCount));
        std::iota(id.begin(), id.end(), 0);
        if (!ordered) {
            std::shuffle(id.begin(), id.end(), random);
        }
        points.setLength(static_cast<unsigned int>(vertexCount));
        for (int y = 0; y < perRow; ++y) {
            for (int x = 0; x < perRow; ++x) {
                points[static_cast<unsigned int>(id[y * perRow + x])] =
                    KFloatPoint(static_cast<float>(x), static_cast<float>(y), height(random));
            }
        }
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                counts.append(4);
                for (const int corner : {y * perRow + x, y * perRow + x + 1,
                                         (y + 1) * perRow + x + 1, (y + 1) * perRow + x}) {
                    connects.append(id[corner]);
                }
            }
        }
    }

    // Per vertex, the normalised sum of the faces' Newell normals added in face order.
    std::vector<std::array<float, 3>> referenceNormals() const {
        std::vector<std::array<float, 3>> sums(static_cast<std::size_t>(vertexCount),
                                               {0.0f, 0.0f, 0.0f});
        unsigned int first = 0;
        for (const int count : counts) {
            std::array<float, 3> n = {0.0f, 0.0f, 0.0f};
            for (int k = 0; k < count; ++k) {
                const KFloatPoint& a = points[connects[first + k]];
                const KFloatPoint& b = points[connects[first + (k + 1) % count]];
                n[0] += (a.y - b.y) * (a.z + b.z);
                n[1] += (a.z - b.z) * (a.x + b.x);
                n[2] += (a.x - b.x) * (a.y + b.y);
            }
            for (int k = 0; k < count; ++k) {
                for (int c = 0; c < 3; ++c) {
                    sums[static_cast<std::size_t>(connects[first + k])][c] += n[c];
                }
            }
            first += static_cast<unsigned int>(count);
        }
        for (auto& n : sums) {
            const float length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
            for (float& c : n) {
                c /= length;
            }
        }
        return sums;
    }

    int vertexCount = 0;
    int faceCount = 0;
    KFloatPointArray points;
    KIntArray counts;
    KIntArray connects;
};

std::string errorOf(const KStatus& status) {
    return status.errorString().asChar();
}

// The grid goes into the fixture's mesh data, replacing the small mesh there.
// How many components of `normals` (three floats per vertex) differ from `expected`.
int differingComponents(const float* normals, const std::vector<std::array<float, 3>>& expected) {
    int differing = 0;
    for (std::size_t v = 0; v < expected.size(); ++v) {
        for (std::size_t c = 0; c < 3; ++c) {
            differing += normals[3 * v + c] != expected[v][c] ? 1 : 0;
        }
    }
    return differing;
}

class LargeMesh : public MeshTest {
protected:
    KStatus create(const BumpyGrid& g) {
        KStatus status;
        fn.create(g.vertexCount, g.faceCount, g.points, g.counts, g.connects, data, &status);
        return status;
    }

    BumpyGrid grid{60};
};

TEST_F(LargeMesh, ComputedNormalsAreTheFaceOrderSumsOfNewellNormalsMadeOnceForAllThreads) {
    ASSERT_TRUE(create(grid));
    // The first reads come from several threads at once.
    std::vector<const float*> seen(4, nullptr);
    std::vector<std::thread> readers;
    for (std::size_t t = 0; t < seen.size(); ++t) {
        readers.emplace_back([&, t] { seen[t] = KFnMesh(data).getRawNormals(); });
    }
    for (std::thread& reader : readers) {
        reader.join();
    }
    for (const float* normals : seen) {
        ASSERT_EQ(normals, seen.front()) << "one table, made once";
    }
    ASSERT_EQ(fn.numNormals(), grid.vertexCount);
    EXPECT_EQ(differingComponents(seen.front(), grid.referenceNormals()), 0)
        << "the sums must match bit for bit, whatever the split";
    KIntArray normalCounts, normalIds;
    ASSERT_TRUE(fn.getNormalIds(normalCounts, normalIds));
    EXPECT_EQ(normalIds, grid.connects);
}

TEST_F(LargeMesh, ComputedNormalsOfAnOrderedMeshOfManyFacesAreTheFaceOrderSums) {
    const BumpyGrid ordered(110, true); // faces enough for the host to split them up
    ASSERT_TRUE(create(ordered));
    EXPECT_EQ(differingComponents(fn.getRawNormals(), ordered.referenceNormals()), 0);
}

TEST_F(LargeMesh, FaceVertexNormalsNameTheFirstBadPairOrReplaceEveryNormal) {
    ASSERT_TRUE(create(grid));
    KVectorArray normals;
    KIntArray faces, vertices;
    unsigned int k = 0;
    for (int f = 0; f < grid.faceCount; ++f) {
        for (int corner = 0; corner < 4; ++corner, ++k) {
            normals.append(KVector(k, -1.0, 0.5));
            faces.append(f);
            vertices.append(grid.connects[k]);
        }
    }
    KIntArray badFaces = faces;
    badFaces[12000] = grid.faceCount;
    badFaces[9000] = faces[9000] + 1; // corner 0 of a face is not on the next one
    EXPECT_EQ(errorOf(fn.setFaceVertexNormals(normals, badFaces, vertices)),
              "vertex " + std::to_string(vertices[9000]) + " is not on face " +
                  std::to_string(badFaces[9000]));
    EXPECT_EQ(fn.numNormals(), grid.vertexCount) << "the computed normals stay";
    ASSERT_TRUE(fn.setFaceVertexNormals(normals, faces, vertices));
    ASSERT_EQ(fn.numNormals(), static_cast<int>(k));
    KIntArray normalCounts, normalIds;
    ASSERT_TRUE(fn.getNormalIds(normalCounts, normalIds));
    const float* n = fn.getRawNormals();
    for (unsigned int i = 0; i < k; ++i) {
        ASSERT_EQ(normalIds[i], static_cast<int>(i));
        ASSERT_EQ(n[3 * i], static_cast<float>(i));
    }
}

TEST_F(LargeMesh, TopologyPointsAndUVsReadBackAsWrittenAndUVFaultsAreNamed) {
    ASSERT_TRUE(create(grid));
    KIntArray counts, connects;
    ASSERT_TRUE(fn.getVertices(counts, connects));
    EXPECT_EQ(counts, grid.counts);
    EXPECT_EQ(connects, grid.connects);
    const float* raw = fn.getRawPoints();
    for (unsigned int i = 0; i < grid.points.length(); i += 97) {
        EXPECT_EQ(raw[3 * i + 2], grid.points[i].z);
    }
    KFloatArray u, v;
    for (int i = 0; i < grid.vertexCount; ++i) {
        u.append(grid.points[static_cast<unsigned int>(i)].x);
        v.append(grid.points[static_cast<unsigned int>(i)].y);
    }
    ASSERT_TRUE(fn.setUVs(u, v));
    const auto expectNoneAssigned = [&] {
        KIntArray uvCounts, uvIds;
        ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
        EXPECT_EQ(uvIds.length(), 0u);
        EXPECT_EQ(std::count(uvCounts.begin(), uvCounts.end(), 0), grid.faceCount);
    };
    // A faulty assignment is named by its first fault and changes nothing.
    KIntArray faulty = grid.counts;
    faulty[2000] = 3;
    faulty[700] = 5;
    EXPECT_EQ(errorOf(fn.assignUVs(faulty, grid.connects)), "polygon 700 has 4 vertices but 5 UVs");
    faulty = grid.connects;
    faulty[5000] = -1;
    faulty[4000] = grid.vertexCount + 3;
    EXPECT_EQ(errorOf(fn.assignUVs(grid.counts, faulty)),
              "UV id " + std::to_string(grid.vertexCount + 3) + " is out of range");
    expectNoneAssigned();

    ASSERT_TRUE(fn.assignUVs(grid.counts, grid.connects));
    KFloatArray uBack, vBack;
    KIntArray uvCounts, uvIds;
    ASSERT_TRUE(fn.getUVs(uBack, vBack));
    ASSERT_TRUE(fn.getAssignedUVs(uvCounts, uvIds));
    EXPECT_EQ(uBack, u);
    EXPECT_EQ(vBack, v);
    EXPECT_EQ(uvCounts, grid.counts);
    EXPECT_EQ(uvIds, grid.connects);
    // Fewer UVs drop the assignments that no longer fit.
    KFloatArray fewer(static_cast<unsigned int>(grid.vertexCount - 1), 0.75f);
    ASSERT_TRUE(fn.setUVs(fewer, fewer));
    expectNoneAssigned();
    EXPECT_EQ(fn.numUVs(), grid.vertexCount - 1);
}

TEST_F(LargeMesh, CreationNamesTheFirstFaultyPolygonAndVertexId) {
    BumpyGrid g = grid;
    g.counts[1200] = 2;
    g.counts[300] = 1;
    EXPECT_EQ(errorOf(create(g)), "polygon 300 has fewer than 3 vertices");
    g = grid;
    g.connects[2500] = -4;
    g.connects[900] = g.vertexCount;
    EXPECT_EQ(errorOf(create(g)),
              "vertex id " + std::to_string(g.vertexCount) + " at face-vertex 900 is out of range");
    g = grid;
    g.connects.remove(7);
    EXPECT_EQ(errorOf(create(g)), "the polygon counts add up to 14400 face-vertices but the "
                                  "connects hold 14399");
    EXPECT_EQ(fn.numVertices(), 10) << "a refused mesh leaves the data as it was";
}

TEST_F(LargeMesh, ColourIdsAreCheckedAssignedAndDroppedPerFaceVertex) {
    ASSERT_TRUE(create(grid));
    const KString name("paint");
    ASSERT_TRUE(fn.createColorSetDataMesh(name, true));
    KColorArray colors;
    for (int i = 0; i < grid.vertexCount; ++i) {
        colors.append(KColor(static_cast<float>(i) / 1000.0f, 2.0f, -1.0f, 0.5f));
    }
    ASSERT_TRUE(fn.setColors(colors, &name));
    KIntArray ids = grid.connects;
    ids[9000] = -2;
    ids[3000] = grid.vertexCount;
    EXPECT_EQ(errorOf(fn.assignColors(ids, &name)),
              "colour id " + std::to_string(grid.vertexCount) + " is out of range");
    ids = grid.connects;
    ids[11] = -1;
    ASSERT_TRUE(fn.assignColors(ids, &name));
    KColorArray perFaceVertex;
    ASSERT_TRUE(fn.getFaceVertexColors(perFaceVertex, &name));
    ASSERT_EQ(perFaceVertex.length(), grid.connects.length());
    EXPECT_EQ(perFaceVertex[11].r, -1.0f) << "no colour";
    const int id = grid.connects[12];
    EXPECT_EQ(perFaceVertex[12].r, std::min(1.0f, static_cast<float>(id) / 1000.0f));
    EXPECT_EQ(perFaceVertex[12].g, 1.0f) << "clamped";
    EXPECT_EQ(perFaceVertex[12].b, 0.0f) << "clamped";
    // Dropping the colours above the first half unassigns the face-vertices that used them.
    colors.setLength(static_cast<unsigned int>(grid.vertexCount / 2));
    ASSERT_TRUE(fn.setColors(colors, &name));
    ASSERT_TRUE(fn.getFaceVertexColors(perFaceVertex, &name));
    for (unsigned int k = 0; k < grid.connects.length(); ++k) {
        if (k != 11 && grid.connects[k] >= grid.vertexCount / 2) {
            ASSERT_EQ(perFaceVertex[k].r, -1.0f) << "face-vertex " << k;
        }
    }
}

} // namespace
