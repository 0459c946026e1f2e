#pragma once

// Runs the `kova` program as a user does, from a shell, and keeps what it printed.

#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

struct CliRun {
    int exitCode;
    std::string output; // standard output and standard error, interleaved
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
