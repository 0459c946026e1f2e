#include <gtest/gtest.h>
#include <zelvane/Geometry.h>

using namespace Zelvane;
using namespace Zelvane::Geometry;

namespace {

TEST(Tag, NamesDependOnTheTarget) {
    EXPECT_EQ(createTagName(sPointComp, "top"),
              sComponentTagPrefix_point + "top" + sComponentTagSuffix);
    EXPECT_EQ(createTagName(sFaceComp, "lid"),
              sComponentTagPrefix_face + "lid" + sComponentTagSuffix);
    EXPECT_NE(createTagName(sPointComp, "x"), createTagName(sFaceComp, "x"));
    EXPECT_EQ(createTagName(sStrandComp, "x"), "");
    EXPECT_EQ(createTagName("", "x"), "");
}

TEST(Tag, MembershipArraysAreStoredAsTheyAre) {
    auto membership =
        Orsel::make<Orsel::Array<bool>>(std::initializer_list<bool>{true, false, true});
    const bool* data = membership->data();
    Object tag;
    ASSERT_TRUE(populateTag(sFaceComp, std::move(membership), tag));
    EXPECT_EQ(*tag.get<Orsel::String>(sTarget), sFaceComp);
    EXPECT_EQ(tag.getArray<bool>(sData)->data(), data);
    Object geometry;
    geometry.set("t", Orsel::make<Object>(tag));
    EXPECT_TRUE(getDataGeoProperty(geometry, "t"));
}

TEST(Tag, IndicesBecomeMembershipOverAllElementsAndOutOfRangeOnesAreReported) {
    using Indices = Orsel::Array<std::uint32_t>;
    Object tag;
    EXPECT_FALSE(populateTag(sPointComp, Orsel::Ptr<Orsel::Array<bool>>(), tag));
    EXPECT_FALSE(populateTag(sPointComp, Orsel::Ptr<Indices>(), 4, tag));
    EXPECT_EQ(tag.propertyCount(), 0u) << "null inputs leave the tag unchanged";

    ASSERT_TRUE(populateTag(sPointComp, Orsel::make<Indices>(Indices{4, 1, 4}), 6, tag));
    EXPECT_EQ(*tag.getArray<bool>(sData),
              (Orsel::Array<bool>{false, true, false, false, true, false}));
    // Out-of-range indices are skipped.
    EXPECT_FALSE(populateTag(sPointComp, Orsel::make<Indices>(Indices{0, 9}), 2, tag));
    EXPECT_EQ(*tag.getArray<bool>(sData), (Orsel::Array<bool>{true, false}));
}

} // namespace
