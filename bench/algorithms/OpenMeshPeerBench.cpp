// The peer: OpenMesh's face and vertex normal update (unit face normals summed per vertex)
// on the same 1M-face grid, the counterpart of the unweighted vertex normals.

#include "GridMesh.h"

#include <OpenMesh/Core/Mesh/PolyMesh_ArrayKernelT.hh>
#include <benchmark/benchmark.h>
#include <vector>

namespace {

using PeerMesh = OpenMesh::PolyMesh_ArrayKernelT<>;

void BM_OpenMeshUpdateNormals(benchmark::State& state) {
    const bench::GridMesh& grid = bench::gridMesh();
    PeerMesh mesh;
    std::vector<PeerMesh::VertexHandle> vertices;
    vertices.reserve(grid.pointCount());
    for (const Zelvane::Math::float3& p : *grid.positions) {
        vertices.push_back(mesh.add_vertex(PeerMesh::Point(p.x, p.y, p.z)));
    }
    std::vector<PeerMesh::VertexHandle> face;
    for (std::size_t f = 0; f < grid.faceCount(); ++f) {
        face.clear();
        for (std::uint32_t c = (*grid.faceOffsets)[f]; c < (*grid.faceOffsets)[f + 1]; ++c) {
            face.push_back(vertices[(*grid.faceVertices)[c]]);
        }
        mesh.add_face(face);
    }
    mesh.request_face_normals();
    mesh.request_vertex_normals();
    for (auto _ : state) {
        mesh.update_normals();
        benchmark::DoNotOptimize(&mesh.normal(vertices.front()));
    }
    state.SetItemsProcessed(state.iterations() * grid.faceCount());
    state.SetBytesProcessed(state.iterations() * grid.pointCount() * 3 * sizeof(float));
}

BENCHMARK(BM_OpenMeshUpdateNormals)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
