// Many threads evaluating boards at once, the way a host evaluates independent nodes in
// parallel: every evaluation must give exactly the values of a serial run, and none may hang.

#include "LoadScene.h"
#include "Watchdog.h"

#include <array>
#include <atomic>
#include <chrono>
#include <tbb/task_arena.h>
#include <thread>
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Names.h>

namespace {

namespace Geo = Zelvane::Geometry;

class BoardLoad : public LoadScene {
protected:
    static constexpr int kThreads = 8; // one board each
    static constexpr int kRounds = 4;  // the shared sources move between rounds
    static constexpr int kEvaluationsPerRound = 2;
};

TEST_F(BoardLoad, ThreadsEvaluatingBoardsAtOnceGiveTheValuesOfASerialRun) {
    std::array<std::atomic<int>, kThreads> finished{};
    Watchdog watchdog("BoardLoad", std::chrono::seconds(120), [&finished] {
        std::string text = "evaluations finished by each thread:";
        for (const auto& count : finished) {
            text += " " + std::to_string(count.load());
        }
        return text;
    });
    build(kThreads);
    ASSERT_FALSE(HasFatalFailure());

    // The serial run: one board at a time, the converters on one thread, for both places of
    // the shared sources.
    std::array<std::vector<BoardOutputs>, 2> serial;
    tbb::task_arena oneThread(1);
    for (int place = 0; place < 2; ++place) {
        placeSharedSources(place);
        for (int b = 0; b < kThreads; ++b) {
            oneThread.execute([&] { serial[place].push_back(evaluate(b)); });
            watchdog.progress();
            const BoardOutputs& outputs = serial[place].back();
            ASSERT_TRUE(outputs.evaluated);
            ASSERT_EQ(outputs.meshObjects.size(), std::size_t(kSharedMeshes + 1));
            for (const auto& mesh : outputs.meshObjects) {
                ASSERT_TRUE(mesh);
                ASSERT_EQ(Geo::getElementCount(*mesh, Geo::sFaceComp), std::size_t(gridFaces()));
            }
            ASSERT_EQ(outputs.strandObjects.size(), 1u);
            ASSERT_TRUE(outputs.strandObjects[0]);
            ASSERT_EQ(Geo::getElementCount(*outputs.strandObjects[0], Geo::sStrandComp),
                      std::size_t(kSharedCurves + kOwnCurves));
            ASSERT_EQ(outputs.hostMeshes.size(), std::size_t(kSharedMeshes + 1));
        }
    }
    EXPECT_NE(outputsDifference(serial[0][0], serial[1][0]), "")
        << "moving the shared sources changes what the boards make";

    for (int round = 0; round < kRounds; ++round) {
        const int place = round % 2;
        placeSharedSources(place);
        std::array<std::string, kThreads> mismatch;
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&, t] {
                for (int e = 0; e < kEvaluationsPerRound; ++e) {
                    const std::string difference = outputsDifference(serial[place][t], evaluate(t));
                    if (!difference.empty() && mismatch[t].empty()) {
                        mismatch[t] = "evaluation " + std::to_string(e) + ": " + difference;
                    }
                    ++finished[t];
                    watchdog.progress();
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        for (int t = 0; t < kThreads; ++t) {
            EXPECT_EQ(mismatch[t], "") << "board " << t + 1 << ", round " << round;
        }
    }
}

} // namespace
