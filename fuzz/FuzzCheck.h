#pragma once

#include <cstdio>
#include <cstdlib>

namespace ZelFuzz {

// Stops the run when a property of the code under test does not hold; libFuzzer keeps the
// input as a crash.
inline void check(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "fuzz check failed: %s\n", what);
        std::abort();
    }
}

} // namespace ZelFuzz
