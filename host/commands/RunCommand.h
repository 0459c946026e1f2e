#pragma once

#include <string>

namespace KovaHost {

struct RunOptions {
    std::string script; // a file, or "-" for standard input
};

// `kova run SCRIPT`: runs a script of host commands (see script/ScriptRunner.h) in a fresh
// scene; 0 when every line succeeded, 1 with "kova: SCRIPT:LINE: reason" otherwise.
int runScript(const RunOptions& options);

} // namespace KovaHost
