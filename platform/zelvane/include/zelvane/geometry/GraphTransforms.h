#pragma once

#include <orsel/Type.h>
#include <zelvane/Export.h>

namespace Zelvane::Geometry::Transform {

/// The world transform handed to a graph, type "Geometry::Transform::GraphTransforms": the 16
/// floats of a 4x4 matrix in the host's order (row-major, translation in row 3; see
/// `Zelvane::Math::float4x4`).
struct GraphTransforms {
    float matrix[16];
};

/// "Geometry::Transform::GraphTransforms", kind `Orsel::TypeKind::Record`.
ZELVANE_API const Orsel::Type& graphTransformsType();

} // namespace Zelvane::Geometry::Transform
