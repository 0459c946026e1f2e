#include "MemoryBudget.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <unistd.h>

namespace KovaIo {

namespace {

// The address space the process maps now (bytes), or 0 when unknown.
std::size_t mappedBytes() {
    std::ifstream statm("/proc/self/statm");
    std::size_t pages = 0;
    statm >> pages;
    return statm ? pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) : 0;
}

} // namespace

MemoryBudget::MemoryBudget(std::size_t bytes) {
    const std::size_t mapped = mappedBytes();
    if (mapped == 0 || getrlimit(RLIMIT_AS, &previous_) != 0 ||
        bytes > std::numeric_limits<rlim_t>::max() - mapped) {
        return;
    }
    const rlim_t wanted = static_cast<rlim_t>(mapped + bytes);
    if (previous_.rlim_cur != RLIM_INFINITY && previous_.rlim_cur <= wanted) {
        return; // a tighter limit is set already
    }
    rlimit lowered = previous_;
    lowered.rlim_cur = wanted;
    lowered_ = setrlimit(RLIMIT_AS, &lowered) == 0;
}

MemoryBudget::~MemoryBudget() {
    if (lowered_) {
        setrlimit(RLIMIT_AS, &previous_);
    }
}

std::size_t MemoryBudget::forFile(std::uintmax_t fileBytes) {
    constexpr std::size_t kMiB = std::size_t(1) << 20;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr std::size_t kBase = 768 * kMiB;
#else
    constexpr std::size_t kBase = 256 * kMiB;
#endif
    constexpr std::uintmax_t kPerByte = 64;
    const std::uintmax_t limit = (std::numeric_limits<std::size_t>::max() - kBase) / kPerByte;
    return kBase + static_cast<std::size_t>(std::min(fileBytes, limit) * kPerByte);
}

} // namespace KovaIo
