#include <gtest/gtest.h>
#include <kova/KMessageCapture.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KStringArray.h>
#include <kova/KStringResource.h>

TEST(KStringFormat, ReplacesPositionalPlaceholdersAndKeepsOtherCaretsLiteral) {
    const struct {
        const char* format;
        const char* expected;
    } cases[] = {
        {"^2s-^1s-^2s", "b-a-b"},              // any order, repeatedly
        {"^9s^1s", "9a"},                      // up to the ninth argument
        {"^^1s ^x ^1 end^", "^1s ^x ^1 end^"}, // a double caret writes one
        {"^^^1s", "^a"},                       // ... and then a placeholder
        {"[^3s]", "[^2s]"},                    // argument text is not reinterpreted
    };
    for (const auto& c : cases) {
        KString s;
        ASSERT_TRUE(s.format(c.format, "a", "b", "^2s", "4", "5", "6", "7", "8", "9")) << c.format;
        EXPECT_EQ(s, c.expected) << c.format;
    }
    // A missing argument fails and keeps the text.
    KString s("unchanged");
    const KStatus status = s.format("^1s and ^3s", "x", "y");
    EXPECT_EQ(status.statusCode(), KStatus::kInvalidParameter);
    EXPECT_NE(status.errorString().str().find("^3s"), std::string::npos);
    EXPECT_EQ(s, "unchanged");
    EXPECT_FALSE(s.format("^0s", "x"));
    EXPECT_FALSE(s.format("^1s"));
}

TEST(KStringSubstitute, ReplacesEveryOccurrenceWithoutRescanning) {
    KString s("pCubeShapeShape1");
    ASSERT_TRUE(s.substitute("Shape", ""));
    EXPECT_EQ(s, "pCube1");
    KString t("aaa");
    ASSERT_TRUE(t.substitute("a", "aa"));
    EXPECT_EQ(t, "aaaaaa");
    KString u("abab");
    ASSERT_TRUE(u.substituteFirst("ab", "x"));
    EXPECT_EQ(u, "xab");
    EXPECT_EQ(u.substitute("", "x").statusCode(), KStatus::kInvalidParameter);
}

TEST(KStringNumbers, ParseWholeTextOnly) {
    EXPECT_TRUE(KString("-42").isInt());
    EXPECT_EQ(KString("+7").asInt(), 7);
    EXPECT_FALSE(KString("4x").isInt());
    EXPECT_FALSE(KString(" 4").isInt());
    EXPECT_FALSE(KString("99999999999").isInt());
    EXPECT_EQ(KString("abc").asInt(), 0);
    EXPECT_TRUE(KString("2.5e3").isDouble());
    EXPECT_DOUBLE_EQ(KString("2.5e3").asDouble(), 2500.0);
    EXPECT_FALSE(KString("").isDouble());
    KString n;
    EXPECT_EQ(n.set(int64_t(-12)), "-12");
    EXPECT_EQ(n.set(0.125, 3), "0.125");
}

TEST(KStringText, SubstringClampsCountsCharactersAndSplitKeepsEmptyFields) {
    const KString s("hello");
    EXPECT_EQ(s.substring(1, 3), "ell");
    EXPECT_EQ(s.substring(-4, 99), "hello");
    EXPECT_EQ(s.substring(3, 1), "");
    EXPECT_EQ(KString("h\xC3\xA9llo").numChars(), 5u);
    EXPECT_EQ(KString("MiXeD").toLowerCase(), "mixed");
    EXPECT_EQ(s.indexOf('l'), 2);
    EXPECT_EQ(s.indexOf('z'), -1);
    KStringArray parts;
    ASSERT_TRUE(KString("a,,b").split(',', parts));
    EXPECT_EQ(parts, KStringArray({"a", "", "b"})); // empty fields kept
    ASSERT_TRUE(KString("").split(',', parts));
    EXPECT_EQ(parts.length(), 0u);
}

TEST(KStatusText, UsesDescriptionOrStandardTextAndPerrorReportsAnError) {
    EXPECT_EQ(KStatus(KStatus::kNotFound).errorString(), "Not found");
    EXPECT_EQ(KStatus(KStatus::kFailure, "bad thing").errorString(), "bad thing");
    KMessageCapture capture;
    KStatus(KStatus::kFailure, "bad thing").perror("registerNode::");
    ASSERT_EQ(capture.errors().size(), 1u);
    EXPECT_EQ(capture.errors()[0], "registerNode::: bad thing");
}

TEST(KStringResourceTable, RegisteredTextWinsAndDefaultComesBackWithFailure) {
    const KStringResourceId id("test_plugin", "kGreeting", "Hello ^1s");
    KStatus status;
    EXPECT_EQ(KStringResource::getString(id, status), "Hello ^1s");
    EXPECT_EQ(status.statusCode(), KStatus::kNotFound);

    ASSERT_TRUE(KStringResource::registerString(id));
    ASSERT_TRUE(KStringResource::setString(id, "Bonjour ^1s"));
    EXPECT_EQ(KStringResource::getString(id, status), "Bonjour ^1s");
    EXPECT_TRUE(status);

    const KStringResourceId sameKeyOtherPlugin("other_plugin", "kGreeting", "other");
    EXPECT_EQ(KStringResource::getString(sameKeyOtherPlugin, status), "other");
    EXPECT_FALSE(status);

    EXPECT_EQ(
        KStringResource::registerString(KStringResourceId("test_plugin", "", "x")).statusCode(),
        KStatus::kInvalidParameter);
    ASSERT_TRUE(KStringResource::registerString(KStringResourceId("test_plugin", "kOther", "o")));
    ASSERT_TRUE(KStringResource::registerString(sameKeyOtherPlugin));
    EXPECT_EQ(KStringResource::unregisterAll("test_plugin"), 2u);
    EXPECT_EQ(KStringResource::getString(id, status), "Hello ^1s");
    EXPECT_FALSE(status);
    EXPECT_EQ(KStringResource::getString(sameKeyOtherPlugin, status), "other");
    EXPECT_TRUE(status);
    EXPECT_EQ(KStringResource::unregisterAll("other_plugin"), 1u);
}
