#include "ScratchDir.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <kova/signing/PluginStamp.h>
#include <kova/signing/SignPlugin.h>
#include <kova/signing/VerifyPlugin.h>
#include <sodium.h>
#include <thread>

using namespace KovaSigning;
using Status = VerifyResult::Status;
using ::testing::HasSubstr;

namespace {

constexpr const char* kHost = "20250000";

Status statusOf(const std::string& path, const char* host = kHost) {
    return verifyPlugin(path, host).status;
}

PluginStamp stampOf(const std::string& path) {
    std::string error;
    auto stamp = readStamp(path, &error);
    EXPECT_TRUE(stamp) << error;
    return stamp.value_or(PluginStamp{});
}

// Overwrites the signature block of the library at `path`.
void putBlock(const std::string& path, const SignatureBlock& block) {
    auto bytes = readBytes(path);
    std::copy(block.begin(), block.end(), bytes.begin() + stampOf(path).signatureOffset);
    writeBytes(path, bytes);
}

// BLAKE2b-256 of the file with its signature block zeroed, computed independently of the library.
std::array<std::uint8_t, 32> fileDigest(const std::string& path) {
    auto bytes = readBytes(path);
    std::fill_n(bytes.begin() + stampOf(path).signatureOffset, 128, 0);
    std::array<std::uint8_t, 32> digest{};
    crypto_generichash(digest.data(), digest.size(), bytes.data(), bytes.size(), nullptr, 0);
    return digest;
}

// A block in the signed layout, with an Ed25519 signature by the given secret key.
SignatureBlock blockSignedWith(const std::string& path, const unsigned char* secretKey) {
    const auto digest = fileDigest(path);
    const auto bytes = readBytes(path);
    const auto version = bytes.begin() + stampOf(path).versionOffset;
    SignatureBlock block{};
    std::copy(kSignedMagic.begin(), kSignedMagic.end(), block.begin());
    std::copy(digest.begin(), digest.end(), block.begin() + 8);
    std::vector<std::uint8_t> message(block.begin(), block.begin() + 40);
    message.insert(message.end(), version, version + 16);
    crypto_sign_detached(block.data() + 40, nullptr, message.data(), message.size(), secretKey);
    return block;
}

} // namespace

TEST(VerifyPlugin, AcceptsSignedLibrariesBuiltForThisHostAndChecksTheApiVersionFirst) {
    VerifyResult result = verifyPlugin(FIXTURE_GOOD, kHost);
    EXPECT_EQ(result.status, Status::Ok) << result.reason;
    EXPECT_EQ(result.apiVersion, "20250000");
    EXPECT_EQ(result.reason, "");
    EXPECT_EQ(statusOf(FIXTURE_OTHER), Status::Ok);

    result = verifyPlugin(FIXTURE_OLD_API, kHost);
    EXPECT_EQ(result.status, Status::WrongApiVersion);
    EXPECT_EQ(result.apiVersion, "20240000");
    EXPECT_EQ(result.reason, "built against API version 20240000, this host has 20250000");
    EXPECT_EQ(statusOf(FIXTURE_OLD_API, "20240000"), Status::Ok);
    EXPECT_EQ(statusOf(FIXTURE_UNSIGNED, "20240000"), Status::WrongApiVersion);
    EXPECT_EQ(statusOf(FIXTURE_NO_SIGNATURE, "20240000"), Status::WrongApiVersion);
}

TEST(VerifyPlugin, RefusesLibrariesWithoutSignatureOrStamp) {
    const VerifyResult unsignedResult = verifyPlugin(FIXTURE_UNSIGNED, kHost);
    EXPECT_EQ(unsignedResult.status, Status::Unsigned);
    EXPECT_EQ(unsignedResult.reason, "the library was never signed");
    const VerifyResult noBlock = verifyPlugin(FIXTURE_NO_SIGNATURE, kHost);
    EXPECT_EQ(noBlock.status, Status::Unsigned);
    EXPECT_EQ(noBlock.reason, "signature block is missing");

    const VerifyResult unstamped = verifyPlugin(FIXTURE_UNSTAMPED, kHost);
    EXPECT_EQ(unstamped.status, Status::NotAPlugin);
    EXPECT_EQ(unstamped.reason, "does not export KApiVersion");
    EXPECT_EQ(statusOf(FIXTURE_SHORT_SIGNATURE), Status::NotAPlugin);
    EXPECT_EQ(statusOf(FIXTURE_DETACHED_SIGNATURE), Status::NotAPlugin);

    ScratchDir dir;
    const VerifyResult absent = verifyPlugin(dir.path("absent.so"), kHost);
    EXPECT_EQ(absent.status, Status::Unreadable);
    EXPECT_THAT(absent.reason, HasSubstr("No such file"));
}

