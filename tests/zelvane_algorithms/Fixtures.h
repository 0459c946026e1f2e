#pragma once

// Small geometry objects for the algorithm tests, built either through the geometry
// library's checked constructors or raw (properties set as given, to feed broken layouts).

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <random>
#include <vector>
#include <zelvane/Object.h>
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Mesh.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/Strand.h>
#include <zelvane/math/Vector.h>

namespace fixtures {

using Zelvane::Math::float3;

template <class T>
Orsel::Ptr<Orsel::Array<T>> array(const std::vector<T>& values) {
    auto out = Orsel::make<Orsel::Array<T>>();
    for (const T& value : values) {
        out->push_back(value);
    }
    return out;
}

template <class T>
std::vector<T> values(const Orsel::Array<T>& array) {
    return {array.begin(), array.end()};
}

inline Orsel::Ptr<Zelvane::Object> mesh(const std::vector<float3>& positions,
                                        const std::vector<std::uint32_t>& faceOffsets,
                                        const std::vector<std::uint32_t>& faceVertices) {
    auto object = Zelvane::createObject();
    const bool made = Zelvane::Geometry::populateMesh(array(positions), array(faceVertices),
                                                      array(faceOffsets), *object);
    EXPECT_TRUE(made) << "fixture mesh is not a valid mesh";
    return object;
}

// A mesh object whose arrays and counts are set exactly as given, valid or not.
inline Orsel::MutablePtr<Zelvane::Object> rawMesh(const std::vector<float3>& positions,
                                                  const std::vector<std::uint32_t>& faceOffsets,
                                                  const std::vector<std::uint32_t>& faceVertices) {
    namespace G = Zelvane::Geometry;
    auto object = Zelvane::createObject();
    object->set(G::sPointPosition, array(positions));
    object->set(G::sFaceOffset, array(faceOffsets));
    object->set(G::sFaceVertex, array(faceVertices));
    G::setElementCount(G::sPointComp, positions.size(), *object);
    G::setElementCount(G::sFaceComp, faceOffsets.empty() ? 0 : faceOffsets.size() - 1, *object);
    G::setElementCount(G::sFaceVertexComp, faceVertices.size(), *object);
    return object;
}

// Point i of the unit cube is at (x, y, z) with i = x + 2y + 4z; faces wind outwards.
inline Orsel::Ptr<Zelvane::Object> unitCube() {
    std::vector<float3> corners;
    for (int i = 0; i < 8; ++i) {
        corners.push_back({float(i & 1), float((i >> 1) & 1), float((i >> 2) & 1)});
    }
    return mesh(corners, {0, 4, 8, 12, 16, 20, 24},
                {0, 2, 3, 1, 4, 5, 7, 6, 0, 1, 5, 4, 2, 6, 7, 3, 0, 4, 6, 2, 1, 3, 7, 5});
}

// Mesh objects that each break one rule of the layout.
inline std::vector<Orsel::Ptr<Zelvane::Object>> brokenMeshes() {
    namespace G = Zelvane::Geometry;
    const std::vector<float3> p{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    const std::vector<std::uint32_t> corners{0, 1, 2, 1, 3, 2};
    std::vector<Orsel::Ptr<Zelvane::Object>> broken{
        rawMesh(p, {0, 3, 2, 6}, corners),                   // decreasing offsets
        rawMesh(p, {0, 3, 7}, corners),                      // past the face-vertices
        rawMesh(p, {0, 3, 5}, corners),                      // short of them
        rawMesh(p, {1, 3, 6}, corners),                      // not starting at 0
        rawMesh(p, {}, {}),                                  // no offsets at all
        rawMesh(p, {0, 3, 6}, {0, 1, 2, 1, 4, 2}),           // point index out of range
        rawMesh(p, {0, 3, 6}, {0, 1, 2, 1, 0xFFFFFFFFu, 2}), // far out of range
        rawMesh({p[0], p[1]}, {0, 3, 6}, corners),           // truncated positions
    };
    auto wrongCount = rawMesh(p, {0, 3, 6}, corners);
    G::setElementCount(G::sFaceComp, 3, *wrongCount);
    auto noCount = rawMesh(p, {0, 3, 6}, corners);
    noCount->remove(G::elementCountName(G::sPointComp));
    auto wrongType = rawMesh(p, {0, 3, 6}, corners);
    wrongType->set(G::sPointPosition, array(std::vector<float>{0, 0, 0, 1, 0, 0}));
    auto noFaceVertices = rawMesh(p, {0, 3, 6}, corners);
    noFaceVertices->remove(G::sFaceVertex);
    for (auto* object : {&wrongCount, &noCount, &wrongType, &noFaceVertices}) {
        broken.push_back(std::move(*object));
    }
    return broken;
}

// A grid of `columns` x `rows` quads over (columns + 1) x (rows + 1) points in row order, with
// heights of 0 or 1 in an irregular pattern, so that the face vector areas are multiples of
// 1/2 and their sums are exact in single precision.
inline Orsel::Ptr<Zelvane::Object> bumpyGrid(std::uint32_t columns, std::uint32_t rows) {
    const std::uint32_t side = columns + 1;
    std::vector<float3> positions;
    for (std::uint32_t y = 0; y <= rows; ++y) {
        for (std::uint32_t x = 0; x <= columns; ++x) {
            positions.push_back({float(x), float(y), float((x * 7 + y * 3) % 5 == 0)});
        }
    }
    std::vector<std::uint32_t> offsets{0};
    std::vector<std::uint32_t> faceVertices;
    for (std::uint32_t y = 0; y < rows; ++y) {
        for (std::uint32_t x = 0; x < columns; ++x) {
            const std::uint32_t p = y * side + x;
            faceVertices.insert(faceVertices.end(), {p, p + 1, p + side + 1, p + side});
            offsets.push_back(static_cast<std::uint32_t>(faceVertices.size()));
        }
    }
    return mesh(positions, offsets, faceVertices);
}

// A 20000-gon on the unit circle in z = 0, then 3000 triangles in planes x = const (normal
// +x) on points of their own: 29000 points and face-vertices, the first face longer than the
// chunks the normal computation cuts the faces into.
inline Orsel::Ptr<Zelvane::Object> longFaceThenTriangles() {
    std::vector<float3> positions;
    std::vector<std::uint32_t> offsets{0, 20000};
    std::vector<std::uint32_t> corners;
    for (std::uint32_t i = 0; i < 20000; ++i) {
        const double angle = 2.0 * 3.141592653589793 * i / 20000.0;
        positions.push_back({float(std::cos(angle)), float(std::sin(angle)), 0.0f});
        corners.push_back(i);
    }
    for (std::uint32_t t = 0; t < 3000; ++t) {
        const auto first = static_cast<std::uint32_t>(positions.size());
        positions.insert(positions.end(),
                         {{5, float(t), 0}, {5, float(t) + 1, 0}, {5, float(t), 1}});
        corners.insert(corners.end(), {first, first + 1, first + 2});
        offsets.push_back(static_cast<std::uint32_t>(corners.size()));
    }
    return mesh(positions, offsets, corners);
}

// `source` with its faces in a fixed pseudo-random order (each face keeps its corner order),
// so that consecutive faces use points from all over the mesh.
inline Orsel::Ptr<Zelvane::Object> shuffledFaces(const Zelvane::Object& source) {
    namespace G = Zelvane::Geometry;
    const auto& offsets = *source.getArray<std::uint32_t>(G::sFaceOffset);
    const auto& corners = *source.getArray<std::uint32_t>(G::sFaceVertex);
    std::vector<std::uint32_t> order(offsets.size() - 1);
    for (std::uint32_t face = 0; face < order.size(); ++face) {
        order[face] = face;
    }
    std::mt19937 random(11);
    std::shuffle(order.begin(), order.end(), random);
    std::vector<std::uint32_t> newOffsets{0};
    std::vector<std::uint32_t> newCorners;
    for (std::uint32_t face : order) {
        newCorners.insert(newCorners.end(), corners.begin() + offsets[face],
                          corners.begin() + offsets[face + 1]);
        newOffsets.push_back(static_cast<std::uint32_t>(newCorners.size()));
    }
    const auto& positions = *source.getArray<float3>(G::sPointPosition);
    return mesh(values(positions), newOffsets, newCorners);
}

inline Orsel::Ptr<Zelvane::Object> strands(const std::vector<float3>& positions,
                                           const std::vector<std::uint32_t>& offsets) {
    auto object = Zelvane::createObject();
    const bool made = Zelvane::Geometry::populateStrand(array(positions), array(offsets), *object);
    EXPECT_TRUE(made) << "fixture strands are not a valid strand object";
    return object;
}

// A strand object whose arrays and counts are set exactly as given, valid or not.
inline Orsel::MutablePtr<Zelvane::Object> rawStrands(const std::vector<float3>& positions,
                                                     const std::vector<std::uint32_t>& offsets) {
    namespace G = Zelvane::Geometry;
    auto object = Zelvane::createObject();
    object->set(G::sPointPosition, array(positions));
    object->set(G::sStrandOffset, array(offsets));
    G::setElementCount(G::sPointComp, positions.size(), *object);
    G::setElementCount(G::sStrandComp, offsets.empty() ? 0 : offsets.size() - 1, *object);
    return object;
}

inline ::testing::AssertionResult near(const float3& actual, const float3& expected,
                                       float tolerance = 1e-6f) {
    const float3 d = actual - expected;
    if (std::abs(d.x) <= tolerance && std::abs(d.y) <= tolerance && std::abs(d.z) <= tolerance) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << "(" << actual.x << ", " << actual.y << ", " << actual.z << ") is not (" << expected.x
           << ", " << expected.y << ", " << expected.z << ")";
}

// `v` scaled to unit length, for writing expected normals.
inline float3 unit(float x, float y, float z) {
    return Zelvane::Math::normalize(float3{x, y, z});
}

} // namespace fixtures
