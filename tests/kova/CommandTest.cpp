#include "KovaTestSupport.h"

#include <kova/KFnDagNode.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KGlobal.h>
#include <kova/KMessageCapture.h>

namespace {

class CommandTest : public KovaTest {
protected:
    static std::vector<std::string> run(const char* command) {
        KStringArray words;
        const KStatus status = KGlobal::executeCommand(command, &words);
        EXPECT_TRUE(status) << command << ": " << status.errorString();
        std::vector<std::string> out;
        for (const KString& w : words) {
            out.push_back(w.str());
        }
        return out;
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

using Words = std::vector<std::string>;

TEST_F(CommandTest, CreateSetGetConnect) {
    EXPECT_EQ(run("createNode testScale -name src"), Words{"src"});
    EXPECT_EQ(run("createNode testScale -n dst"), Words{"dst"});
    run("setAttr src.input 2.5; connectAttr src.output dst.input");
    EXPECT_EQ(run("getAttr dst.output"), Words{"10"});
    run("disconnectAttr src.output dst.input");
    run("setAttr dst.input -1");
    EXPECT_EQ(run("getAttr dst.output"), Words{"-2"});
}

TEST_F(CommandTest, CreateNodeUnderAParentAndShapes) {
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
    EXPECT_NE(failure("frobnicate x").find("unknown command"), std::string::npos);
    EXPECT_NE(failure("createNode noSuchType").find("unknown node type"), std::string::npos);
    EXPECT_NE(failure("createNode testScale -bogus").find("unknown flag"), std::string::npos);
    EXPECT_NE(failure("createNode testScale -name").find("needs a value"), std::string::npos);
    EXPECT_NE(failure("setAttr n.input \"abc").find("unterminated"), std::string::npos);
    EXPECT_NE(failure("setAttr n.input abc").find("not a number"), std::string::npos);
    EXPECT_NE(failure("setAttr n.input 1 2").find("expected 1 value"), std::string::npos);
    EXPECT_NE(failure("getAttr n.nothing").find("no such attribute"), std::string::npos);
    EXPECT_NE(failure("getAttr n.input[2]").find("not an array"), std::string::npos);
    EXPECT_NE(failure("getAttr nowhere.input").find("no such node"), std::string::npos);
    EXPECT_NE(failure("connectAttr n.output").find("expected a source"), std::string::npos);
    EXPECT_NE(failure("rename n 1bad").find("invalid node name"), std::string::npos);
    EXPECT_NE(failure("sets -forceElement initialShadingGroup n").find("need -edit"),
              std::string::npos);
    EXPECT_NE(failure("sets -e -fe initialShadingGroup n").find("not a DAG node"),
              std::string::npos);
    // A failing command stops the line: the rename after it does not run.
    failure("setAttr n.input x; rename n m");
    EXPECT_FALSE(KScene::current().findNode("n").isNull());
}

} // namespace