TEST(VerifyPlugin, DetectsAnyByteChangedAfterSigning) {
    ScratchDir dir;
    const std::string code = dir.copy(FIXTURE_GOOD, "code.so");
    auto bytes = readBytes(code);
    bytes[offsetOf(bytes, "kova_signing_fixture_good")] ^= 0x01;
    writeBytes(code, bytes);
    const VerifyResult result = verifyPlugin(code, kHost);
    EXPECT_EQ(result.status, Status::Tampered);
    EXPECT_EQ(result.reason, "the library was modified after it was signed");

    // The padding after the version text is covered too, though the text still reads the same.
    const std::string padding = dir.copy(FIXTURE_GOOD, "padding.so");
    bytes = readBytes(padding);
    bytes[stampOf(padding).versionOffset + 15] = 'x';
    writeBytes(padding, bytes);
    EXPECT_EQ(statusOf(padding), Status::Tampered);
}

TEST(VerifyPlugin, RejectsBlocksTransplantedSignedWithAnotherKeyOrOfUnknownFormat) {
    ScratchDir dir;
    const std::string target = dir.copy(FIXTURE_GOOD, "target.so");
    putBlock(target, stampOf(FIXTURE_OTHER).signature);
    EXPECT_EQ(statusOf(target), Status::Tampered);

    ASSERT_GE(sodium_init(), 0);
    const std::string forged = dir.copy(FIXTURE_UNSIGNED, "forged.so");
    unsigned char publicKey[crypto_sign_PUBLICKEYBYTES];
    unsigned char secretKey[crypto_sign_SECRETKEYBYTES];
    crypto_sign_keypair(publicKey, secretKey);
    putBlock(forged, blockSignedWith(forged, secretKey));
    const VerifyResult result = verifyPlugin(forged, kHost);
    EXPECT_EQ(result.status, Status::BadSignature);
    EXPECT_EQ(result.reason, "signature was not issued for this SDK");

    const std::string zeroed = dir.copy(FIXTURE_GOOD, "zeroed.so");
    putBlock(zeroed, SignatureBlock{});
    EXPECT_EQ(statusOf(zeroed), Status::BadSignature);
    const std::string reserved = dir.copy(FIXTURE_GOOD, "reserved.so");
    SignatureBlock block = stampOf(reserved).signature;
    block[127] = 1;
    putBlock(reserved, block);
    EXPECT_EQ(verifyPlugin(reserved, kHost).reason, "signature block is not in a known format");
}

TEST(SignPlugin, WritesTheDocumentedBlockAndNothingElseTheSameEveryTime) {
    ScratchDir dir;
    const std::string path = dir.copy(FIXTURE_UNSIGNED, "signed.so");
    std::string error;
    ASSERT_TRUE(signPlugin(path, &error)) << error;
    EXPECT_EQ(statusOf(path), Status::Ok);

    const PluginStamp stamp = stampOf(path);
    const SignatureBlock& block = stamp.signature;
    EXPECT_TRUE(std::equal(kSignedMagic.begin(), kSignedMagic.end(), block.begin()));
    EXPECT_TRUE(std::all_of(block.begin() + 104, block.end(), [](auto b) { return b == 0; }));
    const auto digest = fileDigest(path);
    EXPECT_TRUE(std::equal(digest.begin(), digest.end(), block.begin() + 8))
        << "digest differs from BLAKE2b-256 of the file with the block zeroed";

    auto before = readBytes(FIXTURE_UNSIGNED);
    auto after = readBytes(path);
    ASSERT_EQ(before.size(), after.size());
    std::fill_n(before.begin() + stamp.signatureOffset, 128, 0);
    std::fill_n(after.begin() + stamp.signatureOffset, 128, 0);
    EXPECT_EQ(before, after);

    // Signing is deterministic and idempotent.
    const std::string twice = dir.copy(FIXTURE_UNSIGNED, "twice.so");
    ASSERT_TRUE(signPlugin(twice, nullptr));
    ASSERT_TRUE(signPlugin(twice, nullptr));
    EXPECT_EQ(readBytes(twice), readBytes(path));

    const std::string good = dir.copy(FIXTURE_GOOD, "good.so");
    ASSERT_TRUE(signPlugin(good, nullptr));
    EXPECT_EQ(readBytes(good), readBytes(FIXTURE_GOOD));
}

