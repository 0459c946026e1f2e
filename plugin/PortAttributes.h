#pragma once

#include <zelvane/executor/PortDirection.h>

#include <zelvane/inputbypath/Options.h>

#include <kova/KObject.h>

#include <orsel/String.h>
#include <orsel/Type.h>

#include <vector>

// Host attributes (and their connections) that represent a new graph port on the node that
// carries the graph. Each returns false at the first host call that fails.
namespace ZelvanePlugin {

// A generic attribute accepting meshes, curves, double and vector arrays and graph objects.
// An output port also gets a place to be seen: the first host node among `inputsByPath`
// that has an "inputSurface", or else a new "zelShape" in the default shading group,
// unless the options ask for no shape.
bool addObjectPortAttribute(const KObject& node, const Orsel::String& portName,
                            ZelvaneGraph::Executor::PortDirection direction,
                            const Orsel::Type& type,
                            const ZelvaneBoardInputByPath::Options& options,
                            const std::vector<KObject>& inputsByPath);
bool addTransformsPortAttribute(const KObject& node, const Orsel::String& portName);
bool addSceneInfoPortAttribute(const KObject& node, const Orsel::String& portName);
bool addTimePortAttribute(const KObject& node, const Orsel::String& portName,
                          ZelvaneGraph::Executor::PortDirection direction);

} // namespace ZelvanePlugin
