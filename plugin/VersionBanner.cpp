// Prints the version banner while the library is being loaded, when the environment asks
// for it through MERIDAN_DUMP_VERSION_INFO (any non-zero number).

#include "plugin/BuildInfo.h"

#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <iostream>

namespace ZelvanePlugin {
namespace {

bool printBannerIfRequested() {
    const char* request = std::getenv("MERIDAN_DUMP_VERSION_INFO");
    bool enabled = request != nullptr && std::atoi(request) != 0;
    if (fileno(stderr) < 0) {
        enabled = false;
    }
    if (enabled) {
        std::cerr << std::setw(16) << BuildInfo::kComponentLabel << ": " << versionBannerText()
                  << std::endl;
    }
    return enabled;
}

const bool gBannerPrinted = printBannerIfRequested();

} // namespace

bool versionBannerPrinted() { return gBannerPrinted; }

} // namespace ZelvanePlugin
