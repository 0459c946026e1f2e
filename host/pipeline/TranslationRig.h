#pragma once

#include <kova/KObject.h>
#include <memory>
#include <orsel/MetadataItem.h>
#include <orsel/Ptr.h>
#include <string>
#include <vector>
#include <zelvane/Object.h>

namespace KovaHost {

// How the rig sends geometry through the plug-in and back.
struct RigOptions {
    // Port options of the mesh and curve inputs, one item for both (see
    // docs/port-options.md).
    Orsel::MetadataItem portOptions;
    // The "zelvaneGeoToKova" node's attributes for the meshes written back.
    bool transferNormals = true;
    // Every colour set; normals, which the node would also take for colours, stay out.
    std::string properties = "* ^N ^faceVertexN";
    std::string componentTags = "*";
    // Curves come back as tube meshes of this radius and number of sides.
    float tubeRadius = 0.05f;
    int tubeSides = 8;
};

// What one evaluation carried.
struct RigResult {
    // The graph objects the plug-in made of the meshes (in the order given) and the one
    // strand object of all curves (null without curves).
    std::vector<Orsel::Ptr<Zelvane::Object>> meshObjects;
    Orsel::Ptr<Zelvane::Object> strands;
    // Host mesh shapes written back from the graph: one per mesh object, and one tube mesh of
    // all curves.
    std::vector<KObject> meshShapes;
    std::vector<KObject> tubeShapes;
};

// The host side of a round trip: a board whose array input "meshes" reads mesh shapes in
// world space and whose merged input "curves" reads curve shapes as one strand object. Its
// graph passes the meshes to the output "meshesOut" and turns the strands into tubes on
// "tubes"; two "zelvaneGeoToKova" nodes bring both back as new host mesh shapes.
class TranslationRig {
public:
    // Builds the board and its connections in the current scene; false with `error` set when
    // the host refuses a step (the plug-in must be bound already).
    bool build(const std::vector<KObject>& meshShapes, const std::vector<KObject>& curveShapes,
               const RigOptions& options, std::string& error);

    // Evaluates the board: the plug-in translates the inputs (into `result`'s graph
    // objects) and the graph runs. False with `error` set when the evaluation fails.
    bool translateInputs(RigResult& result, std::string& error);

    // Brings the graph's results back as host meshes, creating the output shapes on the first
    // run: each mesh result takes the name of its source mesh (whose transform becomes
    // "<name>Source"), the tubes are "curveTubes". False with `error` set when a step fails.
    bool writeBack(RigResult& result, std::string& error);

private:
    struct Captured;

    // Gives the writer's i-th mesh a shape named names[i] (the last name numbered when there
    // are more meshes than names).
    bool collectShapes(const KObject& geoToKova, const std::vector<std::string>& names,
                       std::vector<KObject>& shapes, std::string& error);

    KObject board_;
    KObject meshWriter_;
    KObject tubeWriter_;
    std::vector<KObject> meshSources_;
    std::vector<std::string> meshNames_;
    bool hasCurves_ = false;
    std::shared_ptr<Captured> captured_;
};

} // namespace KovaHost
