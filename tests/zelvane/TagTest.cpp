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

TEST(Tag, NullInputsLeaveTheTagUnchanged) {
    Object tag;
    EXPECT_FALSE(populateTag(sPointComp, Orsel::Ptr<Orsel::Array<bool>>(), tag));
    EXPECT_FALSE(populateTag(sPointComp, Orsel::Ptr<Orsel::Array<std::uint32_t>>(), 4, tag));
    EXPECT_EQ(tag.propertyCount(), 0u);
}

TEST(Tag, IndicesBecomeMembershipOverAllElements) {
    const Orsel::Ptr<Orsel::Array<std::uint32_t>> indices =
        Orsel::make<Orsel::Array<std::uint32_t>>(std::initializer_list<std::uint32_t>{4, 1, 4});
    Object tag;
    ASSERT_TRUE(populateTag(sPointComp, indices, 6, tag));
    EXPECT_EQ(*tag.getArray<bool>(sData),
              (Orsel::Array<bool>{false, true, false, false, true, false}));
}

TEST(Tag, IndicesOutOfRangeAreSkippedAndReported) {
    const Orsel::Ptr<Orsel::Array<std::uint32_t>> indices =
        Orsel::make<Orsel::Array<std::uint32_t>>(std::initializer_list<std::uint32_t>{0, 9});
    Object tag;
    EXPECT_FALSE(populateTag(sPointComp, indices, 2, tag));
    EXPECT_EQ(*tag.getArray<bool>(sData), (Orsel::Array<bool>{true, false}));
}

} // namespace
