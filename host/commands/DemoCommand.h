#pragma once

#include <string>
#include <vector>

namespace KovaHost {

struct DemoOptions {
    std::string out = "kova-demo";
    std::string dataDir; // the bundled samples
    std::string pluginPath;
};

// `kova demo`: the main job on the bundled samples. Imports a mesh with several UV sets,
// normals, a colour set, groups and materials, and a set of NURBS curves; sends them
// through the plug-in and a graph that passes the meshes back and turns the strands into
// tubes; writes meshes.obj, tubes.obj, report.json and trace.json into `out`, and prints
// what went in, what came out and the time of every stage.
int runDemo(const DemoOptions& options);

// The bundled sample files the demo imports, relative to the data folder.
const std::vector<std::string>& demoSamples();

} // namespace KovaHost
