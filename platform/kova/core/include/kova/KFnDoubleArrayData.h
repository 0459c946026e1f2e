#pragma once

#include <kova/KDoubleArray.h>
#include <kova/KExport.h>
#include <kova/KFnData.h>

// Function set of double-array data.
class KOVA_API KFnDoubleArrayData : public KFnData {
public:
    KFnDoubleArrayData() = default;
    explicit KFnDoubleArrayData(const KObject& data, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kDoubleArrayData; }

    // A new data object holding a copy of `values`.
    KObject create(const KDoubleArray& values = KDoubleArray(), KStatus* status = nullptr);
    // The values held (a copy).
    KDoubleArray array(KStatus* status = nullptr) const;
    unsigned int length() const;
    double operator[](unsigned int index) const;
    KStatus copyTo(KDoubleArray& target) const;
    KStatus set(const KDoubleArray& values);
};
