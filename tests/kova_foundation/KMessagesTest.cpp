#include <gtest/gtest.h>
#include <kova/KMessageCapture.h>
#include <kova/KMessageSink.h>
#include <thread>
#include <vector>

namespace {

class CountingSink : public KMessageSink {
public:
    void message(Severity, const KString&) override { ++count; }
    int count = 0;
};

} // namespace

TEST(KMessageCaptureScope, RecordsSeverityAndTextInOrder) {
    KMessageCapture capture;
    KMessages::error("e1");
    KMessages::warning("w1");
    KMessages::info("i1");
    const std::vector<KMessageCapture::Entry> expected = {
        {KMessageSink::kError, "e1"}, {KMessageSink::kWarning, "w1"}, {KMessageSink::kInfo, "i1"}};
    EXPECT_EQ(capture.entries(), expected);
    EXPECT_EQ(capture.warnings(), std::vector<KString>{"w1"});
    capture.clear();
    EXPECT_EQ(capture.size(), 0u);
}

TEST(KMessageCaptureScope, RestoresThePreviousSinkAndNests) {
    auto counting = std::make_shared<CountingSink>();
    const auto original = KMessages::setSink(counting);
    {
        KMessageCapture outer;
        {
            KMessageCapture inner;
            KMessages::error("inner");
            EXPECT_EQ(inner.size(), 1u);
        }
        KMessages::error("outer");
        EXPECT_EQ(outer.errors(), std::vector<KString>{"outer"});
    }
    KMessages::info("counted");
    EXPECT_EQ(counting->count, 1);
    EXPECT_EQ(KMessages::setSink(original), counting);
}

TEST(KMessageCaptureScope, RecordsMessagesFromManyThreads) {
    KMessageCapture capture;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 250; ++i) {
                KMessages::warning("w");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(capture.warnings().size(), 1000u);
}

TEST(KMessageSinkDefault, NullRestoresTheDefaultThatWritesPrefixedLinesToStandardError) {
    const auto original = KMessages::sink();
    const auto previous = KMessages::setSink(std::make_shared<CountingSink>());
    KMessages::setSink(nullptr);
    EXPECT_EQ(KMessages::sink(), original);
    testing::internal::CaptureStderr();
    KMessages::error("broken");
    KMessages::warning("careful");
    KMessages::info("plain");
    const std::string written = testing::internal::GetCapturedStderr();
    KMessages::setSink(previous);
    EXPECT_EQ(written, "// Error: broken\n// Warning: careful\nplain\n");
}
