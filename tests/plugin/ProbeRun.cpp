#include "ProbeRun.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

ProbeResult runProbe(const std::string& environment, const std::string& pluginPath) {
    const std::filesystem::path errors = std::filesystem::temp_directory_path() /
                                         ("plugin_probe_" + std::to_string(::getpid()) + ".err");
    const std::string command = "env -u MERIDAN_DUMP_VERSION_INFO " + environment + " '" +
                                PLUGIN_PROBE_PATH + "' '" + pluginPath + "' 2> '" +
                                errors.string() + "' > /dev/null";
    const int raw = std::system(command.c_str());
    ProbeResult result;
    result.exitCode = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    std::ifstream in(errors);
    std::ostringstream text;
    text << in.rdbuf();
    result.standardError = text.str();
    std::filesystem::remove(errors);
    return result;
}
