#include "plugin/PortTypes.h"

namespace ZelvanePlugin {

const Orsel::String kObjectTypeName("Object");
const Orsel::String kTimeTypeName("Simulation::Time");
const Orsel::String kTransformsTypeName("Geometry::Transform::GraphTransforms");
const Orsel::String kSceneInfoTypeName("File::Project::SceneInfo");

namespace {
const std::unordered_set<Orsel::String> gTerminalTypeNames = {
    Orsel::String("Core__Graph__terminal__final"),
    Orsel::String("Core__Graph__terminal__proxy"),
    Orsel::String("Core__Graph__terminal__diagnostic"),
};
} // namespace

const std::unordered_set<Orsel::String>& terminalTypeNames() { return gTerminalTypeNames; }

bool isObjectOrObjectArray(const Orsel::Type& type) {
    if (type.isArray()) {
        return type.elementType().fullyQualifiedName() == kObjectTypeName;
    }
    return type.fullyQualifiedName() == kObjectTypeName;
}

bool isOneLevelArray(const Orsel::Type& type) {
    return type.isArray() && !type.elementType().isArray();
}

bool isTime(const Orsel::Type& type) { return type.fullyQualifiedName() == kTimeTypeName; }

bool isTransforms(const Orsel::Type& type) {
    return type.fullyQualifiedName() == kTransformsTypeName;
}

bool isSceneInfo(const Orsel::Type& type) {
    return type.fullyQualifiedName() == kSceneInfoTypeName;
}

PortKind classifyPortType(const Orsel::Type& type) {
    if (isObjectOrObjectArray(type)) {
        return PortKind::Object;
    }
    if (isTime(type)) {
        return PortKind::Time;
    }
    if (isTransforms(type)) {
        return PortKind::Transforms;
    }
    if (isSceneInfo(type)) {
        return PortKind::SceneInfo;
    }
    return PortKind::Unsupported;
}

} // namespace ZelvanePlugin
