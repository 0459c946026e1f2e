#pragma once

#include <string>

// Runs the plug-in probe in a child process with the given environment assignment prefix
// (for example "MERIDAN_DUMP_VERSION_INFO=1"), returning its exit code and what it wrote to
// standard error.
struct ProbeResult {
    int exitCode = -1;
    std::string standardError;
};

ProbeResult runProbe(const std::string& environment, const std::string& pluginPath);
