// Binding the plug-in to the host: the mesh output node type and the string table, and
// what each failure leaves behind.

#include "PluginFixture.h"

#include <kova/KFnDependencyNode.h>
#include <kova/KFnPlugin.h>
#include <kova/KStringResource.h>

namespace {

using ZelvaneGraph::Executor::TranslationLibrary;

const KStringResourceId kCurveIsInvalid("zelvane_object_translator", "kCurveIsInvalid", "default");

// The plug-in loaded and its translation object made, but not yet bound to the host.
class Registration : public HostWithBoard {
protected:
    void SetUp() override {
        HostWithBoard::SetUp();
        KStringResource::unregisterAll("zelvane_object_translator");
        library_ = TranslationLibrary::load(PLUGIN_PATH);
        ASSERT_TRUE(library_);
        translation_ = library_->createTranslation();
        ASSERT_TRUE(translation_);
    }
    void TearDown() override {
        KMessageCapture quiet; // deregistering what a test left unregistered complains
        KScene::reset();
        translation_->deregisterHostPlugins(plugin());
        translation_.reset();
        KPluginLoader::unload(plugin());
        KStringResource::unregisterAll("zelvane_object_translator");
        HostWithBoard::TearDown();
    }

    const KObject& plugin() const { return library_->hostPlugin(); }

    static bool canCreateGeoToKova() {
        KFnDependencyNode fnNode;
        return !fnNode.create("zelvaneGeoToKova").isNull();
    }
    static KString curveIsInvalidText() {
        KStatus status;
        const KString text = KStringResource::getString(kCurveIsInvalid, status);
        return status ? text : KString();
    }

    std::unique_ptr<TranslationLibrary> library_;
    ZelvaneGraph::Executor::TranslationPtr translation_;
};

TEST_F(Registration, RegistersTheNodeTypeAndEveryStringWithItsDefaultText) {
    KMessageCapture messages;
    ASSERT_TRUE(translation_->registerHostPlugins(plugin()));
    EXPECT_TRUE(canCreateGeoToKova());
    EXPECT_EQ(KFnPlugin(plugin()).vendor(), KString("Norvatek"));
    EXPECT_EQ(KFnPlugin(plugin()).version(), KString("1.0"));
    EXPECT_EQ(KFnPlugin(plugin()).stringTableCount(), 1u);
    EXPECT_EQ(messages.size(), 0u);
    EXPECT_EQ(curveIsInvalidText(), KString("Curve is invalid."));
    for (const auto& [key, text] :
         {std::pair{"kCouldNotTranslateCurve", "Failed to translate Kova curve '^1s' to Zelvane "
                                               "strands for input '^2s' in '^3s'. "},
          {"kSegmentLengthIsInvalid", "Target segment length = 0 is invalid."}}) {
        KStatus status;
        EXPECT_EQ(KStringResource::getString(
                      KStringResourceId("zelvane_object_translator", key, ""), status),
                  KString(text));
        EXPECT_TRUE(status) << key;
    }
}

TEST_F(Registration, AFailedNodeRegistrationRegistersNothingElse) {
    KMessageCapture messages;
    KFailureInjection::failNext("KFnPlugin::registerNode");
    EXPECT_FALSE(translation_->registerHostPlugins(plugin()));
    EXPECT_FALSE(canCreateGeoToKova());
    EXPECT_EQ(curveIsInvalidText(), KString());
    EXPECT_EQ(KFnPlugin(plugin()).stringTableCount(), 0u);
    ASSERT_EQ(messages.errors().size(), 1u);
    EXPECT_TRUE(messages.errors()[0].startsWith("registerNode::zelvaneGeoToKova: "))
        << messages.errors()[0];
}

TEST_F(Registration, AFailedStringTableIsReportedAndKeepsTheNode) {
    KMessageCapture messages;
    KFailureInjection::failNext("KFnPlugin::registerUIStrings");
    EXPECT_FALSE(translation_->registerHostPlugins(plugin()));
    EXPECT_TRUE(canCreateGeoToKova());
    ASSERT_EQ(messages.errors().size(), 1u);
    EXPECT_TRUE(messages.errors()[0].startsWith("ZelvaneObjectTranslation::registerHostPlugins: "))
        << messages.errors()[0];
}

TEST_F(Registration, AFailedSingleStringIsIgnored) {
    KFailureInjection::failNext("KStringResource::registerString");
    EXPECT_TRUE(translation_->registerHostPlugins(plugin()));
    KStatus status;
    KStringResource::getString(
        KStringResourceId("zelvane_object_translator", "kCouldNotTranslateCurve", ""), status);
    EXPECT_FALSE(status);
    EXPECT_EQ(curveIsInvalidText(), KString("Curve is invalid."));
}

// Deregistration fails while nodes of the type exist, and when the host refuses it (reported);
// then it removes the node type and leaves the strings.
TEST_F(Registration, DeregistrationRemovesTheNodeTypeOnlyAndReportsFailures) {
    ASSERT_TRUE(translation_->registerHostPlugins(plugin()));
    ASSERT_TRUE(canCreateGeoToKova());
    {
        KMessageCapture messages;
        EXPECT_FALSE(translation_->deregisterHostPlugins(plugin()));
        EXPECT_EQ(messages.errors().size(), 1u);
    }
    KScene::reset();
    {
        KMessageCapture messages;
        KFailureInjection::failNext("KFnPlugin::deregisterNode");
        EXPECT_FALSE(translation_->deregisterHostPlugins(plugin()));
        ASSERT_EQ(messages.errors().size(), 1u);
        EXPECT_TRUE(messages.errors()[0].startsWith("deregisterNode::zelvaneGeoToKova: "))
            << messages.errors()[0];
    }
    EXPECT_TRUE(canCreateGeoToKova());
    KScene::reset();
    EXPECT_TRUE(translation_->deregisterHostPlugins(plugin()));
    EXPECT_FALSE(canCreateGeoToKova());
    EXPECT_EQ(curveIsInvalidText(), KString("Curve is invalid."));
}

} // namespace
