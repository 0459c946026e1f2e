// The plug-in as its two loaders see it: the host's (stamp and signature) and the
// executor's (the factory).

#include "PluginFixture.h"
#include "ProbeRun.h"

#include <filesystem>
#include <fstream>
#include <kova/KApiVersion.h>
#include <kova/KFnPlugin.h>
#include <kova/signing/PluginStamp.h>
#include <kova/signing/VerifyPlugin.h>
#include <unistd.h>

namespace {

using ZelvaneGraph::Executor::TranslationLibrary;

// A copy of the plug-in in a scratch folder, removed with the object.
class PluginCopy {
public:
    PluginCopy()
        : path_(std::filesystem::temp_directory_path() /
                ("zelvane_plugin_copy_" + std::to_string(::getpid()) + ".so")) {
        std::filesystem::copy_file(PLUGIN_PATH, path_,
                                   std::filesystem::copy_options::overwrite_existing);
    }
    ~PluginCopy() { std::filesystem::remove(path_); }

    std::string path() const { return path_.string(); }

    void overwrite(std::uint64_t offset, const std::string& bytes) const {
        std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(offset));
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    char byteAt(std::uint64_t offset) const {
        std::ifstream file(path_, std::ios::binary);
        file.seekg(static_cast<std::streamoff>(offset));
        return static_cast<char>(file.get());
    }

private:
    std::filesystem::path path_;
};

TEST(PluginFile, CarriesTheHostApiVersionFollowedByTheSignatureBlock) {
    std::string error;
    const auto stamp = KovaSigning::readStamp(PLUGIN_PATH, &error);
    ASSERT_TRUE(stamp) << error;
    EXPECT_EQ(stamp->apiVersion, "20250000");
    EXPECT_EQ(stamp->signatureOffset, stamp->versionOffset + 16);
    const auto verdict = KovaSigning::verifyPlugin(PLUGIN_PATH, KOVA_API_VERSION);
    EXPECT_EQ(verdict.status, KovaSigning::VerifyResult::Status::Ok) << verdict.reason;
}

using Loading = HostWithBoard;

// The host's loader finds the stamp as exported symbols: the version, the signature block
// right after it; then the executor's factory makes a new translation object each time.
TEST_F(Loading, GoesThroughTheHostLoaderAndThenTheFactory) {
    KStatus status;
    auto library = TranslationLibrary::load(PLUGIN_PATH, &status);
    ASSERT_TRUE(library);
    EXPECT_TRUE(status);
    const KObject plugin = library->hostPlugin();
    EXPECT_EQ(KFnPlugin(plugin).loadPath(), KString(PLUGIN_PATH));
    EXPECT_EQ(KPluginLoader::findPlugin(PLUGIN_PATH), plugin);
    const auto* version = static_cast<const char*>(KPluginLoader::symbol(plugin, "KApiVersion"));
    ASSERT_NE(version, nullptr);
    EXPECT_STREQ(version, "20250000");
    EXPECT_EQ(KPluginLoader::symbol(plugin, "NORV_PLUGIN_SIGNATURE"), version + 16);

    auto first = library->createTranslation();
    auto second = library->createTranslation();
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_NE(first.get(), second.get());
    first.reset();
    second.reset();
    EXPECT_TRUE(KPluginLoader::unload(plugin));
}

TEST_F(Loading, RefusesALibraryWithoutTheFactory) {
    KMessageCapture messages;
    const KObject plugin = KPluginLoader::load(SIGNED_NON_TRANSLATION_PATH);
    ASSERT_FALSE(plugin.isNull());
    KStatus status;
    EXPECT_EQ(TranslationLibrary::fromHostPlugin(plugin, &status), nullptr);
    EXPECT_FALSE(status);
    ASSERT_EQ(messages.errors().size(), 1u);
    EXPECT_NE(messages.errors()[0].str().find("createZelvaneTypeTranslation"), std::string::npos);
    KPluginLoader::unload(plugin);
}

// A copy modified after signing, or claiming another API version, is refused with the
// reason, and nothing of it runs: no version banner.
TEST(PluginRefusal, AModifiedCopyIsRefusedAndNothingOfItRuns) {
    const auto refusal = [](const PluginCopy& copy) {
        const ProbeResult result = runProbe("MERIDAN_DUMP_VERSION_INFO=1", copy.path());
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_NE(result.standardError.find("Plug-in '" + copy.path() + "' refused: "),
                  std::string::npos)
            << result.standardError;
        EXPECT_EQ(result.standardError.find("ZelvaneObjectBoardPlugin"), std::string::npos);
        return result.standardError;
    };
    {
        PluginCopy copy;
        const std::uint64_t middle = std::filesystem::file_size(copy.path()) / 2;
        copy.overwrite(middle, std::string(1, static_cast<char>(copy.byteAt(middle) ^ 0x5a)));
        EXPECT_NE(refusal(copy).find("modified after it was signed"), std::string::npos);
    }
    PluginCopy copy;
    const auto stamp = KovaSigning::readStamp(copy.path(), nullptr);
    ASSERT_TRUE(stamp);
    copy.overwrite(stamp->versionOffset, "20240000");
    EXPECT_NE(refusal(copy).find("20240000"), std::string::npos);
}

} // namespace
