// Sizing and filling a fresh big array, as a converter does on every evaluation: graph arrays
// (huge pages, cached big blocks, no redundant fill) against std::vector (value-initialised,
// plain pages) and against a plain copy into memory that is already mapped.

#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstring>
#include <orsel/Array.h>
#include <vector>

namespace {

std::size_t elementsOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0)) << 20;
}

void fill(std::uint32_t* data, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        data[i] = static_cast<std::uint32_t>(i);
    }
}

void BM_OrselArrayFreshFill(benchmark::State& state) {
    const std::size_t count = elementsOf(state);
    for (auto _ : state) {
        Orsel::Array<std::uint32_t> values;
        values.resizeForOverwrite(count);
        fill(values.data(), count);
        benchmark::DoNotOptimize(values.data());
    }
    state.SetBytesProcessed(state.iterations() * count * sizeof(std::uint32_t));
}

void BM_StdVectorFreshFill(benchmark::State& state) {
    const std::size_t count = elementsOf(state);
    for (auto _ : state) {
        std::vector<std::uint32_t> values(count);
        fill(values.data(), count);
        benchmark::DoNotOptimize(values.data());
    }
    state.SetBytesProcessed(state.iterations() * count * sizeof(std::uint32_t));
}

void BM_FillMappedMemory(benchmark::State& state) {
    const std::size_t count = elementsOf(state);
    std::vector<std::uint32_t> values(count);
    for (auto _ : state) {
        fill(values.data(), count);
        benchmark::DoNotOptimize(values.data());
    }
    state.SetBytesProcessed(state.iterations() * count * sizeof(std::uint32_t));
}

// Element counts in Mi elements: 4 MiB, 16 MiB and 64 MiB of data.
BENCHMARK(BM_OrselArrayFreshFill)->Arg(1)->Arg(4)->Arg(16)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdVectorFreshFill)->Arg(1)->Arg(4)->Arg(16)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FillMappedMemory)->Arg(1)->Arg(4)->Arg(16)->Unit(benchmark::kMillisecond);

} // namespace
