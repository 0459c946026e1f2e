#pragma once

#include <cstddef>
#include <string>
#include <vector>

// Runs the `kova` program of this build in a child process as a user's shell does and keeps
// what came of it: how it ended, what it printed on each stream, and the most memory it held
// at once.
struct ChildRun {
    bool exited = false; // false when a signal ended it
    int exitCode = -1;
    int signal = 0;
    std::string out;
    std::string err;
    std::size_t peakResidentBytes = 0;

    // Standard error split into lines (a last line without a newline counts).
    std::vector<std::string> errorLines() const;
};

// `kova` with `arguments`, given `input` on standard input.
ChildRun runKova(std::vector<std::string> arguments, const std::string& input = {});
