// Translation libraries bound to the host through the board executor: what the executor asks
// of them, in which order, and what happens when they misbehave.

#include <algorithm>
#include <board/BoardExecutor.h>
#include <board/BoardNode.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KMessageCapture.h>
#include <kova/KPluginLoader.h>
#include <kova/KScene.h>
#include <unistd.h>
#include <zelvane/executor/TranslationLibrary.h>

namespace {

using ZelvaneBoard::BoardExecutor;

class Binding : public ::testing::Test {
protected:
    void SetUp() override {
        ::setenv("RECORDING_TRANSLATION_LOG", log_.c_str(), 1);
        ::unsetenv("RECORDING_TRANSLATION_MODE");
        std::filesystem::remove(log_);
        KScene::reset();
        module_ = KPluginLoader::registerModule("bindingTests");
        ASSERT_TRUE(ZelvaneBoard::registerBoardTypes(module_));
    }
    void TearDown() override {
        KScene::reset();
        BoardExecutor::unbindAll();
        ZelvaneBoard::deregisterBoardTypes(module_);
        KPluginLoader::unload(module_);
        ::unsetenv("RECORDING_TRANSLATION_MODE");
        std::filesystem::remove(log_);
    }

    std::vector<std::string> calls() const {
        std::ifstream in(log_);
        std::vector<std::string> lines;
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    const std::string log_ = (std::filesystem::temp_directory_path() /
                              ("recording_translation_" + std::to_string(::getpid()) + ".log"))
                                 .string();
    KObject module_;
};

Orsel::Type recordedType() {
    return Orsel::Type::named(Orsel::String("Recorded"), Orsel::TypeKind::Record);
}

TEST_F(Binding, BindingCreatesAndRegistersUnbindingDeregistersReleasesAndUnloads) {
    ASSERT_TRUE(BoardExecutor::bind(RECORDING_TRANSLATION_PATH));
    EXPECT_EQ(calls(), (std::vector<std::string>{"factory", "created", "registerHostPlugins"}));
    EXPECT_EQ(BoardExecutor::boundLibraries(),
              std::vector<KString>{KString(RECORDING_TRANSLATION_PATH)});
    EXPECT_FALSE(KPluginLoader::findPlugin(RECORDING_TRANSLATION_PATH).isNull());

    ASSERT_TRUE(BoardExecutor::unbind(RECORDING_TRANSLATION_PATH));
    EXPECT_EQ(calls(), (std::vector<std::string>{"factory", "created", "registerHostPlugins",
                                                 "deregisterHostPlugins", "release", "destroyed"}));
    EXPECT_TRUE(BoardExecutor::boundLibraries().empty());
    EXPECT_TRUE(KPluginLoader::findPlugin(RECORDING_TRANSLATION_PATH).isNull());
    EXPECT_EQ(BoardExecutor::unbind(RECORDING_TRANSLATION_PATH).statusCode(), KStatus::kNotFound);
}

TEST_F(Binding, ALibraryIsBoundOnlyOnce) {
    ASSERT_TRUE(BoardExecutor::bind(RECORDING_TRANSLATION_PATH));
    KMessageCapture messages;
    EXPECT_FALSE(BoardExecutor::bind(RECORDING_TRANSLATION_PATH));
    ASSERT_EQ(messages.errors().size(), 1u);
    EXPECT_NE(messages.errors()[0].str().find("already bound"), std::string::npos);
    EXPECT_EQ(BoardExecutor::boundLibraries().size(), 1u);
}

// A factory that hands out no object, or a translation that refuses to register, leaves
// nothing bound or loaded; the object made is released.
TEST_F(Binding, AFailedBindingLeavesNothingBound) {
    for (const auto& [mode, log] :
         {std::pair{"null-factory", std::vector<std::string>{"factory"}},
          {"refuse-binding",
           {"factory", "created", "registerHostPlugins", "release", "destroyed"}}}) {
        ::setenv("RECORDING_TRANSLATION_MODE", mode, 1);
        std::filesystem::remove(log_);
        KMessageCapture messages;
        EXPECT_FALSE(BoardExecutor::bind(RECORDING_TRANSLATION_PATH));
        EXPECT_EQ(calls(), log) << mode;
        EXPECT_EQ(messages.errors().size(), 1u) << mode;
        EXPECT_TRUE(BoardExecutor::boundLibraries().empty()) << mode;
        EXPECT_TRUE(KPluginLoader::findPlugin(RECORDING_TRANSLATION_PATH).isNull()) << mode;
    }
}

TEST_F(Binding, AnUnverifiedLibraryIsNeverOpened) {
    KMessageCapture messages;
    EXPECT_FALSE(BoardExecutor::bind(UNSIGNED_LIBRARY_PATH));
    ASSERT_EQ(messages.errors().size(), 1u);
    EXPECT_NE(messages.errors()[0].str().find("refused"), std::string::npos);
    EXPECT_TRUE(calls().empty());
}

TEST_F(Binding, PortsOfSupportedTypesReachTheTranslation) {
    ASSERT_TRUE(BoardExecutor::bind(RECORDING_TRANSLATION_PATH));
    KFnDependencyNode fnNode;
    const KObject board = fnNode.create(ZelvaneBoard::BoardNode::kTypeName, "board1");
    ZelvaneBoard::PortDescription supported;
    supported.name = Orsel::String("in");
    supported.type = recordedType();
    ZelvaneBoard::PortDescription unsupported;
    unsupported.name = Orsel::String("amount");
    unsupported.type = Orsel::Type::builtin(Orsel::TypeKind::Float);

    EXPECT_TRUE(ZelvaneBoard::addPort(board, supported));
    EXPECT_FALSE(ZelvaneBoard::addPort(board, unsupported));
    EXPECT_FALSE(ZelvaneBoard::addPort(board, supported)) << "duplicate port name";
    const std::vector<std::string> log = calls();
    EXPECT_EQ(log.back(), "portAdded board1 in input Recorded");
    EXPECT_EQ(std::count_if(log.begin(), log.end(),
                            [](const std::string& line) { return line.starts_with("portAdded"); }),
              1);
    EXPECT_EQ(ZelvaneBoard::BoardNode::fromNode(board)->ports().size(), 2u);
}

} // namespace
