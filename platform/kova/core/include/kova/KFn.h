#pragma once

#include <kova/KExport.h>

// Kinds of host entities. Every KObject has exactly one (its apiType()); the kinds form a
// hierarchy, and KObject::hasFn(kind) is true for the object's own kind and every kind above
// it (a shading engine is also a set, a set is also a dependency node, ...).
// Values 471 (kSet), 552 (kMeshPolygonComponent) and 554 (kMeshVertComponent) are fixed by
// the host API; the others are this host's own and must only be used by name.
class KOVA_API KFn {
public:
    enum Type {
        kInvalid = 0,
        kBase = 1,
        kNamedObject = 2,

        // Dependency nodes.
        kDependencyNode = 100,
        kTime = 101,
        kPluginDependNode = 102,
        kShaderNode = 103,
        kLambert = 104,
        kDagNode = 110,
        kTransform = 111,
        kPluginTransformNode = 112,
        kShape = 120,
        kSurface = 121,
        kMesh = 122,
        kCurve = 123,
        kNurbsCurve = 124,
        kPluginShape = 125,
        kPluginLocatorNode = 126,
        kDisplayShape = 127,

        // Attributes.
        kAttribute = 200,
        kNumericAttribute = 201,
        kTypedAttribute = 202,
        kGenericAttribute = 203,
        kCompoundAttribute = 204,
        kMatrixAttribute = 205,
        kFloatMatrixAttribute = 206,
        kMessageAttribute = 207,
        kUnitAttribute = 208,
        kTimeAttribute = 209,
        kDistanceAttribute = 210,
        kAngleAttribute = 211,

        // Data.
        kData = 300,
        kNumericData = 301,
        kStringData = 302,
        kMatrixData = 303,
        kDoubleArrayData = 304,
        kVectorArrayData = 305,
        kPluginData = 306,
        kGeometryData = 307,
        kMeshData = 308,
        kNurbsCurveData = 309,
        kIntArrayData = 310,
        kStringArrayData = 311,
        kPointArrayData = 312,
        kFloatArrayData = 313,
        kComponentListData = 314,

        // Sets (the set node kinds keep their fixed host value).
        kSet = 471,
        kShadingEngine = 472,
        kPluginObjectSet = 473,

        // Components.
        kComponent = 540,
        kSingleIndexedComponent = 541,
        kDoubleIndexedComponent = 542,
        kCurveCVComponent = 543,
        kMeshEdgeComponent = 550,
        kMeshPolygonComponent = 552,
        kMeshVertComponent = 554,
        kMeshVtxFaceComponent = 556,

        // Plug-ins.
        kPlugin = 600,
    };

    // The kind directly above `type` in the hierarchy (kInvalid for kBase and kInvalid).
    static Type parentType(Type type);
    // True when `type` is `ancestor` or lies below it.
    static bool isA(Type type, Type ancestor);
    // The kind's name as written above without the "k", e.g. "Transform"; "Invalid" if unknown.
    static const char* typeName(Type type);
};
