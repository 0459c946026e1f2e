#include "commands/RunCommand.h"

#include "HostSession.h"
#include "script/ScriptRunner.h"

#include <fstream>
#include <iostream>

namespace KovaHost {

int runScript(const RunOptions& options) {
    std::ifstream file;
    if (options.script != "-") {
        file.open(options.script);
        if (!file) {
            std::cerr << "kova: error: cannot read " << options.script << '\n';
            return 1;
        }
    }
    HostSession session;
    ScriptRunner runner(std::cout);
    std::string error;
    if (!runner.run(options.script == "-" ? std::cin : file, options.script, error)) {
        std::cerr << "kova: " << error << '\n';
        return 1;
    }
    return 0;
}

} // namespace KovaHost
