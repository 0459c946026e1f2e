#include <gtest/gtest.h>
#include <vector>
#include <zelvane/Geometry.h>

using namespace Zelvane;
using namespace Zelvane::Geometry;
using Math::float3;

namespace {

// Built during static initialisation, from constants of another library.
const Orsel::String gCountName = elementCountName(sPointComp);

template <class T>
Orsel::Ptr<Orsel::Array<T>> array(const std::vector<T>& values) {
    auto out = Orsel::make<Orsel::Array<T>>();
    for (const T& value : values) {
        out->push_back(value);
    }
    return out;
}
using Indices = std::vector<std::uint32_t>;

TEST(Layout, ElementCountsDefaultToZeroAndTheirNamesServeStaticInitialisers) {
    EXPECT_EQ(gCountName, sPointComp + sElementCountSuffix);
    EXPECT_FALSE(gCountName.empty());
    Object geometry;
    EXPECT_EQ(getElementCount(geometry, sFaceComp), 0u);
    EXPECT_TRUE(setElementCount(sFaceComp, 6, geometry));
    EXPECT_EQ(getElementCount(geometry, sFaceComp), 6u);
    EXPECT_FALSE(setElementCount("", 1, geometry));
    geometry.set(elementCountName(sPointComp), std::int64_t{-3});
    EXPECT_EQ(getElementCount(geometry, sPointComp), 0u);
}

TEST(Layout, EmptyMeshesAndStrandsHaveOneZeroOffset) {
    Object mesh;
    mesh.set("keep", 1);
    populateMesh(mesh);
    EXPECT_TRUE(Object::isA(mesh, *getMeshPrototype()));
    EXPECT_EQ(*getMeshPrototype()->get<Orsel::String>(sPrototypeName), "mesh");
    for (const Orsel::String& component : {sPointComp, sFaceComp, sFaceVertexComp}) {
        EXPECT_EQ(getElementCount(mesh, component), 0u) << component;
    }
    EXPECT_EQ(*mesh.getArray<std::uint32_t>(sFaceOffset), (Orsel::Array<std::uint32_t>{0}));
    EXPECT_TRUE(mesh.getArray<float3>(sPointPosition)->empty());
    EXPECT_TRUE(mesh.getArray<std::uint32_t>(sFaceVertex)->empty());
    EXPECT_TRUE(mesh.has("keep"));

    Object strands;
    ASSERT_TRUE(populateStrand(nullptr, array<std::uint32_t>({0}), strands));
    EXPECT_EQ(getElementCount(strands, sStrandComp), 0u);
    EXPECT_EQ(getElementCount(strands, sPointComp), 0u);
}

TEST(Layout, MeshesAndStrandsShareTheirArraysAndCountElements) {
    const auto positions = array<float3>({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {1, 2, 0}});
    const auto offsets = array<std::uint32_t>({0, 3, 6});
    Object mesh;
    ASSERT_TRUE(populateMesh(positions, array<std::uint32_t>({0, 1, 2, 0, 2, 3}), offsets, mesh));
    EXPECT_EQ(getElementCount(mesh, sPointComp), 5u);
    EXPECT_EQ(getElementCount(mesh, sFaceComp), 2u);
    EXPECT_EQ(getElementCount(mesh, sFaceVertexComp), 6u);
    EXPECT_EQ(mesh.getArray<float3>(sPointPosition).get(), positions.get());
    EXPECT_EQ(mesh.getArray<std::uint32_t>(sFaceOffset).get(), offsets.get());
    EXPECT_TRUE(Object::isA(mesh, *getMeshPrototype()));

    const auto strandOffsets = array<std::uint32_t>({0, 2, 2, 5});
    Object strands;
    ASSERT_TRUE(populateStrand(positions, strandOffsets, strands));
    EXPECT_TRUE(Object::isA(strands, *getStrandPrototype()));
    EXPECT_FALSE(Object::isA(strands, *getMeshPrototype()));
    EXPECT_EQ(getElementCount(strands, sPointComp), 5u);
    EXPECT_EQ(getElementCount(strands, sStrandComp), 3u);
    EXPECT_EQ(strands.getArray<std::uint32_t>(sStrandOffset).get(), strandOffsets.get());
    EXPECT_EQ(strands.getArray<float3>(sPointPosition).get(), positions.get());
}

TEST(Layout, InconsistentArraysAreRejectedAndLeaveTheObjectEmpty) {
    const auto positions = array<float3>({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    const auto triangle = array<std::uint32_t>({0, 1, 2});
    Object mesh;
    for (const Indices& offsets : {Indices{1, 3}, Indices{0, 2}, Indices{0, 2, 1, 3}}) {
        EXPECT_FALSE(populateMesh(positions, triangle, array<std::uint32_t>(offsets), mesh));
    }
    EXPECT_FALSE(populateMesh(positions, array<std::uint32_t>({0, 1, 3}),
                              array<std::uint32_t>({0, 3}), mesh));
    EXPECT_FALSE(populateMesh(positions, triangle, nullptr, mesh));
    EXPECT_EQ(mesh.propertyCount(), 0u);
    EXPECT_FALSE(mesh.prototype());
    EXPECT_TRUE(populateMesh(positions, nullptr, nullptr, mesh));
    EXPECT_EQ(getElementCount(mesh, sPointComp), 3u);

    Object strands;
    EXPECT_FALSE(populateStrand(positions, nullptr, strands));
    for (const Indices& offsets :
         {Indices{}, Indices{1, 3}, Indices{0, 2, 1, 3}, Indices{0, 2}, Indices{0, 4}}) {
        EXPECT_FALSE(populateStrand(positions, array<std::uint32_t>(offsets), strands));
    }
    EXPECT_EQ(strands.propertyCount(), 0u);
}

} // namespace
