#include <gtest/gtest.h>
#include <orsel/MetadataItem.h>

using Orsel::MetadataItem;
using Orsel::MetadataStatus;

namespace {

MetadataItem itemWith(const char* key, const char* value) {
    MetadataItem item("options");
    item.addChild(MetadataItem(key, value));
    return item;
}

TEST(MetadataItem, ChildrenKeepTheirOrderAndCanBeReplacedOrRemoved) {
    EXPECT_TRUE(MetadataItem().empty());
    EXPECT_EQ(MetadataItem().findChild("x"), nullptr);
    MetadataItem item("root");
    EXPECT_FALSE(item.empty());
    item.addChild(MetadataItem("b", "1"));
    item.addChild(MetadataItem("a", "2")).addChild(MetadataItem("deep", "3"));
    item.setChild("b", "changed");
    item.setChild("c", "new");
    ASSERT_EQ(item.children().size(), 3u);
    EXPECT_EQ(item.children()[0].value(), "changed");
    EXPECT_EQ(item.children()[2].name(), "c");
    EXPECT_EQ(item.findChild("a")->findChild("deep")->value(), "3");
    EXPECT_TRUE(item.removeChild("a"));
    EXPECT_FALSE(item.removeChild("a"));
    EXPECT_EQ(item.children().size(), 2u);
}

TEST(MetadataItem, ReadsBooleansInEveryAcceptedSpellingAndKeepsTheDefaultOtherwise) {
    MetadataStatus status{};
    for (const char* yes : {"1", "true", "TRUE", "On", "yes", " true "}) {
        EXPECT_TRUE(itemWith("k", yes).getBool("k", false, &status)) << yes;
        EXPECT_EQ(status, MetadataStatus::Found);
    }
    for (const char* no : {"0", "false", "OFF", "No"}) {
        EXPECT_FALSE(itemWith("k", no).getBool("k", true)) << no;
    }
    EXPECT_TRUE(itemWith("k", "maybe").getBool("k", true, &status));
    EXPECT_EQ(status, MetadataStatus::Malformed);
    EXPECT_FALSE(itemWith("k", "1").getBool("other", false, &status));
    EXPECT_EQ(status, MetadataStatus::Missing);
    EXPECT_EQ(itemWith("k", "").getString("k", "d", &status), "");
    EXPECT_EQ(status, MetadataStatus::Found);
}

TEST(MetadataItem, ReadsIntegersStrictly) {
    MetadataStatus status{};
    EXPECT_EQ(itemWith("n", " -7 ").getInt("n", 0, &status), -7);
    EXPECT_EQ(status, MetadataStatus::Found);
    EXPECT_EQ(itemWith("n", "+3").getInt("n", 0), 3);
    for (const char* bad : {"+-3", "1.5", "12abc", "", "99999999999999999999"}) {
        EXPECT_EQ(itemWith("n", bad).getInt("n", 5, &status), 5) << bad;
        EXPECT_EQ(status, MetadataStatus::Malformed) << bad;
    }
}

TEST(MetadataItem, ReadsOnlyFiniteFloats) {
    MetadataStatus status{};
    EXPECT_FLOAT_EQ(itemWith("f", "2.5").getFloat("f", 0, &status), 2.5f);
    EXPECT_FLOAT_EQ(itemWith("f", "1e3").getFloat("f", 0), 1000.0f);
    EXPECT_FLOAT_EQ(itemWith("f", "-.5").getFloat("f", 0), -0.5f);
    for (const char* bad : {"nan", "inf", "1e39", "abc", "1,5"}) {
        EXPECT_EQ(itemWith("f", bad).getFloat("f", 4.0f, &status), 4.0f) << bad;
        EXPECT_EQ(status, MetadataStatus::Malformed) << bad;
    }
}

} // namespace
