#include "commands/ConvertCommand.h"

#include "HostSession.h"
#include "pipeline/Outputs.h"
#include "pipeline/RoundTrip.h"

#include <fmt/format.h>
#include <iostream>
#include <kova/KProfiler.h>

namespace KovaHost {

int runConvert(const ConvertOptions& options) {
    HostSession session;
    if (!session.bindTranslationLibrary(options.pluginPath.c_str())) {
        return 1; // the loader has said why
    }
    KProfiler::clear();
    KProfiler::setRecording(!options.profile.empty());
    RoundTrip trip;
    std::string error;
    const auto everything = [&trip] {
        std::vector<KObject> shapes = trip.carried.meshShapes;
        shapes.insert(shapes.end(), trip.carried.tubeShapes.begin(), trip.carried.tubeShapes.end());
        return shapes;
    };
    const bool done =
        runRoundTrip({options.input}, options.rig, true, trip, error) &&
        exportShapes(trip, options.output, everything(), error) &&
        (options.report.empty() || writeJsonFile(options.report, roundTripReport(trip), error)) &&
        (options.profile.empty() || writeTraceFile(options.profile, error));
    KProfiler::setRecording(false);
    if (!done) {
        std::cerr << "kova: error: " << error << '\n';
        return 1;
    }
    std::cout << fmt::format("{}: {} mesh(es) and {} curve(s) in, {} mesh(es) and {} tube "
                             "mesh(es) out to {}\n",
                             options.input, trip.imported.meshShapes.size(),
                             trip.imported.curveShapes.size(), trip.carried.meshShapes.size(),
                             trip.carried.tubeShapes.size(), options.output);
    return 0;
}

} // namespace KovaHost
