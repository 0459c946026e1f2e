#include <atomic>
#include <gtest/gtest.h>
#include <kova/KFailureInjection.h>
#include <kova/KString.h>
#include <kova/KStringResource.h>
#include <thread>
#include <vector>

namespace {

class KFailureInjectionTest : public ::testing::Test {
protected:
    void SetUp() override { KFailureInjection::reset(); }
    void TearDown() override { KFailureInjection::reset(); }

    static std::vector<bool> calls(const char* operation, int n) {
        std::vector<bool> results;
        for (int i = 0; i < n; ++i) {
            results.push_back(KFailureInjection::shouldFail(operation));
        }
        return results;
    }
};

} // namespace

TEST_F(KFailureInjectionTest, ArmedOperationsFailAsToldAndAreCounted) {
    EXPECT_FALSE(KFailureInjection::shouldFail("KFnMesh::getVertices"));
    EXPECT_EQ(KFailureInjection::callCount("KFnMesh::getVertices"), 0) << "disarmed: not counted";

    KFailureInjection::failNext("KFnMesh::getVertices", 2);
    EXPECT_EQ(calls("KFnMesh::getVertices", 4), (std::vector<bool>{true, true, false, false}));
    EXPECT_FALSE(KFailureInjection::shouldFail("KFnMesh::getRawPoints"));
    EXPECT_EQ(KFailureInjection::callCount("KFnMesh::getVertices"), 4);
    EXPECT_EQ(KFailureInjection::callCount("KFnMesh::getRawPoints"), 1);

    KFailureInjection::failAfter("KFnGeometryData::attach", 2);
    EXPECT_EQ(calls("KFnGeometryData::attach", 5),
              (std::vector<bool>{false, false, true, false, false}));

    KFailureInjection::failAlways("A::b");
    EXPECT_EQ(calls("A::b", 3), (std::vector<bool>{true, true, true}));
    KFailureInjection::reset();
    EXPECT_FALSE(KFailureInjection::shouldFail("A::b"));
    EXPECT_EQ(KFailureInjection::callCount("A::b"), 0);

    KFailureInjection::setCounting(true);
    EXPECT_EQ(calls("A::b", 3), (std::vector<bool>{false, false, false}));
    EXPECT_EQ(KFailureInjection::callCount("A::b"), 3);

    const KStatus status = KFailureInjection::failure("KFnMesh::getVertices");
    EXPECT_EQ(status.statusCode(), KStatus::kFailure);
    EXPECT_EQ(status.errorString(), "injected failure: KFnMesh::getVertices");
}

TEST_F(KFailureInjectionTest, ConfigureArmsFromTextOrRejectsItWhole) {
    ASSERT_TRUE(KFailureInjection::configure("A::x, B::y:always,C::z:next=2,D::w:after=1"));
    EXPECT_EQ(calls("A::x", 2), (std::vector<bool>{true, false}));
    EXPECT_EQ(calls("B::y", 2), (std::vector<bool>{true, true}));
    EXPECT_EQ(calls("C::z", 3), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(calls("D::w", 3), (std::vector<bool>{false, true, false}));
    KFailureInjection::reset();
    EXPECT_EQ(KFailureInjection::configure("E::v,F::u:sometimes").statusCode(),
              KStatus::kInvalidParameter);
    EXPECT_FALSE(KFailureInjection::shouldFail("E::v"));
    EXPECT_FALSE(KFailureInjection::configure("G::t:next=-1"));
    EXPECT_FALSE(KFailureInjection::configure("a,,b"));
}

TEST_F(KFailureInjectionTest, StringRegistrationCanBeMadeToFail) {
    KFailureInjection::failNext("KStringResource::registerString");
    const KStringResourceId id("fi_plugin", "kKey", "text");
    EXPECT_EQ(KStringResource::registerString(id).errorString(),
              "injected failure: KStringResource::registerString");
    KStatus status;
    KStringResource::getString(id, status);
    EXPECT_EQ(status.statusCode(), KStatus::kNotFound);
    EXPECT_TRUE(KStringResource::registerString(id));
    KStringResource::unregisterAll("fi_plugin");
}

TEST_F(KFailureInjectionTest, ConcurrentChecksSeeEachArmedFailureExactlyOnce) {
    std::atomic<bool> stop{false};
    std::atomic<int> failures{0};
    std::vector<std::thread> checkers;
    for (int t = 0; t < 4; ++t) {
        checkers.emplace_back([&] {
            while (!stop.load()) {
                if (KFailureInjection::shouldFail("Race::op")) {
                    failures.fetch_add(1);
                }
            }
        });
    }
    for (int i = 0; i < 50; ++i) {
        KFailureInjection::failNext("Race::op", 2);
        // Both armed failures are consumed before the next arming.
        while (failures.load() < 2 * (i + 1)) {
            std::this_thread::yield();
        }
    }
    stop = true;
    for (std::thread& thread : checkers) {
        thread.join();
    }
    EXPECT_EQ(failures.load(), 100);
}
