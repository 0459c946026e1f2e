#include <kova/KFnData.h>
#include <kova/detail/DataObject.h>

KFnData::KFnData(const KObject& object, KStatus* status) {
    attach(object, status);
}

KFnData::Type KFnData::dataType() const {
    const auto* data = kova::detail::dataOf(object_);
    return data ? data->dataType() : kInvalid;
}
