#include "ScratchDir.h"

#include <gmock/gmock.h>
#include <kova/signing/PluginStamp.h>

using namespace KovaSigning;
using ::testing::HasSubstr;

namespace {

std::string stampError(const std::string& path) {
    std::string error;
    EXPECT_FALSE(readStamp(path, &error).has_value());
    return error;
}

} // namespace

TEST(ReadStamp, FindsAdjacentVersionAndUnsignedBlockInTheFile) {
    std::string error;
    const auto stamp = readStamp(FIXTURE_UNSIGNED, &error);
    ASSERT_TRUE(stamp) << error;
    EXPECT_EQ(stamp->apiVersion, "20250000");
    EXPECT_EQ(stamp->signatureOffset, stamp->versionOffset + 16);
    EXPECT_EQ(stamp->signature, unsignedSignatureBlock());

    const auto bytes = readBytes(FIXTURE_UNSIGNED);
    ASSERT_LE(stamp->signatureOffset + 128, bytes.size());
    const std::string field(bytes.begin() + stamp->versionOffset,
                            bytes.begin() + stamp->versionOffset + 16);
    EXPECT_EQ(field, std::string("20250000") + std::string(8, '\0'));
    EXPECT_TRUE(std::equal(stamp->signature.begin(), stamp->signature.end(),
                           bytes.begin() + stamp->signatureOffset));
}

TEST(ReadStamp, NamesThePathAndTheMissingOrMalformedSymbol) {
    EXPECT_EQ(stampError(FIXTURE_UNSTAMPED),
              std::string(FIXTURE_UNSTAMPED) + ": does not export KApiVersion");
    EXPECT_THAT(stampError(FIXTURE_NO_SIGNATURE),
                HasSubstr("does not export NORV_PLUGIN_SIGNATURE"));
    EXPECT_THAT(stampError(FIXTURE_SHORT_SIGNATURE),
                HasSubstr("NORV_PLUGIN_SIGNATURE is 64 bytes, expected 128"));
    EXPECT_THAT(stampError(FIXTURE_DETACHED_SIGNATURE),
                HasSubstr("NORV_PLUGIN_SIGNATURE does not directly follow KApiVersion"));
}

TEST(ReadStamp, RejectsFilesThatAreNotWholeSharedObjectsWithATerminatedVersion) {
    ScratchDir dir;
    EXPECT_THAT(stampError(dir.path("absent.so")), HasSubstr("cannot open"));
    EXPECT_THAT(stampError(dir.path("")), HasSubstr("not a regular file"));

    writeBytes(dir.path("text.so"), {'h', 'e', 'l', 'l', 'o', '\n'});
    EXPECT_THAT(stampError(dir.path("text.so")), HasSubstr("not an ELF file"));
    writeBytes(dir.path("empty.so"), {});
    EXPECT_THAT(stampError(dir.path("empty.so")), HasSubstr("not an ELF file"));

    // Same file, but its header says executable (e_type 2) instead of shared object.
    const auto bytes = readBytes(FIXTURE_UNSIGNED);
    auto changed = bytes;
    changed[16] = 2;
    changed[17] = 0;
    writeBytes(dir.path("exec.so"), changed);
    EXPECT_THAT(stampError(dir.path("exec.so")), HasSubstr("not an ELF shared object"));

    const auto stamp = readStamp(FIXTURE_UNSIGNED, nullptr);
    ASSERT_TRUE(stamp);
    changed = bytes;
    std::fill_n(changed.begin() + stamp->versionOffset, 16, '7');
    writeBytes(dir.path("unterminated.so"), changed);
    EXPECT_THAT(stampError(dir.path("unterminated.so")),
                HasSubstr("KApiVersion is not NUL-terminated"));

    for (const std::size_t length :
         {std::size_t{4}, std::size_t{64}, std::size_t{1000}, bytes.size() / 2, bytes.size() - 1}) {
        SCOPED_TRACE(length);
        writeBytes(dir.path("cut.so"), {bytes.begin(), bytes.begin() + length});
        EXPECT_FALSE(stampError(dir.path("cut.so")).empty());
    }
}
