#pragma once

#include <kova/KExport.h>
#include <kova/KFnGeometryData.h>

// Function set of NURBS curve data (KFn::kNurbsCurveData, data kind KFnData::kNurbsCurve).
// The curve itself is made and read with KFnNurbsCurve, attached to the data; component tags
// on its CVs (KFn::kCurveCVComponent, category 2) come from the geometry data function set.
class KOVA_API KFnNurbsCurveData : public KFnGeometryData {
public:
    KFnNurbsCurveData() = default;
    explicit KFnNurbsCurveData(const KObject& data, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kNurbsCurveData; }

    // New curve data holding no curve yet, to be filled by KFnNurbsCurve::create with the data
    // as owner. The function set attaches to it.
    KObject create(KStatus* status = nullptr);
};
