#pragma once

#include "detail/Double3.h"
#include "detail/MeshArrays.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

namespace Zelvane::GeometryAlgorithms::detail {

// The vector a face adds to the normal sum of each of its corners' points: its vector area, or
// its unit normal when not weighted by area; (0, 0, 0) for a face of zero area. Face geometry
// is computed in double precision and the result rounded to single precision once.
class FaceContributions {
public:
    FaceContributions(const MeshArrays& mesh, bool weightByArea)
        : positions_(mesh.positions()), offsets_(mesh.faceOffsets()), points_(mesh.faceVertices()),
          weightByArea_(weightByArea) {}

    // Calls `emit(faceVertex, point, contribution)` for every corner of `face` in order. The
    // face-vertices of `face` must name existing points.
    template <class Emit>
    void operator()(std::size_t face, Emit&& emit) const {
        const std::size_t first = offsets_[face];
        const std::size_t last = offsets_[face + 1];
        const Math::float3 contribution = of(first, last);
        for (std::size_t j = first; j < last; ++j) {
            emit(j, points_[j], contribution);
        }
    }

private:
    double3 position(std::size_t faceVertex) const {
        return widen(positions_[points_[faceVertex]]);
    }

    Math::float3 of(std::size_t first, std::size_t last) const {
        if (last - first < 3) {
            return {0.0f, 0.0f, 0.0f};
        }
        // Newell's vector area (twice over), taken about the first corner: the same vector for
        // any reference point, and the least cancellation for faces far from the origin.
        const double3 origin = position(first);
        double3 previous = position(first + 1) - origin;
        double3 area2{0.0, 0.0, 0.0};
        for (std::size_t i = first + 2; i < last; ++i) {
            const double3 next = position(i) - origin;
            area2 = area2 + cross(previous, next);
            previous = next;
        }
        if (weightByArea_) {
            return narrow(area2 * 0.5);
        }
        const double twiceArea = length(area2);
        return twiceArea > 0.0 && std::isfinite(twiceArea) ? narrow(area2 * (1.0 / twiceArea))
                                                           : Math::float3{0.0f, 0.0f, 0.0f};
    }

    std::span<const Math::float3> positions_;
    std::span<const std::uint32_t> offsets_;
    std::span<const std::uint32_t> points_;
    bool weightByArea_;
};

} // namespace Zelvane::GeometryAlgorithms::detail
