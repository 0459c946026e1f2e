#include "BoardScene.h"

#include <atomic>
#include <chrono>
#include <kova/KDataBlock.h>
#include <kova/KDoubleArray.h>
#include <kova/KFnDoubleArrayData.h>
#include <kova/KFnNumericAttribute.h>
#include <kova/KFnPlugin.h>
#include <kova/KSourceReadProbe.h>
#include <latch>
#include <thread>
#include <vector>

using ZelvaneBoard::PortValues;
using ZelvaneGraph::Executor::PortDirection;

namespace {

// "countingSource": its double-array output "values" holds `seed` three times. Its compute
// takes a millisecond, so that readers arriving together pile up at the source.
class CountingSource : public KPxNode {
public:
    static inline KObject seed, values;
    static inline std::atomic<int> computes{0};

    static void* create() { return new CountingSource; }
    static KStatus initialize() {
        KFnNumericAttribute fnNumeric;
        seed = fnNumeric.create("seed", "sd", KFnNumericData::kDouble, 0.0);
        KFnTypedAttribute fnTyped;
        values = fnTyped.create("values", "vs", KFnData::kDoubleArray);
        fnTyped.setWritable(false);
        addAttribute(seed);
        addAttribute(values);
        return attributeAffects(seed, values);
    }
    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        if (plug != values) {
            return KStatus::kUnknownParameter;
        }
        ++computes;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        const double value = block.inputValue(seed).asDouble();
        KFnDoubleArrayData fnArray;
        return block.outputValue(values).set(fnArray.create(KDoubleArray({value, value, value})));
    }
};

} // namespace

class SharedSources : public BoardScene {
protected:
    static constexpr int kBoards = 8;
    static constexpr int kSources = 2;

    void SetUp() override {
        BoardScene::SetUp();
        ASSERT_TRUE(KFnPlugin(boardModule_)
                        .registerNode("countingSource", KTypeId(0x7E1001), &CountingSource::create,
                                      &CountingSource::initialize, KPxNode::kDependNode));
        KFnDependencyNode fnNode;
        for (int s = 0; s < kSources; ++s) {
            sources_.push_back(
                fnNode.create("countingSource", ("source" + std::to_string(s)).c_str()));
        }
        sums_.assign(kBoards, -1.0f);
        for (int b = 0; b < kBoards; ++b) {
            const KObject board =
                b == 0 ? board_ : makeBoard(("board" + std::to_string(b + 1)).c_str());
            boards_.push_back(board);
            for (int s = 0; s < kSources; ++s) {
                const std::string port = "in" + std::to_string(s);
                ASSERT_TRUE(ZelvaneBoard::addPort(
                    board, {Orsel::String(port), PortDirection::Input, Zelvane::objectType(), {}}));
                connect(KPlug(sources_[s], CountingSource::values),
                        KFnDependencyNode(board).findPlug(KString(port), false));
            }
            // Sums the first value of every input, so all boards of a round agree.
            ZelvaneBoard::BoardNode::fromNode(board)->graph().setBody(
                [this, b](const PortValues& in) {
                    float sum = 0.0f;
                    for (const auto& [name, value] : in) {
                        if (auto object = value.getOrselClass<Zelvane::Object>()) {
                            if (auto values = object->getArray<float>("vs");
                                values && !values->empty()) {
                                sum += (*values)[0];
                            }
                        }
                    }
                    sums_[static_cast<std::size_t>(b)] = sum;
                    return PortValues{};
                });
        }
    }

    void TearDown() override {
        KSourceReadProbe::disable();
        boards_.clear();
        sources_.clear();
        BoardScene::TearDown();
        KFnPlugin(boardModule_).deregisterNode(KTypeId(0x7E1001));
    }

    std::vector<KObject> sources_;
    std::vector<KObject> boards_;
    std::vector<float> sums_;
};

// The host's read probe counts the pulls of each source in progress before the host's own
// per-node locking orders them, so it sees two boards reading one source at once even though
// the host would serialise their computes.
TEST_F(SharedSources, ThreadsNeverReadOneSourceTogetherAndAgree) {
    constexpr int kRounds = 20;
    KSourceReadProbe::enable();
    for (int round = 1; round <= kRounds; ++round) {
        for (const KObject& source : sources_) {
            KPlug(source, CountingSource::seed).setDouble(round);
        }
        std::atomic<int> failures{0};
        std::latch start(kBoards);
        std::vector<std::thread> threads;
        for (int b = 0; b < kBoards; ++b) {
            threads.emplace_back([&, b] {
                start.arrive_and_wait();
                if (!ZelvaneBoard::evaluate(boards_[static_cast<std::size_t>(b)])) {
                    ++failures;
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        ASSERT_EQ(failures, 0);
        for (float seen : sums_) {
            ASSERT_FLOAT_EQ(seen, static_cast<float>(kSources * round));
        }
    }
    for (const KObject& source : sources_) {
        EXPECT_EQ(KSourceReadProbe::maxConcurrentReads(KPlug(source, CountingSource::values)), 1);
    }
    EXPECT_GE(CountingSource::computes.load(), kRounds * kSources);
}
