#pragma once

// The benchmark mesh: a wavy grid of 1000 x 1000 quads (1M faces, 4M face-vertices, about
// 1M points), built once per process.

#include <cmath>
#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <utility>
#include <zelvane/Object.h>
#include <zelvane/geometry/Mesh.h>
#include <zelvane/math/Vector.h>

namespace bench {

inline constexpr std::uint32_t kGridSide = 1000;

struct GridMesh {
    Orsel::Ptr<Orsel::Array<Zelvane::Math::float3>> positions;
    Orsel::Ptr<Orsel::Array<std::uint32_t>> faceOffsets;
    Orsel::Ptr<Orsel::Array<std::uint32_t>> faceVertices;
    Orsel::Ptr<Zelvane::Object> object;

    std::size_t pointCount() const { return positions->size(); }
    std::size_t faceCount() const { return faceOffsets->size() - 1; }
    std::size_t faceVertexCount() const { return faceVertices->size(); }
};

inline GridMesh makeGridMesh() {
    constexpr std::uint32_t side = kGridSide + 1;
    auto positions = Orsel::make<Orsel::Array<Zelvane::Math::float3>>();
    positions->resizeForOverwrite(std::size_t(side) * side);
    for (std::uint32_t y = 0; y < side; ++y) {
        for (std::uint32_t x = 0; x < side; ++x) {
            const float height = 0.1f * std::sin(0.05f * float(x)) * std::cos(0.07f * float(y));
            (*positions)[std::size_t(y) * side + x] = {float(x), float(y), height};
        }
    }
    auto offsets = Orsel::make<Orsel::Array<std::uint32_t>>();
    auto faceVertices = Orsel::make<Orsel::Array<std::uint32_t>>();
    offsets->resizeForOverwrite(std::size_t(kGridSide) * kGridSide + 1);
    faceVertices->resizeForOverwrite(std::size_t(kGridSide) * kGridSide * 4);
    std::size_t corner = 0;
    for (std::uint32_t y = 0; y < kGridSide; ++y) {
        for (std::uint32_t x = 0; x < kGridSide; ++x) {
            (*offsets)[std::size_t(y) * kGridSide + x] = static_cast<std::uint32_t>(corner);
            const std::uint32_t p = y * side + x;
            for (std::uint32_t q : {p, p + 1, p + side + 1, p + side}) {
                (*faceVertices)[corner++] = q;
            }
        }
    }
    offsets->back() = static_cast<std::uint32_t>(corner);

    GridMesh grid{std::move(positions), std::move(offsets), std::move(faceVertices), nullptr};
    auto object = Zelvane::createObject();
    Zelvane::Geometry::populateMesh(grid.positions, grid.faceVertices, grid.faceOffsets, *object);
    grid.object = std::move(object);
    return grid;
}

inline const GridMesh& gridMesh() {
    static const GridMesh grid = makeGridMesh();
    return grid;
}

} // namespace bench
