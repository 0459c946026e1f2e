#include <gtest/gtest.h>
#include <map>
#include <orsel/String.h>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

using Orsel::String;

namespace {

constinit const String kLiteral = String::literal("graph");

TEST(String, LiteralConstantsAndNullOrEmptyInputsCompareAsText) {
    EXPECT_EQ(kLiteral.size(), 5u);
    EXPECT_STREQ(kLiteral.c_str(), "graph");
    EXPECT_EQ(kLiteral, String("graph"));
    EXPECT_EQ(kLiteral, "graph");
    EXPECT_EQ(kLiteral, std::string("graph"));
    EXPECT_EQ(kLiteral, std::string_view("graph"));
    EXPECT_NE(kLiteral, "graphs");
    EXPECT_TRUE(String(static_cast<const char*>(nullptr)).empty());
    EXPECT_TRUE(String("").empty());
    EXPECT_STREQ(String().c_str(), "");
    EXPECT_EQ(String(), "");
}

TEST(String, CopiesShareTheBufferAndOutliveTheOriginal) {
    auto original = std::make_unique<String>(std::string("shared text"));
    const String copy = *original;
    EXPECT_EQ(copy.c_str(), original->c_str());
    original.reset();
    EXPECT_EQ(copy, "shared text");

    String moved = copy;
    String target = std::move(moved);
    EXPECT_TRUE(moved.empty());
    EXPECT_EQ(target, copy);
}

TEST(String, ConcatenatesSlicesAndSearches) {
    const String name = String("uv") + "1" + String("_index");
    EXPECT_EQ(name, "uv1_index");
    EXPECT_EQ("pre-" + name, "pre-uv1_index");
    EXPECT_TRUE(name.startsWith("uv1"));
    EXPECT_TRUE(name.endsWith("_index"));
    EXPECT_EQ(name.find("_"), 3u);
    EXPECT_EQ(name.find("z"), String::npos);
    EXPECT_EQ(name.substr(3), "_index");
    EXPECT_EQ(name.substr(0, 2), "uv");
    EXPECT_EQ(name.substr(100), "");
    EXPECT_EQ(name.substr(7, 100), "ex");
}

TEST(String, WorksAsHashedAndOrderedKey) {
    std::unordered_map<String, int> hashed{{"a", 1}, {String("b"), 2}};
    EXPECT_EQ(hashed.at(String::literal("b")), 2);
    std::map<String, int> ordered{{"b", 2}, {"a", 1}, {"c", 3}};
    EXPECT_EQ(ordered.begin()->first, "a");
    EXPECT_LT(String("abc"), String("abd"));
}

TEST(String, CopiesMayBeMadeAndDroppedOnManyThreads) {
    const String shared(std::string(100, 'x'));
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&shared] {
            for (int i = 0; i < 10000; ++i) {
                String copy = shared;
                String again = copy;
                ASSERT_EQ(again.size(), 100u);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(shared, std::string(100, 'x'));
}

} // namespace
