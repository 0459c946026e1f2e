#include "commands/GeometryOptions.h"

#include <zelvane/inputbypath/OptionKeys.h>

namespace KovaHost {
namespace {

namespace Keys = ZelvaneBoardInputByPath::Keys;

void setKey(RigOptions& options, std::string_view key, const std::string& value) {
    options.portOptions.setChild(Orsel::String(key), Orsel::String(value));
}

void flag(CLI::App& command, const char* name, RigOptions& options, std::string_view key,
          const char* value, const char* help) {
    command.add_flag_callback(
        name, [&options, key, value] { setKey(options, key, value); }, help);
}

void text(CLI::App& command, const char* name, RigOptions& options, std::string_view key,
          const char* help) {
    command.add_option_function<std::string>(
        name, [&options, key](const std::string& value) { setKey(options, key, value); }, help);
}

void number(CLI::App& command, const char* name, RigOptions& options, std::string_view key,
            const char* help) {
    command
        .add_option_function<double>(
            name,
            [&options, key](const double& value) { setKey(options, key, std::to_string(value)); },
            help)
        ->check(CLI::PositiveNumber);
}

// Puts every option added to `command` since it had `first` options into `group`.
void groupFrom(CLI::App& command, std::size_t first, const char* group) {
    const std::vector<CLI::Option*> all = command.get_options();
    for (std::size_t i = first; i < all.size(); ++i) {
        all[i]->group(group);
    }
}

} // namespace

void addGeometryOptions(CLI::App& command, RigOptions& options) {
    std::size_t first = command.get_options().size();
    flag(command, "--point-normals", options, Keys::kPointNormals, "1",
         "Compute point normals on the graph side");
    flag(command, "--no-face-vertex-normals", options, Keys::kFaceVertexNormals, "0",
         "Leave the host's face-vertex normals out");
    text(command, "--channels", options, Keys::kChannelFilter,
         "Channel expression selecting UV sets, colour sets and face sets");
    text(command, "--mesh-tags", options, Keys::kComponentTagFilter,
         "Channel expression selecting mesh component tags");
    groupFrom(command, first, "Meshes");
    first = command.get_options().size();

    text(command, "--curve-tags", options, Keys::kComponentTags,
         "Channel expression selecting curve component tags");
    command
        .add_option_function<std::string>(
            "--sampling",
            [&options](const std::string& value) { setKey(options, Keys::kSampling, value); },
            "How curves become points")
        ->check(CLI::IsMember({"cvs", "byCVCount", "bySegmentLength"}));
    number(command, "--rate", options, Keys::kSampleRate,
           "Points per CV with --sampling byCVCount");
    flag(command, "--uniform-by-length", options, Keys::kUniformByLength, "1",
         "byCVCount: space the points evenly by arc length");
    number(command, "--segment-length", options, Keys::kSegmentLength,
           "Target segment length with --sampling bySegmentLength");
    flag(command, "--even-segments", options, Keys::kEvenSegments, "1",
         "bySegmentLength: spread each curve's length evenly over its segments");
    flag(command, "--tangents", options, Keys::kComputeTangents, "1", "Add point tangents");
    flag(command, "--lengths", options, Keys::kAddLengths, "1", "Add point and strand lengths");
    command
        .add_option_function<std::string>(
            "--tag-transfer",
            [&options](const std::string& value) { setKey(options, Keys::kTagTransfer, value); },
            "How CV tags reach sampled points")
        ->check(CLI::IsMember({"nearestCV", "bothNeighbours"}));
    command.add_option("--tube-radius", options.tubeRadius, "Radius of the tubes made of curves")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    groupFrom(command, first, "Curves");
    first = command.get_options().size();

    command.add_flag("!--no-transfer-normals", options.transferNormals,
                     "Write meshes back without their normals");
    command
        .add_option("--properties", options.properties,
                    "Channel expression of the colour sets written back")
        ->capture_default_str();
    command
        .add_option("--component-tags", options.componentTags,
                    "Channel expression of the component tags written back")
        ->capture_default_str();
    groupFrom(command, first, "Write-back");
}

} // namespace KovaHost
