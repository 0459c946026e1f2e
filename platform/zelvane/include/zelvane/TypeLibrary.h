#pragma once

#include <orsel/Library.h>
#include <zelvane/Export.h>

namespace Zelvane {

/// The runtime's process-wide type library. It starts out knowing "Object", the records
/// "Simulation::Time", "Geometry::Transform::GraphTransforms" and "File::Project::SceneInfo",
/// and the builtin scalar types of `Orsel::Type::builtin` ("bool", "int32", "uint32", "int64",
/// "float", "double", "string", "float2", "float3", "float4", "float4x4"). Array types of
/// all of them are found by name ("array<Object>"). More types may be registered.
ZELVANE_API Orsel::Library& typeLibrary();

} // namespace Zelvane
