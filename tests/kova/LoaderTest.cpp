#include "KovaTestSupport.h"

#include <kova/KMessageCapture.h>

namespace {

// Libraries of another API version, unsigned, modified or missing are refused, with the reason
// and without running any of their code, in the plug-in's and the command line's loading tests.
class LoaderTest : public KovaTest {};

TEST_F(LoaderTest, LoadsASignedPluginAndItsNodeType) {
    KStatus status;
    const KObject plugin = KPluginLoader::load(KOVA_FIXTURE_NODE, &status);
    ASSERT_TRUE(status) << status.errorString();
    EXPECT_TRUE(plugin.hasFn(KFn::kPlugin));
    EXPECT_EQ(KPluginLoader::findPlugin("libkova_fixture_node"), plugin);
    EXPECT_EQ(KFnPlugin(plugin).vendor(), "Fixtures");
    EXPECT_EQ(KPluginLoader::load(KOVA_FIXTURE_NODE), plugin); // loaded once

    using Answer = int (*)();
    auto answer = reinterpret_cast<Answer>(KPluginLoader::symbol(plugin, "fixtureAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(KPluginLoader::symbol(plugin, "noSuchSymbol", &status), nullptr);
    EXPECT_FALSE(status);

    const KObject node = createNode("fixtureNode");
    EXPECT_DOUBLE_EQ(plug(node, "value").asDouble(), 1.0);
    EXPECT_FALSE(KPluginLoader::unload(plugin)); // its node exists
    KScene::reset();
    ASSERT_TRUE(KPluginLoader::unload(plugin));
    EXPECT_TRUE(KPluginLoader::findPlugin("libkova_fixture_node").isNull());
    KFnDependencyNode().create("fixtureNode", "", &status);
    EXPECT_FALSE(status);
}

TEST_F(LoaderTest, FailingOrThrowingInitializationIsUndone) {
    for (const char* path : {KOVA_FIXTURE_FAILING_INIT, KOVA_FIXTURE_THROWING_INIT}) {
        KMessageCapture capture;
        KStatus status;
        EXPECT_TRUE(KPluginLoader::load(path, &status).isNull()) << path;
        EXPECT_FALSE(status);
        EXPECT_FALSE(capture.errors().empty());
        EXPECT_NE(capture.errors().back().str().find("failed to initialize"), std::string::npos);
    }
    KStatus status;
    KFnDependencyNode().create("fixtureFailNode", "", &status);
    EXPECT_FALSE(status);
    KFnDependencyNode().create("fixtureThrowNode", "", &status);
    EXPECT_FALSE(status);
    EXPECT_EQ(KPluginLoader::loadedPlugins().length(), 1u); // the test module only
}

} // namespace
