#pragma once

#include <kova/KDoubleArray.h>
#include <kova/detail/DataObject.h>

namespace kova::detail {

// An array of doubles.
class KOVA_API DoubleArrayData : public DataObject {
public:
    explicit DoubleArrayData(KDoubleArray values = KDoubleArray())
        : DataObject(KFn::kDoubleArrayData, KFnData::kDoubleArray), values(std::move(values)) {}
    std::shared_ptr<DataObject> clone() const override {
        return std::make_shared<DoubleArrayData>(values);
    }
    KString toText() const override;

    KDoubleArray values;
};

} // namespace kova::detail
