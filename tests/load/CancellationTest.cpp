// An evaluation whose job is cancelled while the board translates its inputs: whatever the
// converters make of the cancellation, no object may come out half made, and the next
// evaluation must run normally.

#include "LoadScene.h"
#include "ObjectDifference.h"
#include "Watchdog.h"

#include <atomic>
#include <kova/KDGModifier.h>
#include <kova/KDataBlock.h>
#include <kova/KDataHandle.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnNumericAttribute.h>
#include <kova/KFnPlugin.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KPxNode.h>
#include <orsel/JobCancellation.h>

namespace {

// "cancellingMesh": passes the mesh on "inMesh" to "outMesh" and, when given a job, cancels
// it as it computes. Changing "touch" makes it compute again.
class CancellingMesh : public KPxNode {
public:
    static inline KObject inMesh, touch, outMesh;
    static inline std::atomic<bool>* job = nullptr;

    static void* create() { return new CancellingMesh; }
    static KStatus initialize() {
        KFnTypedAttribute fnTyped;
        inMesh = fnTyped.create("inMesh", "im", KFnData::kMesh);
        outMesh = fnTyped.create("outMesh", "om", KFnData::kMesh);
        fnTyped.setWritable(false);
        KFnNumericAttribute fnNumeric;
        touch = fnNumeric.create("touch", "to", KFnNumericData::kInt, 0.0);
        for (const KObject& attribute : {inMesh, touch, outMesh}) {
            if (KStatus status = addAttribute(attribute); !status) {
                return status;
            }
        }
        attributeAffects(touch, outMesh);
        return attributeAffects(inMesh, outMesh);
    }
    KStatus compute(const KPlug& plug, KDataBlock& block) override {
        if (plug != outMesh) {
            return KStatus::kUnknownParameter;
        }
        if (job) {
            job->store(true);
        }
        const KObject mesh = block.inputValue(inMesh).asMesh();
        return block.outputValue(outMesh).set(mesh);
    }
};

constexpr unsigned int kCancellingTypeId = 0x7E1101;

// Every object and host mesh of `cancelled` is absent, or holds exactly what `whole` holds.
void expectWholeOrAbsent(const BoardOutputs& whole, const BoardOutputs& cancelled) {
    const auto objects = [](const char* what, const auto& expected, const auto& actual) {
        if (actual.empty()) {
            return;
        }
        ASSERT_EQ(actual.size(), expected.size()) << what;
        for (std::size_t i = 0; i < actual.size(); ++i) {
            if (actual[i]) {
                EXPECT_EQ(objectDifference(*expected[i], *actual[i]), "")
                    << what << "[" << i << "]";
            }
        }
    };
    objects("meshesOut", whole.meshObjects, cancelled.meshObjects);
    objects("strandsOut", whole.strandObjects, cancelled.strandObjects);
    if (!cancelled.hostMeshes.empty()) {
        ASSERT_EQ(cancelled.hostMeshes.size(), whole.hostMeshes.size());
        for (std::size_t i = 0; i < whole.hostMeshes.size(); ++i) {
            const bool empty = cancelled.hostMeshes[i].front().second.empty(); // no points
            if (!empty) {
                EXPECT_EQ(hostMeshDifference(whole.hostMeshes[i], cancelled.hostMeshes[i]), "")
                    << "kovaMesh[" << i << "]";
            }
        }
    }
}

} // namespace

class CancelledEvaluation : public LoadScene {
protected:
    void SetUp() override {
        LoadScene::SetUp();
        ASSERT_TRUE(KFnPlugin(boardModule_)
                        .registerNode("cancellingMesh", KTypeId(kCancellingTypeId),
                                      &CancellingMesh::create, &CancellingMesh::initialize,
                                      KPxNode::kDependNode));
        build(1);
        ASSERT_FALSE(HasFatalFailure());
        // The board's second mesh passes through the cancelling node: the job is cancelled
        // after the first mesh is converted and before the others and the curves are.
        const KPlug world = KFnDependencyNode(sharedMeshes_[1])
                                .findPlug("worldMesh", false)
                                .elementByLogicalIndex(0);
        const KPlug port =
            KFnDependencyNode(boards_[0]).findPlug("meshes", false).elementByLogicalIndex(1);
        KFnDependencyNode fnNode;
        canceller_ = fnNode.create("cancellingMesh");
        KDGModifier modifier;
        modifier.disconnect(world, port);
        modifier.connect(world, KPlug(canceller_, CancellingMesh::inMesh));
        modifier.connect(KPlug(canceller_, CancellingMesh::outMesh), port);
        ASSERT_TRUE(modifier.doIt());
    }
    void TearDown() override {
        CancellingMesh::job = nullptr;
        canceller_ = KObject();
        LoadScene::TearDown();
        KFnPlugin(boardModule_).deregisterNode(KTypeId(kCancellingTypeId));
    }

    // Makes the cancelling node compute again on the next evaluation.
    void touchCanceller() {
        KPlug plug(canceller_, CancellingMesh::touch);
        ASSERT_TRUE(plug.setInt(plug.asInt() + 1));
    }

    // An evaluation of the board inside a job of `cancelled`.
    BoardOutputs evaluateInJob(std::atomic<bool>& cancelled) {
        const Orsel::JobCancellationScope scope(cancelled);
        CancellingMesh::job = &cancelled;
        BoardOutputs outputs = evaluate(0);
        CancellingMesh::job = nullptr;
        EXPECT_TRUE(Orsel::isJobCancelled()) << "the job is cancelled during the evaluation";
        return outputs;
    }

    KObject canceller_;
};

// The job is cancelled midway (by the cancelling node) or before the evaluation starts.
TEST_F(CancelledEvaluation, ObjectsOfACancelledJobAreWholeOrAbsent) {
    const Watchdog watchdog("CancelledEvaluation", std::chrono::seconds(120),
                            [] { return std::string("stuck in an evaluation"); });
    const BoardOutputs whole = evaluate(0);
    ASSERT_TRUE(whole.evaluated);
    ASSERT_EQ(whole.meshObjects.size(), std::size_t(kSharedMeshes + 1));
    for (const bool cancelledBeforehand : {false, true}) {
        touchCanceller();
        std::atomic<bool> cancelled{cancelledBeforehand};
        expectWholeOrAbsent(whole, evaluateInJob(cancelled));

        // Nothing is left half done: the next evaluation, not cancelled, makes everything again.
        touchCanceller();
        EXPECT_EQ(outputsDifference(whole, evaluate(0)), "") << cancelledBeforehand;
    }
}
