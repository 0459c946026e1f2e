#pragma once

#include <cstddef>
#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <span>
#include <zelvane/Object.h>
#include <zelvane/math/Vector.h>

namespace Zelvane::GeometryAlgorithms::detail {

// The layout arrays of a mesh that passed `readMeshLayout` (offsets form a prefix sum of the
// face-vertex count) or `readMeshArrays` (and every face-vertex names an existing point).
// Holds the arrays, so the spans stay valid as long as this does.
struct MeshArrays {
    Orsel::Ptr<Orsel::Array<Math::float3>> positionArray;
    Orsel::Ptr<Orsel::Array<std::uint32_t>> faceOffsetArray;
    Orsel::Ptr<Orsel::Array<std::uint32_t>> faceVertexArray;

    std::span<const Math::float3> positions() const noexcept { return positionArray->span(); }
    std::span<const std::uint32_t> faceOffsets() const noexcept { return faceOffsetArray->span(); }
    std::span<const std::uint32_t> faceVertices() const noexcept { return faceVertexArray->span(); }
    std::size_t pointCount() const noexcept { return positionArray->size(); }
    std::size_t faceCount() const noexcept { return faceOffsetArray->size() - 1; }
    std::size_t faceVertexCount() const noexcept { return faceVertexArray->size(); }
};

// Reads and checks the mesh layout of `mesh` but for the point indices of the face-vertices:
// positions, face offsets and face-vertices present with their element types, element counts
// equal to the array sizes, offsets a prefix sum of the face-vertex count. False when any of
// this fails (`out` is then unspecified). For callers that check the indices on a pass of
// their own.
bool readMeshLayout(const Object& mesh, MeshArrays& out);

// `readMeshLayout`, and every face-vertex below the point count.
bool readMeshArrays(const Object& mesh, MeshArrays& out);

} // namespace Zelvane::GeometryAlgorithms::detail
