#pragma once

// A per-test scratch directory and byte-level access to the files in it.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

class ScratchDir {
public:
    ScratchDir() {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        root_ = std::filesystem::temp_directory_path() /
                ("kova_signing_" + std::string(test->test_suite_name()) + "_" + test->name() + "_" +
                 std::to_string(::getpid()));
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(root_);
    }
    ~ScratchDir() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;

    std::string path(const std::string& name) const { return (root_ / name).string(); }
    std::string copy(const char* source, const std::string& name) const {
        std::filesystem::copy_file(source, root_ / name);
        return path(name);
    }

private:
    std::filesystem::path root_;
};

inline std::vector<std::uint8_t> readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void writeBytes(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

// Offset of the first occurrence of `text` in `bytes`; fails the test if there is none.
inline std::size_t offsetOf(const std::vector<std::uint8_t>& bytes, const std::string& text) {
    const auto found = std::search(bytes.begin(), bytes.end(), text.begin(), text.end());
    EXPECT_NE(found, bytes.end()) << "'" << text << "' not found";
    return static_cast<std::size_t>(found - bytes.begin());
}
