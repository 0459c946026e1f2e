#include "KovaTestSupport.h"

#include <kova/KDGModifier.h>
#include <thread>
#include <vector>

namespace {

class ConcurrencyTest : public KovaTest {};

// One shared source feeding a layer of middle nodes, each feeding two leaves: threads pull
// the leaves at once, so they meet on the shared upstream nodes.
TEST_F(ConcurrencyTest, ThreadsPullingOutputsThatShareUpstreamNodes) {
    const KObject source = createNode("testScale", "source");
    std::vector<KObject> middles, leaves;
    KDGModifier modifier;
    for (int i = 0; i < 4; ++i) {
        middles.push_back(createNode("testScale"));
        modifier.connect(plug(source, "output"), plug(middles.back(), "input"));
        for (int j = 0; j < 2; ++j) {
            leaves.push_back(createNode("testScale"));
            modifier.connect(plug(middles.back(), "output"), plug(leaves.back(), "input"));
        }
    }
    ASSERT_TRUE(modifier.doIt());

    for (int round = 1; round <= 20; ++round) {
        ASSERT_TRUE(plug(source, "input").setDouble(round));
        std::vector<std::thread> threads;
        std::vector<double> results(leaves.size() * 2, 0.0);
        for (std::size_t t = 0; t < results.size(); ++t) {
            threads.emplace_back(
                [&, t] { results[t] = plug(leaves[t % leaves.size()], "output").asDouble(); });
        }
        for (auto& thread : threads) {
            thread.join();
        }
        for (double result : results) {
            EXPECT_DOUBLE_EQ(result, round * 8.0);
        }
        EXPECT_EQ(scaleNode(source).computes, round); // computed once per change
    }
    for (const KObject& middle : middles) {
        EXPECT_EQ(scaleNode(middle).computes, 20);
    }
}

} // namespace
