#include <zelvane/geometry/Names.h>

namespace Zelvane::Geometry {

using Orsel::String;

constinit const String sPointComp = String::literal("point");
constinit const String sFaceComp = String::literal("face");
constinit const String sFaceVertexComp = String::literal("faceVertex");
constinit const String sStrandComp = String::literal("strand");
constinit const String sElementCountSuffix = String::literal("Count");

constinit const String sPointPosition = String::literal("P");
constinit const String sFaceOffset = String::literal("faceOffset");
constinit const String sFaceVertex = String::literal("faceVertexPoint");
constinit const String sStrandOffset = String::literal("strandOffset");

constinit const String sPointNormal = String::literal("N");
constinit const String sFaceVertexNormal = String::literal("faceVertexN");
constinit const String sFaceVertexUV = String::literal("uv");
constinit const String sPointColor = String::literal("color");
constinit const String sPointTangent = String::literal("tangent");
constinit const String sPointLength = String::literal("pointLength");
constinit const String sStrandLength = String::literal("strandLength");
constinit const String sPointRatio = String::literal("pointRatio");

constinit const String sTarget = String::literal("target");
constinit const String sData = String::literal("data");
constinit const String sIndices = String::literal("indices");
constinit const String sDefault = String::literal("default");
constinit const String sIndexSuffix = String::literal("_index");
constinit const String sDccName = String::literal("dccName");

constinit const String sRenderSettings = String::literal("renderSettings");
constinit const String sMaterialSurface = String::literal("surface");
constinit const String sMaterialDisplacement = String::literal("displacement");
constinit const String sMaterialReferenceID = String::literal("materialId");
constinit const String sOperatorReferenceID = String::literal("operatorId");

constinit const String sComponentTagPrefix_point = String::literal("pointTag(");
constinit const String sComponentTagPrefix_face = String::literal("faceTag(");
constinit const String sComponentTagSuffix = String::literal(")");

constinit const String sPrototypeName = String::literal("prototypeName");

} // namespace Zelvane::Geometry
