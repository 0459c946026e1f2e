#include <gtest/gtest.h>
#include <kova/KProfiler.h>
#include <kova/KProfilingScope.h>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

class KProfilerTest : public ::testing::Test {
protected:
    void SetUp() override {
        KProfiler::clear();
        KProfiler::setRecording(true);
        category = KProfiler::addCategory("Test/Profiler", "Events of the profiler tests");
    }
    void TearDown() override {
        KProfiler::setRecording(false);
        KProfiler::clear();
    }
    int category = -1;
};

void nested(int category) {
    KProfilingScope outer(category, 9, "outer");
    {
        KProfilingScope inner(category, 3, "inner", "the inner step");
        KProfilingScope innermost(category, 4, "innermost");
    }
    KProfilingScope second(category, 9, "second");
}

} // namespace

TEST_F(KProfilerTest, CategoriesAreIdentifiedByName) {
    EXPECT_EQ(KProfiler::addCategory("Test/Profiler", "ignored"), category);
    EXPECT_EQ(KProfiler::categoryName(category), "Test/Profiler");
    EXPECT_EQ(KProfiler::categoryDescription(category), "Events of the profiler tests");
    EXPECT_NE(KProfiler::addCategory("Test/Other", nullptr), category);
    EXPECT_EQ(KProfiler::addCategory("", "x"), -1);
    EXPECT_EQ(KProfiler::categoryName(9999), "");
}

TEST_F(KProfilerTest, ScopesNestPerThreadAndExportAsAChromeTrace) {
    nested(category);
    const std::vector<KProfiler::Event> events = KProfiler::events();
    ASSERT_EQ(events.size(), 4u);
    const char* labels[] = {"outer", "inner", "innermost", "second"};
    const int depths[] = {0, 1, 2, 1};
    for (std::size_t i = 0; i < events.size(); ++i) {
        EXPECT_EQ(events[i].label, labels[i]);
        EXPECT_EQ(events[i].depth, depths[i]);
        EXPECT_GE(events[i].startNs, events[0].startNs);
        EXPECT_LE(events[i].startNs + events[i].durationNs,
                  events[0].startNs + events[0].durationNs);
        EXPECT_EQ(events[i].threadId, events[0].threadId);
    }
    EXPECT_EQ(events[1].colorIndex, 3);
    EXPECT_EQ(events[1].description, "the inner step");
    EXPECT_GE(events[3].startNs, events[1].startNs + events[1].durationNs);

    // The Chrome trace holds the same events as complete ("X") events in microseconds.
    std::ostringstream out;
    ASSERT_TRUE(KProfiler::writeChromeTrace(out));
    const nlohmann::json trace = nlohmann::json::parse(out.str());
    const nlohmann::json& traced = trace.at("traceEvents");
    ASSERT_EQ(traced.size(), 4u);
    const nlohmann::json& inner = traced[1];
    EXPECT_EQ(inner.at("ph"), "X");
    EXPECT_EQ(inner.at("name"), "inner");
    EXPECT_EQ(inner.at("cat"), "Test/Profiler");
    EXPECT_EQ(inner.at("args").at("colorIndex"), 3);
    EXPECT_EQ(inner.at("args").at("description"), "the inner step");
    EXPECT_TRUE(inner.at("pid").is_number_integer());
    EXPECT_TRUE(inner.at("tid").is_number_integer());
    EXPECT_DOUBLE_EQ(inner.at("ts").get<double>(), events[1].startNs / 1000.0);
    EXPECT_DOUBLE_EQ(inner.at("dur").get<double>(), events[1].durationNs / 1000.0);
    EXPECT_FALSE(traced[0].at("args").contains("description"));
}

TEST_F(KProfilerTest, ThreadsRecordIntoTheirOwnBuffers) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([this] {
            for (int i = 0; i < 300; ++i) { // 1200 events cross a buffer block
                nested(category);
            }
        });
    }
    std::thread reader([] {
        for (int i = 0; i < 5; ++i) {
            std::ostringstream sink;
            KProfiler::writeChromeTrace(sink);
        }
    });
    for (std::thread& thread : threads) {
        thread.join();
    }
    reader.join();
    const std::vector<KProfiler::Event> events = KProfiler::events();
    ASSERT_EQ(events.size(), 4u * 300u * 4u);
    std::set<uint32_t> ids;
    for (const KProfiler::Event& e : events) {
        ids.insert(e.threadId);
    }
    EXPECT_EQ(ids.size(), 4u);
}

TEST_F(KProfilerTest, NothingIsRecordedWhileOffAndClearForgets) {
    KProfiler::setRecording(false);
    nested(category);
    EXPECT_TRUE(KProfiler::events().empty());
    KProfiler::setRecording(true);
    nested(category);
    EXPECT_EQ(KProfiler::events().size(), 4u);
    KProfiler::clear();
    EXPECT_TRUE(KProfiler::events().empty());
    nested(category);
    EXPECT_EQ(KProfiler::events().size(), 4u);
}
