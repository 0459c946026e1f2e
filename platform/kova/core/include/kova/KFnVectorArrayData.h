#pragma once

#include <kova/KExport.h>
#include <kova/KFnData.h>
#include <kova/KVectorArray.h>

// Function set of vector-array data.
class KOVA_API KFnVectorArrayData : public KFnData {
public:
    KFnVectorArrayData() = default;
    explicit KFnVectorArrayData(const KObject& data, KStatus* status = nullptr);

    KFn::Type functionType() const override { return KFn::kVectorArrayData; }

    KObject create(const KVectorArray& values = KVectorArray(), KStatus* status = nullptr);
    KVectorArray array(KStatus* status = nullptr) const;
    unsigned int length() const;
    KVector operator[](unsigned int index) const;
    KStatus copyTo(KVectorArray& target) const;
    KStatus set(const KVectorArray& values);
};
