#pragma once

// The physical limits conversions are measured against, in the same run: copying the same
// bytes into memory that is already mapped (the steady limit), and into fresh memory whose
// first touch is part of the copy (the cold limit, best with transparent huge pages).

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <sys/mman.h>
#include <vector>

namespace bench {

// One memcpy of `bytes` between buffers that are already mapped.
inline void memcpyMapped(benchmark::State& state, std::size_t bytes) {
    std::vector<char> from(bytes, 1);
    std::vector<char> to(bytes, 0);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * bytes);
}

// One copy of `from` into freshly mapped memory; the seconds it took, or a negative number
// when no memory could be mapped.
inline double copyIntoFreshMemory(const std::vector<char>& from, bool hugePages) {
    using Clock = std::chrono::steady_clock;
    constexpr std::size_t kHuge = std::size_t(2) << 20;
    const std::size_t bytes = from.size();
    const std::size_t mapped = bytes + 2 * kHuge;
    const auto start = Clock::now();
    void* block = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED) {
        return -1.0;
    }
    auto* aligned = reinterpret_cast<char*>((reinterpret_cast<std::uintptr_t>(block) + kHuge - 1) &
                                            ~(kHuge - 1));
    if (hugePages && bytes >= kHuge) {
        // The whole huge pages the copy touches, its tail included: the best first touch for a
        // block big enough to deserve huge pages (smaller ones would mostly waste them).
        madvise(aligned, (bytes + kHuge - 1) & ~(kHuge - 1), MADV_HUGEPAGE);
    }
    std::memcpy(aligned, from.data(), bytes);
    benchmark::DoNotOptimize(aligned);
    benchmark::ClobberMemory();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    munmap(block, mapped);
    return seconds;
}

// Copying `bytes` into freshly mapped memory (2 MiB aligned), advised for huge pages or not:
// the first touch of every page is part of the copy; unmapping is not timed. Register with
// UseManualTime(). Two untimed rounds go first: this machine's memory is backed lazily by
// its hypervisor, and physical pages not used for a while cost up to ten times their zeroing
// on their first use, which a single timed round of a big copy would measure instead.
inline void freshCopy(benchmark::State& state, std::size_t bytes, bool hugePages) {
    const std::vector<char> from(bytes, 1);
    for (int warmUp = 0; warmUp < 2; ++warmUp) {
        copyIntoFreshMemory(from, hugePages);
    }
    for (auto _ : state) {
        const double seconds = copyIntoFreshMemory(from, hugePages);
        if (seconds < 0.0) {
            state.SkipWithError("mmap failed");
            break;
        }
        state.SetIterationTime(seconds);
    }
    state.SetBytesProcessed(state.iterations() * bytes);
}

} // namespace bench
