#pragma once

#include <kova/KExport.h>
#include <kova/KFnData.h>
#include <kova/KMatrix.h>

// Function set of matrix data.
class KOVA_API KFnMatrixData : public KFnData {
public:
    KFnMatrixData() = default;
    explicit KFnMatrixData(const KObject& data, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kMatrixData; }

    KObject create(const KMatrix& matrix = KMatrix(), KStatus* status = nullptr);
    KMatrix matrix(KStatus* status = nullptr) const;
    KStatus set(const KMatrix& matrix);
};
