#include "WiredGraph.h"

#include <board/Graph.h>
#include <cmath>
#include <gtest/gtest.h>
#include <zelvane/Object.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/Strand.h>
#include <zelvane/math/Vector.h>

using Zelvane::Math::float3;
using ZelvaneBoard::Graph;
using ZelvaneBoard::PortValues;

namespace {

Orsel::Ptr<Zelvane::Object> strands(std::initializer_list<float3> points,
                                    std::initializer_list<std::uint32_t> offsets) {
    auto object = Zelvane::createObject();
    EXPECT_TRUE(Zelvane::Geometry::populateStrand(Orsel::make<Orsel::Array<float3>>(points),
                                                  Orsel::make<Orsel::Array<std::uint32_t>>(offsets),
                                                  *object));
    return Orsel::Ptr<Zelvane::Object>(std::move(object));
}

// Runs a graph of one "strandsToTubes" operator on `input` and returns its meshes.
std::vector<Orsel::Ptr<Zelvane::Object>> tubes(const Orsel::Ptr<Zelvane::Object>& input,
                                               float radius, int sides) {
    const Graph graph = wiredGraph({{"tubes", "strandsToTubes"}}, {{"strands", "tubes.strands"},
                                                                   {"radius", "tubes.radius"},
                                                                   {"sides", "tubes.sides"},
                                                                   {"tubes.meshes", "meshes"}});
    const PortValues out = graph.run(
        {{"strands", Orsel::Value::fromClass(Zelvane::objectType(), input)},
         {"radius", Orsel::Value::make(Orsel::Type::builtin(Orsel::TypeKind::Float), radius)},
         {"sides", Orsel::Value::make(Orsel::Type::builtin(Orsel::TypeKind::Int32), sides)}});
    std::vector<Orsel::Ptr<Zelvane::Object>> meshes;
    if (auto array = out.at("meshes").getOpaqueArray()) {
        for (const auto& entry : *array) {
            meshes.push_back(Orsel::dynamicPtrCast<Zelvane::Object>(entry));
        }
    }
    return meshes;
}

} // namespace

TEST(StrandTubes, BuildsQuadRingsAtTheRadiusAroundEveryStrand) {
    // A straight strand of three points along x, and a one-point strand that makes no tube.
    const auto input = strands({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {5, 5, 5}}, {0, 3, 4});
    const auto meshes = tubes(input, 0.5f, 4);
    ASSERT_EQ(meshes.size(), 1u);
    const auto points = meshes[0]->getArray<float3>(Zelvane::Geometry::sPointPosition);
    const auto offsets = meshes[0]->getArray<std::uint32_t>(Zelvane::Geometry::sFaceOffset);
    const auto corners = meshes[0]->getArray<std::uint32_t>(Zelvane::Geometry::sFaceVertex);
    ASSERT_TRUE(points && offsets && corners);
    ASSERT_EQ(points->size(), 12u); // 3 rings of 4
    ASSERT_EQ(offsets->size(), 9u); // 2 segments of 4 quads, plus one
    EXPECT_EQ((*offsets)[8], 32u);
    for (std::size_t i = 0; i < points->size(); ++i) {
        const float3 p = (*points)[i];
        EXPECT_FLOAT_EQ(p.x, static_cast<float>(i / 4)) << i;
        EXPECT_NEAR(std::hypot(p.y, p.z), 0.5f, 1e-6f) << i;
    }
    // The first quad joins two neighbouring corners of ring 0 to the same two of ring 1.
    EXPECT_EQ((*corners)[0], 0u);
    EXPECT_EQ((*corners)[1], 1u);
    EXPECT_EQ((*corners)[2], 5u);
    EXPECT_EQ((*corners)[3], 4u);
}

TEST(StrandTubes, RingsStayPerpendicularAroundABend) {
    const auto input = strands({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {0, 3});
    const auto meshes = tubes(input, 1.0f, 6);
    ASSERT_EQ(meshes.size(), 1u);
    const auto points = meshes[0]->getArray<float3>(Zelvane::Geometry::sPointPosition);
    // The last ring lies around (1,1,0) in the plane y = 1.
    for (std::size_t i = 12; i < 18; ++i) {
        EXPECT_NEAR((*points)[i].y, 1.0f, 1e-6f) << i;
    }
}

// Strands too short for a tube, and objects whose offsets do not cover their points.
TEST(StrandTubes, StrandsTooShortOrBrokenGiveNoMesh) {
    EXPECT_TRUE(tubes(strands({{1, 2, 3}}, {0, 1}), 1.0f, 4).empty());
    EXPECT_TRUE(tubes(strands({}, {0}), 1.0f, 4).empty());
    auto broken = Zelvane::createObject();
    broken->set(
        Zelvane::Geometry::sPointPosition,
        Orsel::make<Orsel::Array<float3>>(std::initializer_list<float3>{{0, 0, 0}, {1, 0, 0}}));
    broken->set(Zelvane::Geometry::sStrandOffset, Orsel::make<Orsel::Array<std::uint32_t>>(
                                                      std::initializer_list<std::uint32_t>{0, 7}));
    EXPECT_TRUE(tubes(Orsel::Ptr<Zelvane::Object>(std::move(broken)), 1.0f, 4).empty());
}
