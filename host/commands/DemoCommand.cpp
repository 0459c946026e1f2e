#include "commands/DemoCommand.h"

#include "HostSession.h"
#include "pipeline/Outputs.h"
#include "pipeline/RoundTrip.h"

#include <filesystem>
#include <fmt/format.h>
#include <iostream>
#include <kova/KProfiler.h>
#include <zelvane/inputbypath/OptionKeys.h>

namespace KovaHost {
namespace {

void printSummary(const RoundTrip& trip, const nlohmann::json& report,
                  const std::filesystem::path& out) {
    std::cout << "kova demo\n  in:\n";
    for (const auto& mesh : report["meshes"]) {
        std::cout << fmt::format(
            "    mesh {:<12} {} points, {} faces, UV sets [{}], colour sets [{}]\n",
            mesh["name"].get<std::string>(), mesh["points"].get<int>(), mesh["faces"].get<int>(),
            fmt::join(mesh["uvSets"]["host"].get<std::vector<std::string>>(), " "),
            fmt::join(mesh["colorSets"]["host"].get<std::vector<std::string>>(), " "));
    }
    std::cout << fmt::format("    {} curve(s), {} face set(s), {} shading group(s)\n",
                             trip.imported.curveShapes.size(), trip.imported.faceSets.size(),
                             trip.imported.shadingGroups.size());
    std::cout << "  graph:\n";
    for (const auto& mesh : report["meshes"]) {
        std::cout << fmt::format(
            "    mesh object {:<12} properties [{}]\n", mesh["name"].get<std::string>(),
            fmt::join(mesh["properties"].get<std::vector<std::string>>(), " "));
    }
    const auto& curves = report["curves"];
    std::cout << fmt::format("    strand object: {} strands, {} points, properties [{}]\n",
                             curves["pointsPerCurve"].size(), curves["points"].get<unsigned>(),
                             fmt::join(curves["properties"].get<std::vector<std::string>>(), " "));
    std::cout << fmt::format("  out ({}):\n    meshes.obj: {} mesh(es)\n    tubes.obj: {} tube "
                             "mesh(es)\n    report.json, trace.json\n",
                             out.string(), trip.carried.meshShapes.size(),
                             trip.carried.tubeShapes.size());
    std::cout << "  stages:\n";
    for (const auto& [stage, millis] : trip.stageMillis) {
        std::cout << fmt::format("    {:<48} {:8.2f} ms\n", stage, millis);
    }
}

} // namespace

const std::vector<std::string>& demoSamples() {
    static const std::vector<std::string> samples = {"sample_mesh.obj", "sample_mesh_uvsets.gltf",
                                                     "sample_curves.obj"};
    return samples;
}

int runDemo(const DemoOptions& options) {
    const std::filesystem::path out(options.out);
    std::error_code failure;
    std::filesystem::create_directories(out, failure);
    if (failure) {
        std::cerr << fmt::format("kova: error: cannot create {}: {}\n", out.string(),
                                 failure.message());
        return 1;
    }
    HostSession session;
    if (!session.bindTranslationLibrary(options.pluginPath.c_str())) {
        return 1; // the loader has said why
    }
    std::vector<std::string> inputs;
    for (const std::string& sample : demoSamples()) {
        inputs.push_back((std::filesystem::path(options.dataDir) / sample).string());
    }
    KProfiler::clear();
    KProfiler::setRecording(true);
    RoundTrip trip;
    RigOptions rig;
    // Curves sampled every 0.1 units, with tangents and lengths for the graph.
    namespace Keys = ZelvaneBoardInputByPath::Keys;
    for (const auto& [key, value] :
         {std::pair{Keys::kSampling, "bySegmentLength"}, std::pair{Keys::kSegmentLength, "0.1"},
          std::pair{Keys::kComputeTangents, "1"}, std::pair{Keys::kAddLengths, "1"}}) {
        rig.portOptions.setChild(Orsel::String(key), Orsel::String(value));
    }
    std::string error;
    bool done = runRoundTrip(inputs, rig, true, trip, error) &&
                exportShapes(trip, (out / "meshes.obj").string(), trip.carried.meshShapes, error) &&
                (trip.carried.tubeShapes.empty() ||
                 exportShapes(trip, (out / "tubes.obj").string(), trip.carried.tubeShapes, error));
    KProfiler::setRecording(false);
    nlohmann::json report;
    if (done) {
        report = roundTripReport(trip);
        done = writeJsonFile((out / "report.json").string(), report, error) &&
               writeTraceFile((out / "trace.json").string(), error);
    }
    if (!done) {
        std::cerr << "kova: error: " << error << '\n';
        return 1;
    }
    printSummary(trip, report, out);
    return 0;
}

} // namespace KovaHost
