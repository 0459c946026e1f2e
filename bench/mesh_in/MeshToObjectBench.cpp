// The mesh input converter on quad grids of 10^4, 10^6 and 4*10^6 faces with one UV set, with
// and without point normals:
//  - steady: repeated conversions of the same mesh, each result dropped before the next (as in
//    playback), on all threads and on one; against one memcpy of the same graph-side bytes
//    into memory that is already mapped;
//  - cold: the first conversion in a fresh process (a child run of this program, with the
//    allocators' caches emptied after the host mesh was built), the median of five such runs;
//    against copying the same bytes into freshly mapped memory backed by transparent huge pages,
//    and by ordinary pages;
//  - normals: the point-normal part of a conversion against OpenMesh's update_normals on the
//    same mesh (when OpenMesh is there).
// Run without arguments; a summary of the ratios follows Google Benchmark's table.

#include "HostGrid.h"
#include "bench/common/CopyLimits.h"
#ifdef ZEL_HAVE_OPENMESH
#include "OpenMeshPeer.h"
#endif

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <kova/KDataHandle.h>
#include <map>
#include <memory>
#include <optional>
#include <orsel/ArrayMemory.h>
#include <string>
#include <sys/mman.h>
#include <tbb/task_arena.h>
#include <unistd.h>
#include <vector>
#include <zelvane/algorithms/MeshVertexNormals.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kSides[] = {100, 1000, 2000}; // 10^4, 10^6 and 4*10^6 faces
constexpr int kPeerSides[] = {100, 1000};   // OpenMesh builds 4*10^6 faces too slowly

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

std::string name(const char* what, int side, std::optional<bool> normals = {}) {
    std::string text = std::string(what) + "/faces:" + std::to_string(side * side);
    if (normals) {
        text += *normals ? "/normals:1" : "/normals:0";
    }
    return text;
}

// Repeated conversions; `threads` 1 runs them in an arena of one thread.
void steadyConversions(benchmark::State& state, const bench::HostGrid& grid,
                       bench::MeshConverter convert, bool normals, int threads) {
    const MeshOptions options = bench::benchOptions(normals);
    tbb::task_arena arena(threads == 1 ? 1 : tbb::task_arena::automatic);
    KDataHandle handle;
    grid.source.getValue(handle);
    for (auto _ : state) {
        arena.execute([&] {
            auto object = convert(grid.source, handle, options);
            if (!object) {
                state.SkipWithError("conversion failed");
            }
            benchmark::DoNotOptimize(object.get());
        });
    }
    state.SetItemsProcessed(state.iterations() * grid.faces);
    state.SetBytesProcessed(state.iterations() * grid.graphBytes(normals));
}

// The point-normal computation alone on a converted mesh, on all threads.
void pointNormals(benchmark::State& state, const Zelvane::Object* mesh) {
    Orsel::Array<Zelvane::Math::float3> normals;
    for (auto _ : state) {
        Zelvane::GeometryAlgorithms::computeMeshVertexNormals(*mesh, true, true, normals);
        benchmark::DoNotOptimize(normals.data());
    }
}

// Keeps every run's real time per iteration in milliseconds, by registered name.
class Collector : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (!run.error_occurred && run.run_type == Run::RT_Iteration) {
                const double seconds = run.real_accumulated_time / double(run.iterations);
                milliseconds[run.run_name.function_name] = seconds * 1e3;
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }
    std::optional<double> operator()(const std::string& key) const {
        const auto found = milliseconds.find(key);
        return found == milliseconds.end() ? std::nullopt : std::optional(found->second);
    }
    std::map<std::string, double> milliseconds;
};

// Child mode: the first conversion of this process, in milliseconds, on stdout.
int runCold(int side, bool normals) {
    const bench::MeshConverter convert = bench::loadMeshConverter();
    if (!convert) {
        return 1;
    }
    const bench::HostGrid grid = bench::makeHostGrid(side);
    Orsel::ArrayMemory::releaseCached();
    KDataHandle handle;
    grid.source.getValue(handle);
    const MeshOptions options = bench::benchOptions(normals);
    const auto start = Clock::now();
    auto object = convert(grid.source, handle, options);
    const double ms = millisecondsSince(start);
    if (!object) {
        return 1;
    }
    std::printf("%.4f\n", ms);
    return 0;
}

// The cold time of a child run of this program; empty when it fails.
std::optional<double> coldChild(int side, bool normals) {
    char self[4096] = {};
    if (readlink("/proc/self/exe", self, sizeof(self) - 1) <= 0) {
        return std::nullopt;
    }
    const std::string command =
        std::string("'") + self + "' --cold " + std::to_string(side) + (normals ? " 1" : " 0");
    FILE* child = popen(command.c_str(), "r");
    if (!child) {
        return std::nullopt;
    }
    double ms = 0;
    const bool read = std::fscanf(child, "%lf", &ms) == 1;
    return pclose(child) == 0 && read ? std::optional(ms) : std::nullopt;
}

// The median cold time of `kColdRuns` child runs: one first conversion is a single sample,
// at the mercy of whatever else the machine does at that moment.
std::optional<double> coldConversion(int side, bool normals) {
    constexpr int kColdRuns = 5;
    std::vector<double> times;
    for (int run = 0; run < kColdRuns; ++run) {
        const std::optional<double> ms = coldChild(side, normals);
        if (!ms) {
            return std::nullopt;
        }
        times.push_back(*ms);
    }
    std::nth_element(times.begin(), times.begin() + kColdRuns / 2, times.end());
    return times[kColdRuns / 2];
}

