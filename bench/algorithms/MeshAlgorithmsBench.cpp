// Vertex normals and face-vertex adjacency of a 1M-face grid, on all threads and on one
// (a task arena of one thread), against a memcpy of the same output bytes into memory that
// is already mapped. Items are faces; bytes are the output the algorithm produces.

#include "GridMesh.h"
#include "bench/common/CopyLimits.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <tbb/task_arena.h>
#include <vector>
#include <zelvane/algorithms/FaceVertexAdjacency.h>
#include <zelvane/algorithms/MeshVertexNormals.h>

namespace {

namespace GA = Zelvane::GeometryAlgorithms;

// Unit normals. Argument 0: threads (0 = all, 1 = one). Argument 1: weighting (0 unit face
// normals, 1 face areas, as the mesh converter asks for).
void BM_VertexNormals(benchmark::State& state) {
    const bench::GridMesh& grid = bench::gridMesh();
    const bool byArea = state.range(1) == 1;
    tbb::task_arena arena(state.range(0) == 1 ? 1 : tbb::task_arena::automatic);
    Orsel::Array<Zelvane::Math::float3> normals;
    for (auto _ : state) {
        arena.execute([&] { GA::computeMeshVertexNormals(*grid.object, byArea, true, normals); });
        benchmark::DoNotOptimize(normals.data());
    }
    state.SetItemsProcessed(state.iterations() * grid.faceCount());
    state.SetBytesProcessed(state.iterations() * normals.size() * sizeof(normals[0]));
}

void BM_FaceVertexAdjacency(benchmark::State& state) {
    const bench::GridMesh& grid = bench::gridMesh();
    tbb::task_arena arena(state.range(0) == 1 ? 1 : tbb::task_arena::automatic);
    GA::FaceVertexAdjacency adjacency;
    for (auto _ : state) {
        arena.execute([&] { GA::buildFaceVertexAdjacency(*grid.object, adjacency); });
        benchmark::DoNotOptimize(adjacency.pointFaceVertices.data());
    }
    const std::size_t bytes = (adjacency.pointOffsets.size() + adjacency.pointFaceVertices.size() +
                               adjacency.faceVertexFace.size()) *
                              sizeof(std::uint32_t);
    state.SetItemsProcessed(state.iterations() * grid.faceCount());
    state.SetBytesProcessed(state.iterations() * bytes);
}

void BM_MemcpyNormalBytes(benchmark::State& state) {
    bench::memcpyMapped(state, bench::gridMesh().pointCount() * sizeof(Zelvane::Math::float3));
}

void BM_MemcpyAdjacencyBytes(benchmark::State& state) {
    const bench::GridMesh& grid = bench::gridMesh();
    bench::memcpyMapped(state, (grid.pointCount() + 1 + 2 * grid.faceVertexCount()) *
                                   sizeof(std::uint32_t));
}

BENCHMARK(BM_VertexNormals)
    ->ArgNames({"threads", "weighting"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_MemcpyNormalBytes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_FaceVertexAdjacency)
    ->ArgNames({"threads"})
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_MemcpyAdjacencyBytes)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
