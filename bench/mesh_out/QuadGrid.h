#pragma once

// Square quad grids as graph mesh objects with one UV set ("map1", one UV per point, one
// index per face-vertex), and the byte count of their graph arrays.

#include <cstddef>
#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <zelvane/Geometry.h>
#include <zelvane/Object.h>
#include <zelvane/math/Vector.h>

namespace MeshOutputBench {

struct QuadGrid {
    Orsel::Ptr<Zelvane::Object> object;
    std::size_t bytes = 0; // positions, offsets, face-vertices, UVs and UV indices
};

inline QuadGrid makeQuadGrid(std::uint32_t side) {
    namespace Geo = Zelvane::Geometry;
    using Zelvane::Math::float2;
    using Zelvane::Math::float3;
    const std::uint32_t row = side + 1;
    const std::size_t pointCount = std::size_t(row) * row;
    const std::size_t faceCount = std::size_t(side) * side;
    auto positions = Orsel::make<Orsel::Array<float3>>();
    auto uvs = Orsel::make<Orsel::Array<float2>>();
    positions->resizeForOverwrite(pointCount);
    uvs->resizeForOverwrite(pointCount);
    for (std::uint32_t y = 0; y < row; ++y) {
        for (std::uint32_t x = 0; x < row; ++x) {
            (*positions)[std::size_t(y) * row + x] = {float(x), float(y), 0.0f};
            (*uvs)[std::size_t(y) * row + x] = {float(x) / float(side), float(y) / float(side)};
        }
    }
    auto offsets = Orsel::make<Orsel::Array<std::uint32_t>>();
    auto faceVertices = Orsel::make<Orsel::Array<std::uint32_t>>();
    offsets->resizeForOverwrite(faceCount + 1);
    faceVertices->resizeForOverwrite(4 * faceCount);
    std::size_t corner = 0;
    for (std::uint32_t y = 0; y < side; ++y) {
        for (std::uint32_t x = 0; x < side; ++x) {
            (*offsets)[std::size_t(y) * side + x] = static_cast<std::uint32_t>(corner);
            const std::uint32_t p = y * row + x;
            for (std::uint32_t q : {p, p + 1, p + row + 1, p + row}) {
                (*faceVertices)[corner++] = q;
            }
        }
    }
    offsets->back() = static_cast<std::uint32_t>(corner);

    Orsel::Ptr<Orsel::Array<std::uint32_t>> uvIndices(std::move(faceVertices));
    QuadGrid grid;
    grid.bytes = pointCount * (sizeof(float3) + sizeof(float2)) +
                 (faceCount + 1) * sizeof(std::uint32_t) + 2 * corner * sizeof(std::uint32_t);
    auto object = Zelvane::createObject();
    Geo::populateMesh(Orsel::Ptr<Orsel::Array<float3>>(std::move(positions)), uvIndices,
                      Orsel::Ptr<Orsel::Array<std::uint32_t>>(std::move(offsets)), *object);
    const Orsel::String rangeName = Geo::getGeoPropRangeName(Geo::sFaceVertexUV);
    auto range = Zelvane::createObject();
    Geo::populateRangeGeoProperty(*range, uvIndices);
    object->set(rangeName, std::move(range));
    auto uvProperty =
        Geo::createGeoProperty(rangeName, Orsel::Ptr<Orsel::Array<float2>>(std::move(uvs)));
    uvProperty->set(Geo::sDccName, "map1");
    object->set(Geo::sFaceVertexUV, std::move(uvProperty));
    grid.object = std::move(object);
    return grid;
}

} // namespace MeshOutputBench
