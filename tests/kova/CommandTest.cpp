#include "KovaTestSupport.h"

#include <kova/KFnDagNode.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KGlobal.h>
#include <kova/KMessageCapture.h>

namespace {

class CommandTest : public KovaTest {
protected:
    static Words run(const char* command) {
        KStringArray words;
        const KStatus status = KGlobal::executeCommand(command, &words);
        EXPECT_TRUE(status) << command << ": " << status.errorString();
        return wordsOf(words);
    }

    // Runs a command that must fail and returns its reason.
    static std::string failure(const char* command) {
        KMessageCapture capture;
        const KStatus status = KGlobal::executeCommand(command);
        EXPECT_FALSE(status) << command;
        EXPECT_EQ(capture.errors().size(), 1u);
        return status.errorString().str();
    }
};

TEST_F(CommandTest, CreateNodesSetGetAndConnect) {
    EXPECT_EQ(run("createNode testScale -name src"), Words{"src"});
    EXPECT_EQ(run("createNode testScale -n dst"), Words{"dst"});
    run("setAttr src.input 2.5; connectAttr src.output dst.input");
    EXPECT_EQ(run("getAttr dst.output"), Words{"10"});
    run("disconnectAttr src.output dst.input");
    run("setAttr dst.input -1");
    EXPECT_EQ(run("getAttr dst.output"), Words{"-2"});

    // Under a parent, and shapes under a transform of their own.
    EXPECT_EQ(run("createNode transform -n top"), Words{"top"});
    EXPECT_EQ(run("createNode transform -n kid -p top"), Words{"kid"});
    EXPECT_EQ(KFnDagNode(KScene::current().findNode("kid")).fullPathName(), "|top|kid");
    EXPECT_EQ(run("createNode zelShape -n viewShape"), Words{"viewShape"});
    EXPECT_EQ(KFnDagNode(KScene::current().findNode("viewShape")).fullPathName(),
              "|zelShape1|viewShape");
    EXPECT_EQ(run("setAttr |top|kid.translate 1 2 3; getAttr |top|kid.t"), (Words{"1", "2", "3"}));
}

TEST_F(CommandTest, RenameDeleteAndList) {
    run("createNode testScale -n alpha; createNode testScale -n beta; createNode transform");
    EXPECT_EQ(run("rename alpha gamma"), Words{"gamma"});
    EXPECT_EQ(run("ls -type testScale"), (Words{"gamma", "beta"}));
    EXPECT_EQ(run("ls *a"), (Words{"gamma", "beta"}));
    EXPECT_EQ(run("ls t?me*"), Words{"time1"});
    run("delete gamma beta");
    EXPECT_EQ(run("ls -type testScale"), Words{});
}

TEST_F(CommandTest, SetAttrByKind) {
    run("createNode testScale -n n");
    KFnDependencyNode fn(KScene::current().findNode("n"));
    KFnTypedAttribute typed;
    fn.addAttribute(typed.create("label", "lb", KFnData::kString));
    fn.addAttribute(typed.create("samples", "smp", KFnData::kDoubleArray));
    fn.addAttribute(typed.create("dirs", "drs", KFnData::kVectorArray));
    run("setAttr n.label \"two words\"");
    EXPECT_EQ(run("getAttr n.label"), Words{"two words"});
    run("setAttr n.samples -type doubleArray 3 0.5 1 1.5");
    EXPECT_EQ(run("getAttr n.samples"), (Words{"3", "0.5", "1", "1.5"}));
    run("setAttr n.dirs -type vectorArray 1 0 1 0");
    EXPECT_EQ(run("getAttr n.dirs"), (Words{"1", "0", "1", "0"}));
    run("setAttr time1.outTime 12");
    EXPECT_EQ(run("getAttr time1.outTime"), Words{"12"});
}

TEST_F(CommandTest, MalformedCommandsFailWithAReason) {
    run("createNode testScale -n n");
    const std::pair<const char*, const char*> cases[] = {
        {"frobnicate x", "unknown command"},
        {"createNode noSuchType", "unknown node type"},
        {"createNode testScale -bogus", "unknown flag"},
        {"createNode testScale -name", "needs a value"},
        {"setAttr n.input \"abc", "unterminated"},
        {"setAttr n.input abc", "not a number"},
        {"setAttr n.input 1 2", "expected 1 value"},
        {"getAttr n.nothing", "no such attribute"},
        {"getAttr n.input[2]", "not an array"},
        {"getAttr nowhere.input", "no such node"},
        {"connectAttr n.output", "expected a source"},
        {"rename n 1bad", "invalid node name"},
        {"sets -forceElement initialShadingGroup n", "need -edit"},
        {"sets -e -fe initialShadingGroup n", "not a DAG node"},
    };
    for (const auto& [command, reason] : cases) {
        EXPECT_NE(failure(command).find(reason), std::string::npos) << command;
    }
    // A failing command stops the line: the rename after it does not run.
    failure("setAttr n.input x; rename n m");
    EXPECT_FALSE(KScene::current().findNode("n").isNull());
}

} // namespace
