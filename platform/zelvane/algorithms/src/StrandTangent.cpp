#include <algorithm>
#include <cmath>
#include <cstddef>
#include <zelvane/algorithms/StrandTangent.h>

namespace Zelvane::GeometryAlgorithms {

namespace {

// `to - from` scaled to unit length, computed in double precision so that short differences
// do not underflow; (0, 0, 0) when the points coincide.
Math::float3 direction(const Math::float3& from, const Math::float3& to) {
    const double dx = double(to.x) - double(from.x);
    const double dy = double(to.y) - double(from.y);
    const double dz = double(to.z) - double(from.z);
    const double norm = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (!(norm > 0.0)) {
        return {0.0f, 0.0f, 0.0f};
    }
    return {float(dx / norm), float(dy / norm), float(dz / norm)};
}

} // namespace

bool computeStrandTangent(const Math::float3* begin, const Math::float3* end,
                          Math::float3* output) {
    if (begin == end) {
        return true;
    }
    if (!begin || !end || !output || end < begin) {
        return false;
    }
    const std::size_t count = static_cast<std::size_t>(end - begin);
    // before: index of the nearest point before i that differs from p[i] (count when none);
    // after: index of the nearest point after i that differs from p[i] (count when none).
    // Both only move forward, so the walk is linear even through long runs of equal points.
    std::size_t before = count;
    std::size_t after = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && !(begin[i] == begin[i - 1])) {
            before = i - 1;
        }
        after = std::max(after, i + 1);
        while (after < count && begin[after] == begin[i]) {
            ++after;
        }
        const Math::float3& from = before < count ? begin[before] : begin[i];
        const Math::float3& to = after < count ? begin[after] : begin[i];
        Math::float3 tangent = direction(from, to);
        if (tangent == Math::float3{0.0f, 0.0f, 0.0f} && after < count) {
            tangent = direction(begin[i], to);
        }
        output[i] = tangent;
    }
    return true;
}

} // namespace Zelvane::GeometryAlgorithms
