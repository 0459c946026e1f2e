#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>
#include <zelvane/utils/ChannelParser.h>

using ZEL::Utils::ChannelParser;

namespace {

ChannelParser parsed(const char* expression) {
    ChannelParser parser;
    EXPECT_TRUE(parser.parses(expression)) << expression << ": " << parser.errorMessage();
    return parser;
}

TEST(ChannelParser, DefaultAndEmptyExpressionsAcceptNothing) {
    EXPECT_FALSE(ChannelParser().accepts("map1"));
    for (const char* empty : {"", "  ", ",, \t"}) {
        const ChannelParser parser = parsed(empty);
        EXPECT_FALSE(parser.accepts("map1"));
        EXPECT_FALSE(parser.accepts(""));
    }
}

TEST(ChannelParser, WildcardsMatchRunsAndSingleCharacters) {
    const ChannelParser star = parsed("*");
    EXPECT_TRUE(star.accepts("anything"));
    EXPECT_TRUE(star.accepts(""));
    const ChannelParser maps = parsed("map*");
    EXPECT_TRUE(maps.accepts("map"));
    EXPECT_TRUE(maps.accepts("map12"));
    EXPECT_FALSE(maps.accepts("amap"));
    const ChannelParser one = parsed("a?c");
    EXPECT_TRUE(one.accepts("abc"));
    EXPECT_TRUE(one.accepts("a\xC3\xA9"
                            "c"));
    EXPECT_FALSE(one.accepts("ac"));
    EXPECT_FALSE(one.accepts("abbc"));
    EXPECT_TRUE(parsed("*x*y").accepts("axbxcy"));
    EXPECT_FALSE(parsed("Map1").accepts("map1"));
}

TEST(ChannelParser, TermsSeparatedByCommasOrBlanks) {
    const ChannelParser parser = parsed(" uvA,uvB\tcolor  ");
    EXPECT_TRUE(parser.accepts("uvA"));
    EXPECT_TRUE(parser.accepts("uvB"));
    EXPECT_TRUE(parser.accepts("color"));
    EXPECT_FALSE(parser.accepts("uvC"));
}

TEST(ChannelParser, LaterTermsWin) {
    const ChannelParser excludeLast = parsed("* ^uv*");
    EXPECT_FALSE(excludeLast.accepts("uv1"));
    EXPECT_TRUE(excludeLast.accepts("color"));
    const ChannelParser includeLast = parsed("^uv* *");
    EXPECT_TRUE(includeLast.accepts("uv1"));
    const ChannelParser reinclude = parsed("* ^uv* uv2");
    EXPECT_TRUE(reinclude.accepts("uv2"));
    EXPECT_FALSE(reinclude.accepts("uv3"));
    EXPECT_FALSE(parsed("^uv").accepts("color"));
}

TEST(ChannelParser, BackslashMakesCharactersLiteral) {
    const ChannelParser blank = parsed(R"(my\ set)");
    EXPECT_TRUE(blank.accepts("my set"));
    EXPECT_FALSE(blank.accepts("my"));
    const ChannelParser star = parsed(R"(\*)");
    EXPECT_TRUE(star.accepts("*"));
    EXPECT_FALSE(star.accepts("x"));
    EXPECT_TRUE(parsed(R"(\^a\,b)").accepts("^a,b"));
}

TEST(ChannelParser, MalformedExpressionsFailAndAcceptNothing) {
    for (const char* bad : {"^", "a ^", "a^b", "^^a", "trailing\\"}) {
        ChannelParser parser = parsed("*");
        EXPECT_FALSE(parser.parses(bad)) << bad;
        EXPECT_FALSE(parser.errorMessage().empty()) << bad;
        EXPECT_FALSE(parser.accepts("a")) << bad;
        EXPECT_FALSE(parser.accepts("b")) << bad;
        EXPECT_EQ(parser.expression(), bad);
    }
}

TEST(ChannelParser, ReparsingReplacesTheExpression) {
    ChannelParser parser = parsed("a");
    ASSERT_TRUE(parser.parses("b"));
    EXPECT_FALSE(parser.accepts("a"));
    EXPECT_TRUE(parser.accepts("b"));
    EXPECT_TRUE(parser.errorMessage().empty());
}

TEST(ChannelParser, ManyStarsOnLongNamesStayFast) {
    const ChannelParser parser = parsed("*a*a*a*a*a*a*b");
    EXPECT_FALSE(parser.accepts(std::string(20000, 'a')));
}

TEST(ChannelParser, ConcurrentQueriesAgree) {
    const ChannelParser parser = parsed("* ^hidden*");
    std::vector<int> accepted(4, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 1000; ++i) {
                accepted[t] += parser.accepts(i % 2 ? "hiddenSet" : "visibleSet");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(accepted, (std::vector<int>(4, 500)));
}

} // namespace
