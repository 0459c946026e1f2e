#pragma once

#include <orsel/String.h>
#include <orsel/Type.h>

#include <unordered_set>

// The graph types that cross the host boundary, and how a port's type is classified.
namespace ZelvanePlugin {

extern const Orsel::String kObjectTypeName;     // "Object"
extern const Orsel::String kTimeTypeName;       // "Simulation::Time"
extern const Orsel::String kTransformsTypeName; // "Geometry::Transform::GraphTransforms"
extern const Orsel::String kSceneInfoTypeName;  // "File::Project::SceneInfo"

// Names of the graph terminal types.
const std::unordered_set<Orsel::String>& terminalTypeNames();

bool isObjectOrObjectArray(const Orsel::Type& type);
bool isOneLevelArray(const Orsel::Type& type);
bool isTime(const Orsel::Type& type);
bool isTransforms(const Orsel::Type& type);
bool isSceneInfo(const Orsel::Type& type);

enum class PortKind { Object, Time, Transforms, SceneInfo, Unsupported };

// Classifies in a fixed order: object (or array of objects) first, then time, transforms
// and scene information; anything else is not handled by this plug-in.
PortKind classifyPortType(const Orsel::Type& type);

} // namespace ZelvanePlugin
