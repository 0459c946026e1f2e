#include "pipeline/RoundTrip.h"

#include "pipeline/Progress.h"

#include <chrono>
#include <fmt/format.h>
#include <kova/KFnDagNode.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnMesh.h>
#include <kova/KStringArray.h>
#include <zelvane/geometry/Names.h>

namespace KovaHost {
namespace {

using Clock = std::chrono::steady_clock;

double millisSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

std::vector<std::string> uvSetNames(const KObject& shape) {
    KStringArray names;
    KFnMesh(shape).getUVSetNames(names);
    std::vector<std::string> result;
    for (unsigned int i = 0; i < names.length(); ++i) {
        result.push_back(names[i].str());
    }
    return result;
}

std::vector<std::string> colorSetNames(const KObject& shape) {
    KStringArray names;
    KFnMesh(shape).getColorSetNames(names);
    std::vector<std::string> result;
    for (unsigned int i = 0; i < names.length(); ++i) {
        result.push_back(names[i].str());
    }
    return result;
}

// A UV set that leaves some face unmapped: the plug-in does not carry those.
bool isPartial(const KObject& shape, const std::string& set) {
    KFnMesh fn(shape);
    KIntArray counts;
    KIntArray ids;
    const KString name(set.c_str());
    return fn.getAssignedUVs(counts, ids, &name) &&
           static_cast<int>(ids.length()) < fn.numFaceVertices();
}

// The host names of the UV sets a graph mesh object carries, in property order.
std::vector<std::string> carriedUVSets(const Zelvane::Object& object) {
    std::vector<std::string> names;
    object.forEachProperty([&](const Orsel::String&, const Zelvane::PropertyValue& value) {
        const auto* nested = std::get_if<Orsel::Ptr<Zelvane::Object>>(&value);
        if (nested && *nested &&
            (*nested)->getArray<Zelvane::Math::float2>(Zelvane::Geometry::sData)) {
            if (const auto* name = (*nested)->get<Orsel::String>(Zelvane::Geometry::sDccName)) {
                names.push_back(name->toStdString());
            }
        }
    });
    return names;
}

std::vector<std::string> propertyNames(const Zelvane::Object& object) {
    std::vector<std::string> names;
    object.forEachProperty([&](const Orsel::String& name, const Zelvane::PropertyValue&) {
        names.push_back(name.toStdString());
    });
    return names;
}

nlohmann::json meshReport(const std::string& name, const KObject& input,
                          const Orsel::Ptr<Zelvane::Object>& object, const KObject* output) {
    KFnMesh fn(input);
    nlohmann::json entry{{"name", name},
                         {"points", fn.numVertices()},
                         {"faces", fn.numPolygons()},
                         {"faceVertices", fn.numFaceVertices()}};
    const std::vector<std::string> host = uvSetNames(input);
    const std::vector<std::string> carried =
        object ? carriedUVSets(*object) : std::vector<std::string>{};
    nlohmann::json skipped = nlohmann::json::array();
    nlohmann::json filtered = nlohmann::json::array();
    for (const std::string& set : host) {
        if (std::find(carried.begin(), carried.end(), set) == carried.end()) {
            (isPartial(input, set) ? skipped : filtered).push_back(set);
        }
    }
    nlohmann::json uvSets{{"host", host},
                          {"carried", carried},
                          {"skippedPartial", skipped},
                          {"droppedByFilter", filtered}};
    nlohmann::json colorSets{{"host", colorSetNames(input)}};
    if (output) {
        const std::vector<std::string> written = uvSetNames(*output);
        nlohmann::json renamed = nlohmann::json::array();
        for (std::size_t i = 0; i < written.size() && i < carried.size(); ++i) {
            if (written[i] != carried[i]) {
                renamed.push_back({{"from", carried[i]}, {"to", written[i]}});
            }
        }
        uvSets["written"] = written;
        uvSets["renamed"] = renamed;
        colorSets["written"] = colorSetNames(*output);
        entry["output"] = transformName(*output);
    }
    entry["uvSets"] = uvSets;
    entry["colorSets"] = colorSets;
    entry["properties"] = object ? propertyNames(*object) : std::vector<std::string>{};
    entry["converted"] = static_cast<bool>(object);
    return entry;
}

nlohmann::json curvesReport(const RoundTrip& trip) {
    nlohmann::json curves{{"count", trip.imported.curveShapes.size()}};
    const Orsel::Ptr<Zelvane::Object>& strands = trip.carried.strands;
    const auto offsets =
        strands ? strands->getArray<std::uint32_t>(Zelvane::Geometry::sStrandOffset) : nullptr;
    nlohmann::json perCurve = nlohmann::json::array();
    for (std::size_t i = 0; offsets && i + 1 < offsets->size(); ++i) {
        perCurve.push_back((*offsets)[i + 1] - (*offsets)[i]);
    }
    curves["converted"] = static_cast<bool>(strands);
    curves["points"] = offsets && !offsets->empty() ? (*offsets)[offsets->size() - 1] : 0u;
    curves["pointsPerCurve"] = perCurve;
    curves["properties"] = strands ? propertyNames(*strands) : std::vector<std::string>{};
    curves["tubeMeshes"] = trip.carried.tubeShapes.size();
    return curves;
}

} // namespace

std::string transformName(const KObject& shape) {
    KFnDagNode fn(shape);
    return KFnDependencyNode(fn.parentCount() > 0 ? fn.parent(0) : shape).name().str();
}

bool runRoundTrip(const std::vector<std::string>& inputs, const RigOptions& options, bool writeBack,
                  RoundTrip& trip, std::string& error) {
    Progress progress;
    trip.inputs = inputs;
    for (const std::string& input : inputs) {
        progress.stage("importing " + input);
        const auto start = Clock::now();
        KovaIo::ImportResult imported = KovaIo::importScene(input);
        if (!imported.status) {
            error = imported.status.errorString().str();
            return false;
        }
        const auto append = [](auto& to, const auto& from) {
            to.insert(to.end(), from.begin(), from.end());
        };
        append(trip.imported.meshShapes, imported.nodes.meshShapes);
        for (const KObject& shape : imported.nodes.meshShapes) {
            trip.meshNames.push_back(transformName(shape));
        }
        append(trip.imported.curveShapes, imported.nodes.curveShapes);
        append(trip.imported.faceSets, imported.nodes.faceSets);
        append(trip.imported.shadingGroups, imported.nodes.shadingGroups);
        append(trip.warnings, imported.warnings);
        append(trip.renamed, imported.renamed);
        trip.stageMillis.emplace_back("import " + input, millisSince(start));
    }

    if (trip.imported.meshShapes.empty() && trip.imported.curveShapes.empty()) {
        error = inputs.size() == 1 ? "'" + inputs.front() + "' holds no meshes or curves"
                                   : "the inputs hold no meshes or curves";
        return false;
    }

    progress.stage("translating into the graph");
    TranslationRig rig;
    auto start = Clock::now();
    if (!rig.build(trip.imported.meshShapes, trip.imported.curveShapes, options, error) ||
        !rig.translateInputs(trip.carried, error)) {
        return false;
    }
    trip.stageMillis.emplace_back("translate", millisSince(start));
    if (writeBack) {
        progress.stage("writing the graph's results back");
        start = Clock::now();
        if (!rig.writeBack(trip.carried, error)) {
            return false;
        }
        trip.stageMillis.emplace_back("write back", millisSince(start));
    }
    return true;
}

nlohmann::json roundTripReport(const RoundTrip& trip) {
    nlohmann::json meshes = nlohmann::json::array();
    for (std::size_t i = 0; i < trip.imported.meshShapes.size(); ++i) {
        const Orsel::Ptr<Zelvane::Object> object =
            i < trip.carried.meshObjects.size() ? trip.carried.meshObjects[i] : nullptr;
        const KObject* output =
            i < trip.carried.meshShapes.size() ? &trip.carried.meshShapes[i] : nullptr;
        meshes.push_back(
            meshReport(trip.meshNames[i], trip.imported.meshShapes[i], object, output));
    }
    nlohmann::json stages = nlohmann::json::object();
    for (const auto& [stage, millis] : trip.stageMillis) {
        stages[stage] = millis;
    }
    return {{"inputs", trip.inputs},     {"meshes", meshes},        {"curves", curvesReport(trip)},
            {"warnings", trip.warnings}, {"renamed", trip.renamed}, {"stageMillis", stages}};
}

} // namespace KovaHost
