// Translation libraries that throw or fail from the operations the board executor and the host
// call (see FaultyTranslation.cpp): the host refuses or skips what fails, says why through its
// messages, and goes on working.

#include "../plugin/PluginFixture.h"

#include <board/Graph.h>
#include <kova/KDGModifier.h>
#include <kova/KDataHandle.h>
#include <kova/KFloatPointArray.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnMesh.h>
#include <kova/KIntArray.h>
#include <kova/KPlug.h>
#include <tuple>
#include <zelvane/Object.h>
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/Names.h>

namespace {

using ZelvaneBoard::BoardExecutor;
using ZelvaneBoard::PortValues;
using ZelvaneGraph::Executor::PortDirection;

std::string faulty(const char* fault) {
    return std::string(FAULTY_TRANSLATION_DIR) + "/faultyTranslation" + fault + ".so";
}

// One triangle in the scene; returns the shape's world mesh plug.
KPlug triangle() {
    KFnMesh fn;
    fn.create(3, 1, KFloatPointArray({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), KIntArray({3}),
              KIntArray({0, 1, 2}));
    return KFnDependencyNode(fn.object()).findPlug("worldMesh", false).elementByLogicalIndex(0);
}

KPlug plugOf(const KObject& node, const char* attribute) {
    return KFnDependencyNode(node).findPlug(attribute, false);
}

bool connect(const KPlug& source, const KPlug& destination) {
    KDGModifier modifier;
    return modifier.connect(source, destination) && modifier.doIt();
}

std::string joined(const std::vector<KString>& texts) {
    std::string all;
    for (const KString& text : texts) {
        all += text.str() + "\n";
    }
    return all;
}

class FaultyPlugin : public HostWithBoard {
protected:
    // A board with the object input "in", fed by a triangle, and the object output "out". The
    // graph records what it is given on "in" and passes it on.
    KObject boardReadingATriangle() {
        KFnDependencyNode fnNode;
        const KObject board = fnNode.create(ZelvaneBoard::BoardNode::kTypeName);
        EXPECT_TRUE(ZelvaneBoard::addPort(
            board, {Orsel::String("in"), PortDirection::Input, Zelvane::objectType(), {}}));
        EXPECT_TRUE(ZelvaneBoard::addPort(
            board, {Orsel::String("out"), PortDirection::Output, Zelvane::objectType(), {}}));
        EXPECT_TRUE(connect(triangle(), plugOf(board, "in")));
        ZelvaneBoard::BoardNode::fromNode(board)->graph().setBody([this](const PortValues& in) {
            const auto found = in.find("in");
            seen_ = found == in.end() ? nullptr : found->second.getOrselClass<Zelvane::Object>();
            return found == in.end() ? PortValues{} : PortValues{{"out", found->second}};
        });
        return board;
    }

    // Objects a library made go before the library: their code goes with it.
    void unbindAll() {
        seen_ = nullptr;
        KScene::reset();
        BoardExecutor::unbindAll();
    }

    // The host still does its work: the real plug-in binds and turns a triangle into a mesh.
    void expectTheHostStillWorks() {
        unbindAll();
        KMessageCapture messages;
        ASSERT_TRUE(BoardExecutor::bind(PLUGIN_PATH));
        ASSERT_TRUE(ZelvaneBoard::evaluate(boardReadingATriangle()));
        ASSERT_TRUE(seen_);
        EXPECT_EQ(Zelvane::Geometry::getElementCount(*seen_, Zelvane::Geometry::sFaceComp), 1u);
        EXPECT_EQ(joined(messages.errors()), "");
        unbindAll();
    }

    void TearDown() override {
        seen_ = nullptr;
        HostWithBoard::TearDown();
    }

    Orsel::Ptr<Zelvane::Object> seen_;
};

TEST_F(FaultyPlugin, LibrariesThatThrowWhileTheyAreBoundOrAreUnsignedAreRefusedWithTheReason) {
    const std::pair<const char*, const char*> faults[] = {
        {"FactoryThrows", "createZelvaneTypeTranslation fails on purpose"},
        {"SupportedTypesThrow", "getSupportedTypeNames fails on purpose"},
        {"RegisterThrows", "registerHostPlugins fails on purpose"},
        {"None", "refused"}};
    for (const auto& [fault, reason] : faults) {
        KMessageCapture messages;
        EXPECT_FALSE(BoardExecutor::bind(faulty(fault).c_str())) << fault;
        const std::vector<KString> errors = messages.errors();
        ASSERT_EQ(errors.size(), 1u) << fault << ":\n" << joined(errors);
        EXPECT_NE(errors[0].str().find(faulty(fault)), std::string::npos) << errors[0].str();
        EXPECT_NE(errors[0].str().find(reason), std::string::npos) << errors[0].str();
        EXPECT_TRUE(BoardExecutor::boundLibraries().empty()) << fault;
        KFnDependencyNode fnNode;
        EXPECT_TRUE(fnNode.create("faultyNode").isNull())
            << fault << ": a refused library leaves no node type behind";
    }
    expectTheHostStillWorks();
}

TEST_F(FaultyPlugin, APortWhoseAttributeTheTranslationThrowsOnIsNotAdded) {
    ASSERT_TRUE(BoardExecutor::bind(faulty("PortAddedThrows").c_str()));
    KFnDependencyNode fnNode;
    const KObject board = fnNode.create(ZelvaneBoard::BoardNode::kTypeName);
    KMessageCapture messages;
    EXPECT_FALSE(ZelvaneBoard::addPort(
        board, {Orsel::String("in"), PortDirection::Input, Zelvane::objectType(), {}}));
    const std::vector<KString> errors = messages.errors();
    ASSERT_EQ(errors.size(), 1u) << joined(errors);
    EXPECT_NE(errors[0].str().find("portAdded fails on purpose"), std::string::npos)
        << errors[0].str();
    EXPECT_TRUE(plugOf(board, "in").isNull());
    expectTheHostStillWorks();
}

TEST_F(FaultyPlugin, AThrowUndoesTheEvaluationAndAFailingPortIsLeftOutWithAWarning) {
    // Library, whether the graph runs with "in", and the error or warning.
    const std::tuple<const char*, bool, bool, const char*> faults[] = {
        {"InputThrows", false, false, "translateInputValue fails on purpose"},
        {"OutputThrows", false, false, "translateOutputValue fails on purpose"},
        {"InputFails", true, false, "input 'in' could not be translated"},
        {"OutputFails", true, true, "output 'out' could not be written back"}};
    for (const auto& [fault, evaluates, graphHasInput, reason] : faults) {
        ASSERT_TRUE(BoardExecutor::bind(faulty(fault).c_str())) << fault;
        const KObject board = boardReadingATriangle();
        KMessageCapture messages;
        seen_ = Zelvane::createObject();
        EXPECT_EQ(static_cast<bool>(ZelvaneBoard::evaluate(board)), evaluates) << fault;
        const std::vector<KString> said = evaluates ? messages.warnings() : messages.errors();
        ASSERT_EQ(said.size(), 1u) << fault << ":\n" << joined(said);
        if (evaluates) {
            EXPECT_EQ(static_cast<bool>(seen_), graphHasInput) << fault;
            EXPECT_EQ(said[0].str(),
                      "Board '" + KFnDependencyNode(board).name().str() + "': " + reason);
        } else {
            EXPECT_NE(said[0].str().find(reason), std::string::npos) << said[0].str();
        }
        unbindAll();
    }
    expectTheHostStillWorks();
}

TEST_F(FaultyPlugin, ANodeWhoseComputeThrowsOrFailsLeavesItsPlugUnevaluated) {
    const std::tuple<const char*, const char*, bool> faults[] = {
        {"ComputeThrows", "computing 'faultyNode1.output' threw", true},
        {"ComputeFails", "compute fails on purpose", false}};
    for (const auto& [fault, reason, thrown] : faults) {
        ASSERT_TRUE(BoardExecutor::bind(faulty(fault).c_str())) << fault;
        KFnDependencyNode fnNode;
        const KObject node = fnNode.create("faultyNode");
        ASSERT_FALSE(node.isNull()) << fault;
        KMessageCapture messages;
        KDataHandle value;
        const KStatus status = plugOf(node, "output").getValue(value);
        EXPECT_FALSE(status) << fault;
        EXPECT_NE(status.errorString().str().find(reason), std::string::npos)
            << status.errorString().str();
        EXPECT_EQ(messages.errors().size(), std::size_t(thrown ? 1 : 0))
            << fault << ":\n"
            << joined(messages.errors());
        unbindAll();
    }
    expectTheHostStillWorks();
}

TEST_F(FaultyPlugin, ALibraryThatThrowsWhileItIsUnboundIsUnboundWithTheReason) {
    const std::pair<const char*, const char*> faults[] = {
        {"DeregisterThrows", "in deregisterHostPlugins threw: deregisterHostPlugins fails"},
        {"ReleaseThrows", "in release threw: release fails"}};
    for (const auto& [fault, reason] : faults) {
        const KString path(faulty(fault).c_str());
        ASSERT_TRUE(BoardExecutor::bind(path)) << fault;
        KMessageCapture messages;
        EXPECT_TRUE(BoardExecutor::unbind(path)) << fault;
        const std::vector<KString> errors = messages.errors();
        ASSERT_EQ(errors.size(), 1u) << fault << ":\n" << joined(errors);
        EXPECT_NE(errors[0].str().find(reason), std::string::npos) << errors[0].str();
        EXPECT_TRUE(BoardExecutor::boundLibraries().empty()) << fault;
        KFnDependencyNode fnNode;
        EXPECT_TRUE(fnNode.create("faultyNode").isNull()) << fault << ": its node type is gone";
    }
    expectTheHostStillWorks();
}

} // namespace
