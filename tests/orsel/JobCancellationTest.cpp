#include <atomic>
#include <gtest/gtest.h>
#include <orsel/JobCancellation.h>
#include <thread>

namespace {

TEST(JobCancellation, AnotherThreadCancelsTheJobOfThisThread) {
    EXPECT_FALSE(Orsel::isJobCancelled()) << "outside a scope";
    std::atomic<bool> cancelled{false};
    Orsel::JobCancellationScope scope(cancelled);
    EXPECT_FALSE(Orsel::isJobCancelled());
    std::thread([&cancelled] { cancelled = true; }).join();
    EXPECT_TRUE(Orsel::isJobCancelled());
}

TEST(JobCancellation, ScopesBelongToTheirOwnThread) {
    std::atomic<bool> cancelled{true};
    Orsel::JobCancellationScope scope(cancelled);
    bool seenElsewhere = true;
    std::thread([&seenElsewhere] { seenElsewhere = Orsel::isJobCancelled(); }).join();
    EXPECT_FALSE(seenElsewhere);
    EXPECT_TRUE(Orsel::isJobCancelled());
}

TEST(JobCancellation, NestedScopesSeeTheOuterJobCancelled) {
    std::atomic<bool> outer{false};
    std::atomic<bool> inner{false};
    Orsel::JobCancellationScope outerScope(outer);
    {
        Orsel::JobCancellationScope innerScope(inner);
        EXPECT_FALSE(Orsel::isJobCancelled());
        outer = true;
        EXPECT_TRUE(Orsel::isJobCancelled());
        outer = false;
        inner = true;
        EXPECT_TRUE(Orsel::isJobCancelled());
    }
    // The inner job is over: its flag no longer counts.
    EXPECT_FALSE(Orsel::isJobCancelled());
}

TEST(JobCancellation, WorkerPollingInsideAScopeStopsWhenCancelled) {
    std::atomic<bool> cancelled{false};
    std::atomic<int> iterations{0};
    std::thread worker([&] {
        Orsel::JobCancellationScope scope(cancelled);
        while (!Orsel::isJobCancelled()) {
            ++iterations;
        }
    });
    while (iterations.load() < 100) {
        std::this_thread::yield();
    }
    cancelled = true;
    worker.join();
    EXPECT_GE(iterations.load(), 100);
}

} // namespace
