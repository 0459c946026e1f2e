#pragma once

#include <orsel/String.h>
#include <zelvane/Export.h>

/// Names of the geometry conventions: components, layout properties, geometry-property
/// members and reference keys. The texts are fixed here and nowhere else:
///
/// | Constant                    | Text              | Meaning                                   |
/// |-----------------------------|-------------------|-------------------------------------------|
/// | sPointComp                  | "point"           | component: points                         |
/// | sFaceComp                   | "face"            | component: faces                          |
/// | sFaceVertexComp             | "faceVertex"      | component: face-vertices (face corners)   |
/// | sStrandComp                 | "strand"          | component: strands                        |
/// | sElementCountSuffix         | "Count"           | component + this names its element count  |
/// | sPointPosition              | "P"               | float3 per point                          |
/// | sFaceOffset                 | "faceOffset"      | uint32, faces + 1 prefix sums             |
/// | sFaceVertex                 | "faceVertexPoint" | uint32 point index per face-vertex        |
/// | sStrandOffset               | "strandOffset"    | uint32, strands + 1 prefix sums           |
/// | sPointNormal                | "N"               | point normals                             |
/// | sFaceVertexNormal           | "faceVertexN"     | face-vertex normals (indexed)             |
/// | sFaceVertexUV               | "uv"              | UV sets: "uv", "uv1", "uv2", ... (indexed)|
/// | sPointColor                 | "color"           | point colours                             |
/// | sPointTangent               | "tangent"         | strand point tangents                     |
/// | sPointLength                | "pointLength"     | arc length at each strand point           |
/// | sStrandLength               | "strandLength"    | length of each strand                     |
/// | sPointRatio                 | "pointRatio"      | position of each point along its strand   |
/// | sTarget                     | "target"          | member: component or index property name  |
/// | sData                       | "data"            | member: the values                        |
/// | sIndices                    | "indices"         | member: the indices of an index property  |
/// | sDefault                    | "default"         | member: value of elements without data    |
/// | sIndexSuffix                | "_index"          | data name + this names its index property |
/// | sDccName                    | "dccName"         | member: the host's name of the set        |
/// | sRenderSettings             | "renderSettings"  | materials of a mesh                       |
/// | sMaterialSurface            | "surface"         | surface shader references                 |
/// | sMaterialDisplacement       | "displacement"    | displacement shader references            |
/// | sMaterialReferenceID        | "materialId"      | host shader node name                     |
/// | sOperatorReferenceID        | "operatorId"      | host operator node name                   |
/// | sComponentTagPrefix_point   | "pointTag("       | point tags are named "pointTag(<tag>)"    |
/// | sComponentTagPrefix_face    | "faceTag("        | face tags are named "faceTag(<tag>)"      |
/// | sComponentTagSuffix         | ")"               |                                           |
/// | sPrototypeName              | "prototypeName"   | "mesh" / "strand" on the prototypes       |
///
/// The constants are constant-initialised (`constinit`, no allocation), so they may be used
/// from any library's static initialisers.
namespace Zelvane::Geometry {

extern ZELVANE_API const Orsel::String sPointComp;
extern ZELVANE_API const Orsel::String sFaceComp;
extern ZELVANE_API const Orsel::String sFaceVertexComp;
extern ZELVANE_API const Orsel::String sStrandComp;
extern ZELVANE_API const Orsel::String sElementCountSuffix;

extern ZELVANE_API const Orsel::String sPointPosition;
extern ZELVANE_API const Orsel::String sFaceOffset;
extern ZELVANE_API const Orsel::String sFaceVertex;
extern ZELVANE_API const Orsel::String sStrandOffset;

extern ZELVANE_API const Orsel::String sPointNormal;
extern ZELVANE_API const Orsel::String sFaceVertexNormal;
extern ZELVANE_API const Orsel::String sFaceVertexUV;
extern ZELVANE_API const Orsel::String sPointColor;
extern ZELVANE_API const Orsel::String sPointTangent;
extern ZELVANE_API const Orsel::String sPointLength;
extern ZELVANE_API const Orsel::String sStrandLength;
extern ZELVANE_API const Orsel::String sPointRatio;

extern ZELVANE_API const Orsel::String sTarget;
extern ZELVANE_API const Orsel::String sData;
extern ZELVANE_API const Orsel::String sIndices;
extern ZELVANE_API const Orsel::String sDefault;
extern ZELVANE_API const Orsel::String sIndexSuffix;
extern ZELVANE_API const Orsel::String sDccName;

extern ZELVANE_API const Orsel::String sRenderSettings;
extern ZELVANE_API const Orsel::String sMaterialSurface;
extern ZELVANE_API const Orsel::String sMaterialDisplacement;
extern ZELVANE_API const Orsel::String sMaterialReferenceID;
extern ZELVANE_API const Orsel::String sOperatorReferenceID;

extern ZELVANE_API const Orsel::String sComponentTagPrefix_point;
extern ZELVANE_API const Orsel::String sComponentTagPrefix_face;
extern ZELVANE_API const Orsel::String sComponentTagSuffix;

extern ZELVANE_API const Orsel::String sPrototypeName;

} // namespace Zelvane::Geometry
