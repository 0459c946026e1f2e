// Peak resident memory of a round trip of a 10^6-face host mesh through the loaded plug-in:
// host mesh -> kovaMeshToObject -> graph object -> zelvaneMeshToKova -> host mesh, as a first
// evaluation makes it (the allocators' caches are emptied before every run). Two runs: the
// converters' default options (normals go into the graph but are not written back, the host
// computes its own), and normals carried both ways.
//
// Counters (the largest of the runs):
//  - meshMB: the bytes of the source host mesh: points, polygon counts and vertices, normals
//    and their ids, and its UV set's table, per-face counts and ids;
//  - graphMB: the graph object's arrays; hostOutMB: the host mesh made of it;
//  - peakMB: how much more the process held at its peak than before the run;
//  - peakPerMeshByte: peakMB / meshMB, to be at most 3. The source mesh exists before the run
//    and is not counted; the graph object and the new host mesh are both alive at the end, so
//    a round trip with no temporary memory at all would show about 2.

#include "bench/common/AllocatorCaches.h"
#include "bench/mesh_in/HostGrid.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <fstream>
#include <kova/KDataHandle.h>
#include <kova/KFnMesh.h>
#include <kova/KIntArray.h>
#include <kova/KPluginLoader.h>
#include <kova/KStringArray.h>
#include <mesh_out/ZelvaneMeshToKova.h>
#include <orsel/ArrayMemory.h>
#include <string>

namespace {

using ToKova = KObject (*)(const Zelvane::Object&, const ZelvaneMeshToKovaOpts&);

constexpr int kSide = 1000; // 10^6 faces
constexpr double kMB = 1e6;

// A field of /proc/self/status ("VmRSS", "VmHWM") in bytes; 0 when it can't be read.
std::size_t statusBytes(const std::string& field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind(field + ":", 0) == 0) {
            return std::stoull(line.substr(field.size() + 1)) * 1024;
        }
    }
    return 0;
}

// Makes the resident high-water mark start again from what the process holds now.
bool resetPeak() {
    std::ofstream clear("/proc/self/clear_refs");
    clear << "5";
    clear.flush();
    return static_cast<bool>(clear);
}

// The bytes of the arrays a host mesh holds (all of 4-byte values); see the counters above.
std::size_t hostMeshBytes(const KObject& mesh) {
    const KFnMesh fn(mesh);
    KIntArray counts, ids;
    fn.getNormalIds(counts, ids);
    std::size_t values = 3 * std::size_t(fn.numVertices()) + fn.numPolygons() +
                         fn.numFaceVertices() + 3 * std::size_t(fn.numNormals()) + ids.length();
    KStringArray uvSets;
    fn.getUVSetNames(uvSets);
    for (const KString& set : uvSets) {
        fn.getAssignedUVs(counts, ids, &set);
        values += 2 * std::size_t(fn.numUVs(&set)) + counts.length() + ids.length();
    }
    return 4 * values;
}

void roundTrip(benchmark::State& state, const bench::HostGrid& grid, bench::MeshConverter toObject,
               ToKova toKova, bool normals) {
    const MeshOptions inOptions; // face-vertex normals go into the graph
    ZelvaneMeshToKovaOpts outOptions;
    outOptions.transferNormals = normals;
    KDataHandle source;
    grid.source.getValue(source);
    const std::size_t meshBytes = hostMeshBytes(source.asMesh());
    std::size_t peak = 0, graphBytes = 0, hostBytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        bench::dropAllocatorCaches();
        const std::size_t before = statusBytes("VmRSS");
        const std::size_t arraysBefore = Orsel::ArrayStats::liveBytes();
        if (!resetPeak() || before == 0) {
            state.SkipWithError("cannot read or reset the resident memory peak");
            break;
        }
        state.ResumeTiming();
        Orsel::MutablePtr<Zelvane::Object> object = toObject(grid.source, source, inOptions);
        KObject mesh = object ? toKova(*object, outOptions) : KObject();
        state.PauseTiming();
        if (mesh.isNull()) {
            state.SkipWithError("the round trip failed");
            break;
        }
        peak = std::max(peak, statusBytes("VmHWM") - before);
        graphBytes = Orsel::ArrayStats::liveBytes() - arraysBefore;
        hostBytes = hostMeshBytes(mesh);
        object = {};
        mesh = KObject();
        state.ResumeTiming();
    }
    state.counters["meshMB"] = double(meshBytes) / kMB;
    state.counters["graphMB"] = double(graphBytes) / kMB;
    state.counters["hostOutMB"] = double(hostBytes) / kMB;
    state.counters["peakMB"] = double(peak) / kMB;
    state.counters["peakPerMeshByte"] = double(peak) / double(meshBytes);
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const bench::MeshConverter toObject = bench::loadMeshConverter();
    const KObject plugin = KPluginLoader::load(PLUGIN_PATH);
    const auto toKova = reinterpret_cast<ToKova>(KPluginLoader::symbol(
        plugin, "_Z17zelvaneMeshToKovaRKN7Zelvane6ObjectERK21ZelvaneMeshToKovaOpts"));
    if (!toObject || !toKova) {
        std::fprintf(stderr, "the plug-in lacks its mesh converters\n");
        return 1;
    }
    const bench::HostGrid grid = bench::makeHostGrid(kSide);
    for (const bool normals : {false, true}) {
        benchmark::RegisterBenchmark(normals ? "roundTrip/faces:1000000/normals:both"
                                             : "roundTrip/faces:1000000/defaults",
                                     roundTrip, grid, toObject, toKova, normals)
            ->Iterations(3)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
