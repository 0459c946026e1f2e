#include <kova/KFn.h>

KFn::Type KFn::parentType(Type type) {
    switch (type) {
    case kNamedObject:
    case kAttribute:
    case kData:
    case kComponent:
    case kPlugin:
        return kBase;
    case kDependencyNode:
        return kNamedObject;
    case kTime:
    case kPluginDependNode:
    case kShaderNode:
    case kDagNode:
    case kSet:
        return kDependencyNode;
    case kLambert:
        return kShaderNode;
    case kTransform:
    case kShape:
        return kDagNode;
    case kPluginTransformNode:
        return kTransform;
    case kSurface:
    case kCurve:
    case kPluginShape:
    case kPluginLocatorNode:
        return kShape;
    case kMesh:
    case kDisplayShape:
        return kSurface;
    case kNurbsCurve:
        return kCurve;
    case kNumericAttribute:
    case kTypedAttribute:
    case kGenericAttribute:
    case kCompoundAttribute:
    case kMatrixAttribute:
    case kMessageAttribute:
    case kUnitAttribute:
        return kAttribute;
    case kFloatMatrixAttribute:
        return kMatrixAttribute;
    case kTimeAttribute:
    case kDistanceAttribute:
    case kAngleAttribute:
        return kUnitAttribute;
    case kNumericData:
    case kStringData:
    case kMatrixData:
    case kDoubleArrayData:
    case kVectorArrayData:
    case kPluginData:
    case kGeometryData:
    case kIntArrayData:
    case kStringArrayData:
    case kPointArrayData:
    case kFloatArrayData:
    case kComponentListData:
        return kData;
    case kMeshData:
    case kNurbsCurveData:
        return kGeometryData;
    case kShadingEngine:
    case kPluginObjectSet:
        return kSet;
    case kSingleIndexedComponent:
    case kDoubleIndexedComponent:
        return kComponent;
    case kCurveCVComponent:
    case kMeshEdgeComponent:
    case kMeshPolygonComponent:
    case kMeshVertComponent:
        return kSingleIndexedComponent;
    case kMeshVtxFaceComponent:
        return kDoubleIndexedComponent;
    case kInvalid:
    case kBase:
        return kInvalid;
    }
    return kInvalid;
}

bool KFn::isA(Type type, Type ancestor) {
    if (ancestor == kInvalid) {
        return false;
    }
    for (Type t = type; t != kInvalid; t = parentType(t)) {
        if (t == ancestor) {
            return true;
        }
    }
    return false;
}

const char* KFn::typeName(Type type) {
    switch (type) {
#define KOVA_FN_NAME(kind)                                                                         \
    case k##kind:                                                                                  \
        return #kind;
        KOVA_FN_NAME(Invalid)
        KOVA_FN_NAME(Base)
        KOVA_FN_NAME(NamedObject)
        KOVA_FN_NAME(DependencyNode)
        KOVA_FN_NAME(Time)
        KOVA_FN_NAME(PluginDependNode)
        KOVA_FN_NAME(ShaderNode)
        KOVA_FN_NAME(Lambert)
        KOVA_FN_NAME(DagNode)
        KOVA_FN_NAME(Transform)
        KOVA_FN_NAME(PluginTransformNode)
        KOVA_FN_NAME(Shape)
        KOVA_FN_NAME(Surface)
        KOVA_FN_NAME(Mesh)
        KOVA_FN_NAME(Curve)
        KOVA_FN_NAME(NurbsCurve)
        KOVA_FN_NAME(PluginShape)
        KOVA_FN_NAME(PluginLocatorNode)
        KOVA_FN_NAME(DisplayShape)
        KOVA_FN_NAME(Attribute)
        KOVA_FN_NAME(NumericAttribute)
        KOVA_FN_NAME(TypedAttribute)
        KOVA_FN_NAME(GenericAttribute)
        KOVA_FN_NAME(CompoundAttribute)
        KOVA_FN_NAME(MatrixAttribute)
        KOVA_FN_NAME(FloatMatrixAttribute)
        KOVA_FN_NAME(MessageAttribute)
        KOVA_FN_NAME(UnitAttribute)
        KOVA_FN_NAME(TimeAttribute)
        KOVA_FN_NAME(DistanceAttribute)
        KOVA_FN_NAME(AngleAttribute)
        KOVA_FN_NAME(Data)
        KOVA_FN_NAME(NumericData)
        KOVA_FN_NAME(StringData)
        KOVA_FN_NAME(MatrixData)
        KOVA_FN_NAME(DoubleArrayData)
        KOVA_FN_NAME(VectorArrayData)
        KOVA_FN_NAME(PluginData)
        KOVA_FN_NAME(GeometryData)
        KOVA_FN_NAME(MeshData)
        KOVA_FN_NAME(NurbsCurveData)
        KOVA_FN_NAME(IntArrayData)
        KOVA_FN_NAME(StringArrayData)
        KOVA_FN_NAME(PointArrayData)
        KOVA_FN_NAME(FloatArrayData)
        KOVA_FN_NAME(ComponentListData)
        KOVA_FN_NAME(Set)
        KOVA_FN_NAME(ShadingEngine)
        KOVA_FN_NAME(PluginObjectSet)
        KOVA_FN_NAME(Component)
        KOVA_FN_NAME(SingleIndexedComponent)
        KOVA_FN_NAME(DoubleIndexedComponent)
        KOVA_FN_NAME(CurveCVComponent)
        KOVA_FN_NAME(MeshEdgeComponent)
        KOVA_FN_NAME(MeshPolygonComponent)
        KOVA_FN_NAME(MeshVertComponent)
        KOVA_FN_NAME(MeshVtxFaceComponent)
        KOVA_FN_NAME(Plugin)
#undef KOVA_FN_NAME
    }
    return "Invalid";
}
