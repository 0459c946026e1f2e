#include "pipeline/Progress.h"

#include <cstdio>
#include <unistd.h>

namespace KovaHost {

Progress::Progress() : shown_(::isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    done();
}

void Progress::stage(const std::string& what) {
    if (shown_) {
        std::fprintf(stderr, "\r\033[Kkova: %s...", what.c_str());
        std::fflush(stderr);
        active_ = true;
    }
}

void Progress::done() {
    if (active_) {
        std::fprintf(stderr, "\r\033[K");
        std::fflush(stderr);
        active_ = false;
    }
}

} // namespace KovaHost
