#include "commands/PluginInfoCommand.h"

#include "HostSession.h"

#include <board/BoardExecutor.h>
#include <board/BoardNode.h>
#include <fmt/format.h>
#include <iostream>
#include <kova/KApiVersion.h>
#include <kova/KFnAttribute.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KPlug.h>
#include <kova/KPlugArray.h>
#include <kova/KScene.h>
#include <kova/signing/VerifyPlugin.h>
#include <nlohmann/json.hpp>
#include <set>
#include <zelvane/Object.h>
#include <zelvane/file/SceneInfo.h>
#include <zelvane/geometry/GraphTransforms.h>
#include <zelvane/simulation/Time.h>

namespace KovaHost {
namespace {

using ZelvaneBoard::PortDescription;
using ZelvaneGraph::Executor::PortDirection;

std::vector<PortDescription> samplePorts() {
    auto make = [](const char* name, PortDirection direction, const Orsel::Type& type) {
        PortDescription description;
        description.name = Orsel::String(name);
        description.direction = direction;
        description.type = type;
        return description;
    };
    return {
        make("geometry", PortDirection::Input, Zelvane::objectType()),
        make("geometries", PortDirection::Input, Orsel::Type::arrayOf(Zelvane::objectType())),
        make("result", PortDirection::Output, Zelvane::objectType()),
        make("time", PortDirection::Input, Zelvane::Simulation::timeType()),
        make("transforms", PortDirection::Input,
             Zelvane::Geometry::Transform::graphTransformsType()),
        make("scene", PortDirection::Input, Zelvane::File::Project::sceneInfoType()),
        make("amount", PortDirection::Input, Orsel::Type::builtin(Orsel::TypeKind::Float)),
    };
}

std::set<std::string> attributeNames(const KObject& node) {
    KFnDependencyNode fnNode(node);
    std::set<std::string> names;
    for (unsigned int i = 0; i < fnNode.attributeCount(); ++i) {
        names.insert(KFnAttribute(fnNode.attribute(i)).name().str());
    }
    return names;
}

std::vector<std::string> sceneNodeNames() {
    std::vector<std::string> names;
    const KObjectArray nodes = KScene::current().nodes();
    for (unsigned int i = 0; i < nodes.length(); ++i) {
        names.push_back(KFnDependencyNode(nodes[i]).name().str());
    }
    return names;
}

// Connections in and out of `attribute` of `node`, as "source -> destination".
std::vector<std::string> connectionsOf(const KObject& node, const std::string& attribute) {
    std::vector<std::string> lines;
    const KPlug plug = KFnDependencyNode(node).findPlug(attribute.c_str(), false);
    KPlugArray others;
    if (plug.connectedTo(others, true, false)) {
        for (unsigned int i = 0; i < others.length(); ++i) {
            lines.push_back(others[i].name().str() + " -> " + plug.name().str());
        }
    }
    KPlugArray destinations;
    if (plug.destinations(destinations)) {
        for (unsigned int i = 0; i < destinations.length(); ++i) {
            lines.push_back(plug.name().str() + " -> " + destinations[i].name().str());
        }
    }
    return lines;
}

nlohmann::json describePorts(const KObject& board) {
    nlohmann::json ports = nlohmann::json::array();
    for (const PortDescription& port : samplePorts()) {
        const std::set<std::string> before = attributeNames(board);
        const bool added = ZelvaneBoard::addPort(board, port);
        nlohmann::json entry;
        entry["name"] = port.name.toStdString();
        entry["type"] = port.type.fullyQualifiedName().toStdString();
        entry["direction"] = port.direction == PortDirection::Input ? "input" : "output";
        entry["hostAttribute"] = added;
        nlohmann::json attributes = nlohmann::json::array();
        nlohmann::json connections = nlohmann::json::array();
        for (const std::string& name : attributeNames(board)) {
            if (!before.count(name)) {
                attributes.push_back(name);
                for (const std::string& line : connectionsOf(board, name)) {
                    connections.push_back(line);
                }
            }
        }
        entry["attributes"] = attributes;
        entry["connections"] = connections;
        ports.push_back(entry);
    }
    return ports;
}

void printText(const nlohmann::json& report) {
    std::cout << fmt::format("plug-in     {}\n", report["plugin"].get<std::string>());
    std::cout << fmt::format(
        "API version {} (host {}), signature: {}\n", report["apiVersion"].get<std::string>(),
        report["hostApiVersion"].get<std::string>(), report["signature"].get<std::string>());
    std::string types;
    for (const auto& type : report["supportedTypes"]) {
        types += (types.empty() ? "" : ", ") + type.get<std::string>();
    }
    std::cout << fmt::format("graph types {}\n", types);
    for (const auto& port : report["ports"]) {
        std::string attributes;
        for (const auto& name : port["attributes"]) {
            attributes += (attributes.empty() ? "" : " ") + name.get<std::string>();
        }
        std::cout << fmt::format("  port {:<11} {:<38} {:<6} -> {}\n",
                                 port["name"].get<std::string>(), port["type"].get<std::string>(),
                                 port["direction"].get<std::string>(),
                                 port["hostAttribute"].get<bool>() ? attributes : "(not handled)");
        for (const auto& line : port["connections"]) {
            std::cout << fmt::format("       {}\n", line.get<std::string>());
        }
    }
    std::string nodes;
    for (const auto& name : report["sceneNodes"]) {
        nodes += (nodes.empty() ? "" : ", ") + name.get<std::string>();
    }
    std::cout << fmt::format("scene       {}\n", nodes);
}

} // namespace

int runPluginInfo(const PluginInfoOptions& options) {
    const auto verdict = KovaSigning::verifyPlugin(options.pluginPath, KOVA_API_VERSION);
    HostSession session;
    if (!session.bindTranslationLibrary(options.pluginPath.c_str())) {
        return 1; // the loader or the board has said why
    }
    KFnDependencyNode fnNode;
    const KObject board = fnNode.create(ZelvaneBoard::BoardNode::kTypeName, "board1");
    if (board.isNull()) {
        std::cerr << "kova: error: cannot create a board node\n";
        return 1;
    }

    nlohmann::json report;
    report["plugin"] = options.pluginPath;
    report["apiVersion"] = verdict.apiVersion;
    report["hostApiVersion"] = KOVA_API_VERSION;
    report["signature"] = verdict.reason.empty() ? std::string("ok") : verdict.reason;
    Orsel::Array<Orsel::String> typeNames;
    ZelvaneBoard::BoardExecutor::translationFor(Zelvane::objectType())
        ->getSupportedTypeNames(typeNames);
    report["supportedTypes"] = nlohmann::json::array();
    for (const Orsel::String& name : typeNames) {
        report["supportedTypes"].push_back(name.toStdString());
    }
    report["ports"] = describePorts(board);
    report["sceneNodes"] = sceneNodeNames();

    if (options.json) {
        std::cout << report.dump(2) << '\n';
    } else {
        printText(report);
    }
    return 0;
}

} // namespace KovaHost
