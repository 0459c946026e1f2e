#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <span>
#include <zelvane/Object.h>
#include <zelvane/math/Vector.h>

namespace Zelvane::GeometryAlgorithms::detail {

// The layout arrays of a strand object that passed `readStrandArrays`: offsets form a prefix
// sum of the point count. Holds the arrays, so the spans stay valid as long as this does.
struct StrandArrays {
    Orsel::Ptr<Orsel::Array<Math::float3>> positionArray;
    Orsel::Ptr<Orsel::Array<std::uint32_t>> offsetArray;

    std::size_t pointCount() const noexcept { return positionArray->size(); }
    std::size_t strandCount() const noexcept { return offsetArray->size() - 1; }
    // The points of strand `strand` (< `strandCount()`).
    std::span<const Math::float3> strandPoints(std::size_t strand) const noexcept {
        const std::uint32_t* offsets = offsetArray->data();
        return {positionArray->data() + offsets[strand],
                positionArray->data() + offsets[strand + 1]};
    }
    // Index of the first point of strand `strand` (<= `strandCount()`).
    std::size_t firstPoint(std::size_t strand) const noexcept { return (*offsetArray)[strand]; }
};

// Reads and checks the strand layout of `strands`: positions and offsets present with their
// element types, element counts equal to the array sizes, offsets a prefix sum of the point
// count. False when any of this fails (`out` is then unspecified).
bool readStrandArrays(const Object& strands, StrandArrays& out);

// Walks the polyline `points` from its first point, calling `visit(i, length)` with the arc
// length (in double precision) from the first point to point i, for every point in order.
// Returns the total length.
template <class Visit>
double walkArcLength(std::span<const Math::float3> points, Visit&& visit) {
    double length = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0) {
            const double dx = double(points[i].x) - double(points[i - 1].x);
            const double dy = double(points[i].y) - double(points[i - 1].y);
            const double dz = double(points[i].z) - double(points[i - 1].z);
            length += std::sqrt(dx * dx + dy * dy + dz * dz);
        }
        visit(i, length);
    }
    return length;
}

} // namespace Zelvane::GeometryAlgorithms::detail
