#pragma once

#include <kova/detail/DataObject.h>

namespace kova::detail {

// A text value.
class KOVA_API StringData : public DataObject {
public:
    explicit StringData(KString text = KString())
        : DataObject(KFn::kStringData, KFnData::kString), text(std::move(text)) {}
    std::shared_ptr<DataObject> clone() const override {
        return std::make_shared<StringData>(text);
    }
    KString toText() const override { return text; }

    KString text;
};

} // namespace kova::detail
