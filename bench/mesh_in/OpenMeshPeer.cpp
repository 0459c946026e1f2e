#include "OpenMeshPeer.h"

#include <OpenMesh/Core/Mesh/PolyMesh_ArrayKernelT.hh>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <memory>
#include <vector>
#include <zelvane/geometry/Names.h>
#include <zelvane/math/Vector.h>

namespace bench {
namespace {

using PeerMesh = OpenMesh::PolyMesh_ArrayKernelT<>;

std::shared_ptr<PeerMesh> peerOf(const Zelvane::Object& mesh) {
    namespace Geo = Zelvane::Geometry;
    const auto positions = mesh.getArray<Zelvane::Math::float3>(Geo::sPointPosition);
    const auto offsets = mesh.getArray<std::uint32_t>(Geo::sFaceOffset);
    const auto corners = mesh.getArray<std::uint32_t>(Geo::sFaceVertex);
    auto peer = std::make_shared<PeerMesh>();
    std::vector<PeerMesh::VertexHandle> vertices;
    vertices.reserve(positions->size());
    for (const Zelvane::Math::float3& p : *positions) {
        vertices.push_back(peer->add_vertex(PeerMesh::Point(p.x, p.y, p.z)));
    }
    std::vector<PeerMesh::VertexHandle> face;
    for (std::size_t f = 0; f + 1 < offsets->size(); ++f) {
        face.clear();
        for (std::uint32_t c = (*offsets)[f]; c < (*offsets)[f + 1]; ++c) {
            face.push_back(vertices[(*corners)[c]]);
        }
        peer->add_face(face);
    }
    peer->request_face_normals();
    peer->request_vertex_normals();
    return peer;
}

} // namespace

void registerOpenMeshNormals(const std::string& name, const Zelvane::Object& mesh) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [peer = peerOf(mesh)](benchmark::State& state) {
                                     for (auto _ : state) {
                                         peer->update_normals();
                                         benchmark::DoNotOptimize(
                                             &peer->normal(PeerMesh::VertexHandle(0)));
                                     }
                                     state.SetItemsProcessed(state.iterations() * peer->n_faces());
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

} // namespace bench
