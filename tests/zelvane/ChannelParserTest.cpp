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

// An expression and, for each name in order, whether it accepts it.
struct Case {
    const char* expression;
    std::vector<std::pair<std::string, bool>> names;
};

TEST(ChannelParser, AcceptsWhatTheLastMatchingTermIncludes) {
    const Case cases[] = {
        // Empty expressions accept nothing.
        {"", {{"map1", false}, {"", false}}},
        {"  ", {{"map1", false}}},
        {",, \t", {{"", false}}},
        // `*` matches runs, `?` one code point, the rest itself.
        {"*", {{"anything", true}, {"", true}}},
        {"map*", {{"map", true}, {"map12", true}, {"amap", false}}},
        {"a?c", {{"abc", true}, {"a\u00e9c", true}, {"ac", false}, {"abbc", false}}},
        {"*x*y", {{"axbxcy", true}}},
        {"Map1", {{"map1", false}}},
        // Terms separated by commas or blanks.
        {" uvA,uvB\tcolor  ", {{"uvA", true}, {"uvB", true}, {"color", true}, {"uvC", false}}},
        // Later terms win; a name no term matches is not accepted.
        {"* ^uv*", {{"uv1", false}, {"color", true}}},
        {"^uv* *", {{"uv1", true}}},
        {"* ^uv* uv2", {{"uv2", true}, {"uv3", false}}},
        {"^uv", {{"color", false}}},
        // A backslash makes the next character literal.
        {R"(my\ set)", {{"my set", true}, {"my", false}}},
        {R"(\*)", {{"*", true}, {"x", false}}},
        {R"(\^a\,b)", {{"^a,b", true}}},
    };
    EXPECT_FALSE(ChannelParser().accepts("map1"));
    for (const Case& c : cases) {
        const ChannelParser parser = parsed(c.expression);
        for (const auto& [name, accepted] : c.names) {
            EXPECT_EQ(parser.accepts(name), accepted) << '"' << c.expression << "\" on " << name;
        }
    }
}

TEST(ChannelParser, MalformedExpressionsFailAndAcceptNothing) {
    for (const char* bad : {"^", "a ^", "a^b", "^^a", "trailing\\"}) {
        ChannelParser parser = parsed("*");
        EXPECT_FALSE(parser.parses(bad)) << bad;
        EXPECT_FALSE(parser.errorMessage().empty()) << bad;
        EXPECT_FALSE(parser.accepts("a")) << bad;
        EXPECT_FALSE(parser.accepts("b")) << bad;
        EXPECT_EQ(parser.expression(), bad);
        // Parsing again replaces the expression and clears the error.
        ASSERT_TRUE(parser.parses("b"));
        EXPECT_FALSE(parser.accepts("a"));
        EXPECT_TRUE(parser.accepts("b"));
        EXPECT_TRUE(parser.errorMessage().empty()) << bad;
    }
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
