#pragma once

#include <memory>
#include <vector>

namespace kova::detail {
class NodeType;
}

// The host's own node types. Their type ids are 0x4B560001 and up, a block no plug-in may use.
namespace kova::builtin {

// "time": the scene time; attribute "outTime" (time).
std::shared_ptr<detail::NodeType> makeTimeType();
// "transform": a DAG transform with translate, rotate (degrees), scale and the matrices.
std::shared_ptr<detail::NodeType> makeTransformType();
// "objectSet": a set of DAG paths with optional components, no restriction.
std::shared_ptr<detail::NodeType> makeObjectSetType();
// "shadingEngine": a renderable set (restriction kRenderableOnly) with message inputs
// "surfaceShader" and "displacementShader".
std::shared_ptr<detail::NodeType> makeShadingEngineType();
// "lambert": a surface shader, classification "drawdb/shader/surface/lambert"; "outColor"
// follows "color".
std::shared_ptr<detail::NodeType> makeLambertType();
// "zelShape": a surface shape that displays what arrives at its generic "inputSurface".
std::shared_ptr<detail::NodeType> makeDisplayShapeType();

// "mesh" (src/mesh): a polygon mesh shape with "inMesh", "outMesh" and the world-space
// array "worldMesh".
std::shared_ptr<detail::NodeType> makeMeshType();
// "displacementShader" (src/mesh): classification
// "drawdb/shader/displacement/displacementShader"; "outDisplacement" is "displacement" times
// "scale".
std::shared_ptr<detail::NodeType> makeDisplacementShaderType();

// All of the above, in that order.
std::vector<std::shared_ptr<detail::NodeType>> makeBuiltInTypes();

} // namespace kova::builtin
