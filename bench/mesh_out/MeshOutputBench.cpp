// Graph mesh -> host mesh through the plug-in's exported zelvaneMeshToKova, and the full round
// trip graph -> host -> graph (with kovaMeshToObject), on quad grids of 10^4, 10^6 and
// 4 * 10^6 faces with one UV set. Each runs steady (memory reused from the previous
// evaluation) and cold (the allocators' caches emptied before every run, so every buffer is
// fresh memory). In the same run, the two limits: memcpy of the grid's bytes into mapped
// memory (steady) and into fresh memory advised for huge pages (cold). A summary prints the
// ratios of the conversions to their limits.

#include "QuadGrid.h"
#include "bench/common/AllocatorCaches.h"
#include "bench/common/CopyLimits.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstring>
#include <kova/KDGModifier.h>
#include <kova/KDataHandle.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnMesh.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KPlug.h>
#include <kova/KPluginLoader.h>
#include <kova/KScene.h>
#include <map>
#include <mesh_in/MeshOptions.h>
#include <mesh_out/ZelvaneMeshToKova.h>
#include <string>
#include <sys/mman.h>
#include <vector>

namespace {

using namespace MeshOutputBench;

using ToKova = KObject (*)(const Zelvane::Object&, const ZelvaneMeshToKovaOpts&);
using ToObject = Orsel::MutablePtr<Zelvane::Object> (*)(const KPlug&, KDataHandle&,
                                                        const MeshOptions&);

ToKova toKova = nullptr;
ToObject toObject = nullptr;

const std::vector<std::pair<const char*, std::uint32_t>> kGrids = {
    {"10k", 100}, {"1M", 1000}, {"4M", 2000}};

const QuadGrid& grid(std::uint32_t side) {
    static std::map<std::uint32_t, QuadGrid> grids;
    auto found = grids.find(side);
    if (found == grids.end()) {
        found = grids.emplace(side, makeQuadGrid(side)).first;
    }
    return found->second;
}

void setBytes(benchmark::State& state, const QuadGrid& mesh) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * mesh.bytes));
}

void toHost(benchmark::State& state, std::uint32_t side, bool cold) {
    const QuadGrid& mesh = grid(side);
    const ZelvaneMeshToKovaOpts options;
    if (!cold) {
        toKova(*mesh.object, options); // the evaluation before: memory to reuse
    }
    for (auto _ : state) {
        if (cold) {
            state.PauseTiming();
            bench::dropAllocatorCaches();
            state.ResumeTiming();
        }
        KObject data = toKova(*mesh.object, options);
        benchmark::DoNotOptimize(data);
        state.PauseTiming();
        data = KObject();
        state.ResumeTiming();
    }
    setBytes(state, mesh);
}

// A plug holding host mesh data, for the input converter.
KPlug meshPlug() {
    static KPlug plug = [] {
        KFnDependencyNode fnNode;
        const KObject node = fnNode.create("objectSet", "benchMeshHolder");
        KFnTypedAttribute fnTyped;
        const KObject attribute = fnTyped.create("mesh", "mesh", KFnData::kMesh);
        KDGModifier modifier;
        modifier.addAttribute(node, attribute);
        modifier.doIt();
        return KPlug(node, attribute);
    }();
    return plug;
}

void roundTrip(benchmark::State& state, std::uint32_t side, bool cold) {
    const QuadGrid& mesh = grid(side);
    const ZelvaneMeshToKovaOpts options;
    const MeshOptions inputOptions;
    KPlug plug = meshPlug();
    if (!cold) {
        plug.setKObject(toKova(*mesh.object, options));
        KDataHandle handle;
        plug.getValue(handle);
        toObject(plug, handle, inputOptions);
    }
    for (auto _ : state) {
        if (cold) {
            state.PauseTiming();
            bench::dropAllocatorCaches();
            state.ResumeTiming();
        }
        plug.setKObject(toKova(*mesh.object, options));
        KDataHandle handle;
        plug.getValue(handle);
        Orsel::MutablePtr<Zelvane::Object> back = toObject(plug, handle, inputOptions);
        benchmark::DoNotOptimize(back);
        state.PauseTiming();
        back = {};
        handle = KDataHandle();
        plug.setKObject(KObject());
        state.ResumeTiming();
    }
    setBytes(state, mesh);
}

