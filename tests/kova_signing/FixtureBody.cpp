// Body shared by the fixture plug-ins. Loading the library touches the file named by
// KOVA_SIGNING_FIXTURE_MARKER, so a test can tell whether any of its code ran.

#include <cstdio>
#include <cstdlib>

namespace {

const bool loaded = [] {
    if (const char* marker = std::getenv("KOVA_SIGNING_FIXTURE_MARKER")) {
        if (std::FILE* file = std::fopen(marker, "w"))
            std::fclose(file);
    }
    return true;
}();

} // namespace

extern "C" __attribute__((visibility("default"))) const char* kovaSigningFixtureName() {
    return loaded ? KOVA_FIXTURE_NAME : nullptr;
}