std::string cell(std::optional<double> value, const char* format = "%9.2f") {
    if (!value) {
        return "      n/a";
    }
    char text[32];
    std::snprintf(text, sizeof(text), format, *value);
    return text;
}

std::optional<double> ratio(std::optional<double> a, std::optional<double> b) {
    return a && b && *b > 0 ? std::optional(*a / *b) : std::nullopt;
}

void printSummary(const Collector& times, const std::vector<bench::HostGrid>& grids) {
    std::printf("\nMesh to object, per conversion (ms). Bytes: graph arrays filled.\n");
    std::printf("%9s %2s %8s %9s %9s %9s %8s %9s %8s %9s %9s %9s %8s %9s\n", "faces", "N", "MB",
                "steady", "GB/s", "serial", "speedup", "memcpy", "st/mcp", "cold", "freshTHP",
                "fresh4K", "cold/THP", "cold/4K");
    for (const bench::HostGrid& grid : grids) {
        for (const bool normals : {false, true}) {
            const double mb = double(grid.graphBytes(normals)) / 1e6;
            const auto steady = times(name("steady", grid.side, normals));
            const auto serial = times(name("serial", grid.side, normals));
            const auto copy = times(name("memcpyMapped", grid.side, normals));
            const auto thp = times(name("freshCopyHugePages", grid.side, normals));
            const auto small = times(name("freshCopy4K", grid.side, normals));
            const auto cold = coldConversion(grid.side, normals);
            std::printf("%9zu %2d %8.1f %s %s %s %s %s %s %s %s %s %s %s\n", grid.faces,
                        normals ? 1 : 0, mb, cell(steady).c_str(),
                        cell(steady ? std::optional(mb / *steady) : std::nullopt).c_str(),
                        cell(serial).c_str(), cell(ratio(serial, steady), "%8.2fx").c_str(),
                        cell(copy).c_str(), cell(ratio(steady, copy), "%7.2fx").c_str(),
                        cell(cold).c_str(), cell(thp).c_str(), cell(small).c_str(),
                        cell(ratio(cold, thp), "%7.2fx").c_str(),
                        cell(ratio(cold, small), "%8.2fx").c_str());
        }
    }
    std::printf("\nPoint normals (ms): part of a steady conversion, the computation alone, "
                "OpenMesh update_normals.\n");
    std::printf("%9s %9s %9s %9s %12s\n", "faces", "part", "compute", "OpenMesh", "OM/part");
    for (const bench::HostGrid& grid : grids) {
        const auto with = times(name("steady", grid.side, true));
        const auto without = times(name("steady", grid.side, false));
        const auto part = with && without ? std::optional(*with - *without) : std::nullopt;
        const auto peer = times(name("openMeshUpdateNormals", grid.side));
        std::printf("%9zu %s %s %s %s\n", grid.faces, cell(part).c_str(),
                    cell(times(name("computeNormals", grid.side))).c_str(), cell(peer).c_str(),
                    cell(ratio(peer, part), "%11.2fx").c_str());
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::strcmp(argv[1], "--cold") == 0) {
        return runCold(std::atoi(argv[2]), std::strcmp(argv[3], "1") == 0);
    }
    benchmark::Initialize(&argc, argv);
    const bench::MeshConverter convert = bench::loadMeshConverter();
    if (!convert) {
        return 1;
    }
    std::vector<bench::HostGrid> grids;
    for (const int side : kSides) {
        grids.push_back(bench::makeHostGrid(side));
    }
    // Converted meshes for the normal computations, kept for the whole run.
    std::vector<Orsel::Ptr<Zelvane::Object>> meshes;
    for (const bench::HostGrid& grid : grids) {
        KDataHandle handle;
        grid.source.getValue(handle);
        meshes.push_back(convert(grid.source, handle, bench::benchOptions(false)));
    }

    for (std::size_t g = 0; g < grids.size(); ++g) {
        const bench::HostGrid& grid = grids[g];
        for (const bool normals : {false, true}) {
            const std::size_t bytes = grid.graphBytes(normals);
            benchmark::RegisterBenchmark(name("steady", grid.side, normals).c_str(),
                                         steadyConversions, grid, convert, normals, 0)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime();
            benchmark::RegisterBenchmark(name("serial", grid.side, normals).c_str(),
                                         steadyConversions, grid, convert, normals, 1)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime();
            benchmark::RegisterBenchmark(name("memcpyMapped", grid.side, normals).c_str(),
                                         bench::memcpyMapped, bytes)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime();
            benchmark::RegisterBenchmark(name("freshCopyHugePages", grid.side, normals).c_str(),
                                         bench::freshCopy, bytes, true)
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime();
            benchmark::RegisterBenchmark(name("freshCopy4K", grid.side, normals).c_str(),
                                         bench::freshCopy, bytes, false)
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime();
        }
        benchmark::RegisterBenchmark(name("computeNormals", grid.side).c_str(), pointNormals,
                                     meshes[g].get())
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
#ifdef ZEL_HAVE_OPENMESH
    for (std::size_t g = 0; g < grids.size(); ++g) {
        for (const int side : kPeerSides) {
            if (grids[g].side == side) {
                bench::registerOpenMeshNormals(name("openMeshUpdateNormals", side), *meshes[g]);
            }
        }
    }
#endif
    Collector times;
    benchmark::RunSpecifiedBenchmarks(&times);
    printSummary(times, grids);
    benchmark::Shutdown();
    return 0;
}
