#include "StrandTubes.h"

#include "Operators.h"

#include <algorithm>
#include <cmath>
#include <zelvane/Object.h>
#include <zelvane/geometry/Mesh.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/math/Vector.h>

namespace ZelvaneBoard::detail {
namespace {

using Zelvane::Math::float3;
using ObjectPtr = Orsel::Ptr<Zelvane::Object>;
template <class T>
using ArrayPtr = Orsel::Ptr<Orsel::Array<T>>;

constexpr float kDefaultRadius = 0.05f;
constexpr int kDefaultSides = 8;

struct TubeShape {
    float radius = kDefaultRadius;
    int sides = kDefaultSides;
};

TubeShape shapeOf(const PortValues& inputs) {
    TubeShape shape;
    if (auto it = inputs.find("radius"); it != inputs.end()) {
        if (const float* radius = it->second.get<float>()) {
            shape.radius = *radius;
        } else if (const double* wide = it->second.get<double>()) {
            shape.radius = static_cast<float>(*wide);
        }
    }
    if (auto it = inputs.find("sides"); it != inputs.end()) {
        if (const int* sides = it->second.get<int>()) {
            shape.sides = std::clamp(*sides, 3, 64);
        }
    }
    return shape;
}

// A unit vector perpendicular to the unit vector `t`.
float3 perpendicular(const float3& t) {
    const float3 axis = std::abs(t.x) < 0.9f ? float3{1, 0, 0} : float3{0, 1, 0};
    return Zelvane::Math::normalize(Zelvane::Math::cross(t, axis));
}

// True when `offsets` partitions `count` points into strands: starts at 0, never decreases
// and ends at `count`.
bool validOffsets(const Orsel::Array<std::uint32_t>& offsets, std::size_t count) {
    if (offsets.empty() || offsets[0] != 0 || offsets[offsets.size() - 1] != count) {
        return false;
    }
    return std::is_sorted(offsets.begin(), offsets.end());
}

// Appends the ring of `shape.sides` points around every point of one strand.
void appendRings(const float3* points, std::size_t count, const TubeShape& shape,
                 Orsel::Array<float3>& rings) {
    using namespace Zelvane::Math;
    float3 tangent{0, 0, 1};
    float3 normal{};
    for (std::size_t i = 0; i < count; ++i) {
        const float3 ahead =
            normalize(points[std::min(i + 1, count - 1)] - points[i > 0 ? i - 1 : 0]);
        if (dot(ahead, ahead) > 0.0f) {
            tangent = ahead; // zero-length steps keep the previous direction
        }
        const float3 transported = normal - tangent * dot(normal, tangent);
        normal = dot(transported, transported) > 1e-12f ? normalize(transported)
                                                        : perpendicular(tangent);
        const float3 binormal = cross(tangent, normal);
        for (int s = 0; s < shape.sides; ++s) {
            const float angle = 6.28318530718f * static_cast<float>(s) / shape.sides;
            const float3 offset = normal * std::cos(angle) + binormal * std::sin(angle);
            rings.push_back(points[i] + offset * shape.radius);
        }
    }
}

// One tube mesh around every strand of `strands`; null when its layout is inconsistent or no
// strand has two points.
ObjectPtr tubesOf(const Zelvane::Object& strands, const TubeShape& shape) {
    const ArrayPtr<float3> points = strands.getArray<float3>(Zelvane::Geometry::sPointPosition);
    const ArrayPtr<std::uint32_t> offsets =
        strands.getArray<std::uint32_t>(Zelvane::Geometry::sStrandOffset);
    if (!points || !offsets || !validOffsets(*offsets, points->size())) {
        return {};
    }
    const auto sides = static_cast<std::uint32_t>(shape.sides);
    std::size_t ringCount = 0;
    std::size_t faceCount = 0;
    for (std::size_t s = 0; s + 1 < offsets->size(); ++s) {
        const std::size_t n = (*offsets)[s + 1] - (*offsets)[s];
        if (n >= 2) {
            ringCount += n;
            faceCount += (n - 1) * sides;
        }
    }
    if (faceCount == 0) {
        return {}; // no strand long enough for a tube
    }
    auto positions = Orsel::make<Orsel::Array<float3>>();
    positions->reserve(ringCount * sides);
    auto faceOffset = Orsel::make<Orsel::Array<std::uint32_t>>();
    faceOffset->reserve(faceCount + 1);
    faceOffset->push_back(0);
    auto faceVertex = Orsel::make<Orsel::Array<std::uint32_t>>();
    faceVertex->reserve(faceCount * 4);
    for (std::size_t s = 0; s + 1 < offsets->size(); ++s) {
        const std::size_t first = (*offsets)[s];
        const std::size_t n = (*offsets)[s + 1] - first;
        if (n < 2) {
            continue;
        }
        const auto base = static_cast<std::uint32_t>(positions->size());
        appendRings(points->data() + first, n, shape, *positions);
        for (std::uint32_t ring = 0; ring + 1 < n; ++ring) {
            for (std::uint32_t side = 0; side < sides; ++side) {
                const std::uint32_t next = (side + 1) % sides;
                const std::uint32_t here = base + ring * sides;
                const std::uint32_t there = here + sides;
                for (std::uint32_t corner :
                     {here + side, here + next, there + next, there + side}) {
                    faceVertex->push_back(corner);
                }
                faceOffset->push_back(static_cast<std::uint32_t>(faceVertex->size()));
            }
        }
    }
    Orsel::MutablePtr<Zelvane::Object> mesh = Zelvane::createObject();
    if (!Zelvane::Geometry::populateMesh(std::move(positions), std::move(faceVertex),
                                         std::move(faceOffset), *mesh)) {
        return {};
    }
    return ObjectPtr(std::move(mesh));
}

} // namespace

PortValues strandsToTubes(const PortValues& inputs) {
    const TubeShape shape = shapeOf(inputs);
    auto meshes = Orsel::make<Orsel::Array<Orsel::Ptr<Zelvane::Object>>>();
    const auto strands = inputs.find("strands");
    for (const ObjectPtr& object :
         objectsOf(strands == inputs.end() ? nullptr : &strands->second)) {
        if (ObjectPtr tube = tubesOf(*object, shape)) {
            meshes->push_back(std::move(tube));
        }
    }
    return {{"meshes", Orsel::Value::fromOpaqueArray(Orsel::Type::arrayOf(Zelvane::objectType()),
                                                     std::move(meshes))}};
}

} // namespace ZelvaneBoard::detail