TEST(SignPlugin, RefusesLibraryWithoutStampAndLeavesItUnchanged) {
    ScratchDir dir;
    const std::string path = dir.copy(FIXTURE_UNSTAMPED, "plain.so");
    std::string error;
    EXPECT_FALSE(signPlugin(path, &error));
    EXPECT_EQ(error, path + ": does not export KApiVersion");
    EXPECT_EQ(readBytes(path), readBytes(FIXTURE_UNSTAMPED));

    EXPECT_FALSE(signPlugin(dir.path("absent.so"), &error));
    EXPECT_THAT(error, HasSubstr("cannot open"));
}

TEST(VerifyPlugin, NeverRunsCodeOfTheLibraryItChecks) {
    ScratchDir dir;
    const std::string marker = dir.path("ran.marker");
    ASSERT_EQ(::setenv("KOVA_SIGNING_FIXTURE_MARKER", marker.c_str(), 1), 0);
    const std::string good = dir.copy(FIXTURE_GOOD, "good.so");
    const std::string unsignedCopy = dir.copy(FIXTURE_UNSIGNED, "unsigned.so");

    EXPECT_EQ(statusOf(good), Status::Ok);
    EXPECT_EQ(statusOf(unsignedCopy), Status::Unsigned);
    EXPECT_EQ(statusOf(FIXTURE_OLD_API), Status::WrongApiVersion);
    EXPECT_TRUE(signPlugin(unsignedCopy, nullptr));
    EXPECT_FALSE(std::filesystem::exists(marker));

    // Control: loading the library does run its initialiser, and the loader sees the stamp
    // exported and laid out as in the file.
    void* library = ::dlopen(good.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << ::dlerror();
    EXPECT_TRUE(std::filesystem::exists(marker));
    const auto* version = static_cast<const char*>(::dlsym(library, "KApiVersion"));
    const auto* block = static_cast<const std::uint8_t*>(::dlsym(library, "NORV_PLUGIN_SIGNATURE"));
    ASSERT_NE(version, nullptr);
    EXPECT_STREQ(version, "20250000");
    EXPECT_EQ(static_cast<const void*>(block), static_cast<const void*>(version + 16));
    const SignatureBlock expected = stampOf(good).signature;
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), block));
    ::dlclose(library);
    ::unsetenv("KOVA_SIGNING_FIXTURE_MARKER");
}

TEST(VerifyPlugin, ConcurrentChecksGiveTheSameResults) {
    const std::array<std::pair<const char*, Status>, 4> cases = {{
        {FIXTURE_GOOD, Status::Ok},
        {FIXTURE_UNSIGNED, Status::Unsigned},
        {FIXTURE_OLD_API, Status::WrongApiVersion},
        {FIXTURE_UNSTAMPED, Status::NotAPlugin},
    }};
    // Plain threads rather than TBB: ThreadSanitizer sees their synchronisation in full.
    std::array<std::atomic<int>, 4> mismatches{};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 16; ++i) {
                const std::size_t which = static_cast<std::size_t>(t + i) % cases.size();
                if (statusOf(cases[which].first) != cases[which].second)
                    ++mismatches[which];
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    for (const auto& count : mismatches)
        EXPECT_EQ(count.load(), 0);
}
