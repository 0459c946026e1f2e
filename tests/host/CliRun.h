#pragma once

// Runs the `kova` program as a user does, from a shell, and keeps what it printed.

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

struct CliRun {
    int exitCode;
    std::string output; // standard output and standard error, interleaved

    long lines() const { return std::count(output.begin(), output.end(), '\n'); }
};

inline CliRun kova(const std::string& arguments) {
    const std::string command = std::string("'") + KOVA_PATH + "' " + arguments + " 2>&1";
    FILE* pipe = ::popen(command.c_str(), "r");
    std::string output;
    std::array<char, 4096> buffer{};
    while (pipe && std::fgets(buffer.data(), buffer.size(), pipe)) {
        output += buffer.data();
    }
    const int raw = pipe ? ::pclose(pipe) : -1;
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, output};
}

// A fresh scratch folder per test, removed with it.
class CliTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() /
                  ("kova-cli-" + std::to_string(::getpid()) + "-" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    std::filesystem::path folder_;
};
