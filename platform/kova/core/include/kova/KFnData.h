#pragma once

#include <kova/KExport.h>
#include <kova/KFnBase.h>

// Function set of host data objects, and the data kinds.
class KOVA_API KFnData : public KFnBase {
public:
    // Data kinds. The values of kInvalid, kDoubleArray, kVectorArray, kMesh and kNurbsCurve
    // are fixed by the host API; the others are this host's.
    enum Type {
        kInvalid = 0,
        kNumeric = 1,
        kPlugin = 2,
        kPluginGeometry = 3,
        kString = 4,
        kMatrix = 5,
        kStringArray = 6,
        kDoubleArray = 7,
        kFloatArray = 8,
        kIntArray = 9,
        kPointArray = 10,
        kVectorArray = 11,
        kMatrixArray = 12,
        kComponentList = 13,
        kMesh = 14,
        kLattice = 15,
        kNurbsCurve = 16,
        kNurbsSurface = 17,
        kAny = 24,
    };

    KFnData() = default;
    explicit KFnData(const KObject& object, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kData; }
    // The kind of the attached data; kInvalid when nothing is attached.
    Type dataType() const;
};
