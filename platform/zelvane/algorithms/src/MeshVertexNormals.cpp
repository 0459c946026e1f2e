#include "detail/Angle.h"
#include "detail/Grain.h"
#include "detail/MeshArrays.h"
#include "detail/PointFaceVertices.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <zelvane/algorithms/MeshVertexNormals.h>

namespace Zelvane::GeometryAlgorithms {

namespace {

using Range = tbb::blocked_range<std::size_t>;

// Face geometry is computed in double precision: the squared lengths of small faces would
// underflow in float and make them look degenerate.
struct double3 {
    double x, y, z;
};

double3 widen(const Math::float3& v) {
    return {v.x, v.y, v.z};
}
Math::float3 narrow(const double3& v) {
    return {float(v.x), float(v.y), float(v.z)};
}
double3 operator-(const double3& a, const double3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
double3 operator+(const double3& a, const double3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
double3 operator*(const double3& a, double s) {
    return {a.x * s, a.y * s, a.z * s};
}
double dot(const double3& a, const double3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
double3 cross(const double3& a, const double3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double length(const double3& a) {
    return std::sqrt(dot(a, a));
}

// The interior angle at `corner` between its neighbours, in [0, 2*pi): a corner that turns
// against the face's `normal` is reflex.
double interiorAngle(const double3& previous, const double3& corner, const double3& next,
                     const double3& normal) {
    const double3 toPrevious = previous - corner;
    const double3 toNext = next - corner;
    const double3 turn = cross(toNext, toPrevious);
    const double angle = detail::angleOf(length(turn), dot(toPrevious, toNext));
    return dot(turn, normal) < 0.0 ? 2.0 * std::numbers::pi - angle : angle;
}

// Writes the contribution of every face to each of its corners.
class FaceContributions {
public:
    FaceContributions(const detail::MeshArrays& mesh, bool weightByArea, bool weightByAngle,
                      Math::float3* out)
        : positions_(mesh.positions()), offsets_(mesh.faceOffsets()), points_(mesh.faceVertices()),
          weightByArea_(weightByArea), weightByAngle_(weightByAngle), out_(out) {}

    void operator()(const Range& faces) const {
        for (std::size_t face = faces.begin(); face != faces.end(); ++face) {
            write(offsets_[face], offsets_[face + 1]);
        }
    }

private:
    double3 position(std::size_t faceVertex) const {
        return widen(positions_[points_[faceVertex]]);
    }

    void write(std::size_t first, std::size_t last) const {
        // Newell's vector area, taken about the first corner (the same vector for any
        // reference point, and the least cancellation for faces far from the origin).
        double3 area2{0.0, 0.0, 0.0};
        if (last - first >= 3) {
            const double3 origin = position(first);
            for (std::size_t i = first + 1; i + 1 < last; ++i) {
                area2 = area2 + cross(position(i) - origin, position(i + 1) - origin);
            }
        }
        const double twiceArea = length(area2);
        if (!(twiceArea > 0.0) || !std::isfinite(twiceArea)) {
            std::fill(out_ + first, out_ + last, Math::float3{0.0f, 0.0f, 0.0f});
            return;
        }
        const double3 normal = area2 * (1.0 / twiceArea);
        const double3 weighted = weightByArea_ ? normal * (0.5 * twiceArea) : normal;
        if (!weightByAngle_) {
            std::fill(out_ + first, out_ + last, narrow(weighted));
            return;
        }
        double3 previous = position(last - 1);
        double3 corner = position(first);
        for (std::size_t j = first; j < last; ++j) {
            const double3 next = position(j + 1 < last ? j + 1 : first);
            out_[j] = narrow(weighted * interiorAngle(previous, corner, next, normal));
            previous = corner;
            corner = next;
        }
    }

    std::span<const Math::float3> positions_;
    std::span<const std::uint32_t> offsets_;
    std::span<const std::uint32_t> points_;
    bool weightByArea_;
    bool weightByAngle_;
    Math::float3* out_;
};

} // namespace

bool computeMeshVertexNormals(const Object& mesh, bool weightByArea, bool weightByAngle,
                              Orsel::Array<Math::float3>& normals) {
    detail::MeshArrays arrays;
    if (!detail::readMeshArrays(mesh, arrays)) {
        normals.clear();
        return false;
    }

    Orsel::Array<Math::float3> contributions;
    contributions.resizeForOverwrite(arrays.faceVertexCount());
    tbb::parallel_for(Range(0, arrays.faceCount(), detail::kElementGrain),
                      FaceContributions(arrays, weightByArea, weightByAngle, contributions.data()));

    Orsel::Array<std::uint32_t> pointOffsets;
    Orsel::Array<std::uint32_t> pointFaceVertices;
    detail::buildPointFaceVertices(arrays.faceVertices(), arrays.pointCount(), pointOffsets,
                                   pointFaceVertices);

    // Each point sums its corners' contributions in ascending face-vertex order.
    normals.resizeForOverwrite(arrays.pointCount());
    const std::uint32_t* offsets = pointOffsets.data();
    const std::uint32_t* grouped = pointFaceVertices.data();
    const Math::float3* perCorner = contributions.data();
    Math::float3* out = normals.data();
    tbb::parallel_for(
        Range(0, arrays.pointCount(), detail::kElementGrain), [=](const Range& points) {
            for (std::size_t p = points.begin(); p != points.end(); ++p) {
                double3 sum{0.0, 0.0, 0.0};
                for (std::uint32_t k = offsets[p]; k != offsets[p + 1]; ++k) {
                    sum = sum + widen(perCorner[grouped[k]]);
                }
                const double norm = length(sum);
                out[p] = norm > 0.0 && std::isfinite(norm) ? narrow(sum * (1.0 / norm))
                                                           : Math::float3{0.0f, 0.0f, 0.0f};
            }
        });
    return true;
}

} // namespace Zelvane::GeometryAlgorithms