// Keeps the console output and, per benchmark name, the real time of one iteration (ms).
class SummaryReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                timesMs[run.benchmark_name()] = run.GetAdjustedRealTime();
            }
        }
    }
    std::map<std::string, double> timesMs;
};

void printSummary(const std::map<std::string, double>& ms) {
    std::printf("\n%-6s %-10s %10s %10s %12s\n", "grid", "path", "ms", "limit ms", "ratio");
    for (const auto& [label, side] : kGrids) {
        const std::string size(label);
        // The limits with fresh memory time themselves (manual time), the rest real time.
        const auto time = [&](const std::string& name) {
            for (const char* clock : {"/real_time", "/manual_time"}) {
                if (const auto found = ms.find(name + "/" + size + clock); found != ms.end()) {
                    return found->second;
                }
            }
            return 0.0;
        };
        const double steadyLimit = time("memcpy_mapped");
        const double coldLimit = time("memcpy_fresh_huge_pages");
        const std::pair<const char*, double> rows[] = {{"toHost_steady", steadyLimit},
                                                       {"toHost_cold", coldLimit},
                                                       {"roundTrip_steady", steadyLimit},
                                                       {"roundTrip_cold", coldLimit}};
        for (const auto& [path, limit] : rows) {
            const double t = time(path);
            if (t == 0.0) {
                continue;
            }
            std::printf("%-6s %-17s %8.2f %10.2f %10.2fx\n", size.c_str(), path, t, limit,
                        limit > 0 ? t / limit : 0.0);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    KStatus status;
    const KObject plugin = KPluginLoader::load(PLUGIN_PATH, &status);
    if (!status) {
        std::fprintf(stderr, "cannot load the plug-in: %s\n", status.errorString().asChar());
        return 1;
    }
    toKova = reinterpret_cast<ToKova>(KPluginLoader::symbol(
        plugin, "_Z17zelvaneMeshToKovaRKN7Zelvane6ObjectERK21ZelvaneMeshToKovaOpts"));
    toObject = reinterpret_cast<ToObject>(
        KPluginLoader::symbol(plugin, "_Z16kovaMeshToObjectRK5KPlugR11KDataHandleRK11MeshOptions"));
    if (!toKova || !toObject) {
        std::fprintf(stderr, "the plug-in lacks its mesh converters\n");
        return 1;
    }
    for (const auto& [label, side] : kGrids) {
        const std::string size(label);
        const auto add = [&](const std::string& name, auto body) {
            return benchmark::RegisterBenchmark((name + "/" + size).c_str(), body)
                ->Unit(benchmark::kMillisecond);
        };
        const std::uint32_t s = side;
        add("memcpy_mapped", [s](benchmark::State& st) {
            bench::memcpyMapped(st, grid(s).bytes);
        })->UseRealTime();
        add("memcpy_fresh_huge_pages", [s](benchmark::State& st) {
            bench::freshCopy(st, grid(s).bytes, true);
        })->UseManualTime();
        add("toHost_steady", [s](benchmark::State& st) { toHost(st, s, false); })->UseRealTime();
        add("toHost_cold", [s](benchmark::State& st) { toHost(st, s, true); })->UseRealTime();
        add("roundTrip_steady", [s](benchmark::State& st) {
            roundTrip(st, s, false);
        })->UseRealTime();
        add("roundTrip_cold", [s](benchmark::State& st) { roundTrip(st, s, true); })->UseRealTime();
    }
    benchmark::Initialize(&argc, argv);
    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    printSummary(reporter.timesMs);
    benchmark::Shutdown();
    KScene::reset();
    return 0;
}
