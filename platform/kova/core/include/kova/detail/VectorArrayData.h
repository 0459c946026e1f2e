#pragma once

#include <kova/KVectorArray.h>
#include <kova/detail/DataObject.h>

namespace kova::detail {

// An array of double-precision vectors.
class KOVA_API VectorArrayData : public DataObject {
public:
    explicit VectorArrayData(KVectorArray values = KVectorArray())
        : DataObject(KFn::kVectorArrayData, KFnData::kVectorArray), values(std::move(values)) {}
    std::shared_ptr<DataObject> clone() const override {
        return std::make_shared<VectorArrayData>(values);
    }
    KString toText() const override;

    KVectorArray values;
};

} // namespace kova::detail
