#include "detail/ArrayDataSet.h"
#include "detail/InjectedFailure.h"

#include <kova/KFnVectorArrayData.h>
#include <kova/detail/VectorArrayData.h>

using Set = kova::detail::ArrayDataSet<kova::detail::VectorArrayData>;

KFnVectorArrayData::KFnVectorArrayData(const KObject& data, KStatus* status) {
    if (!kova::detail::injectedFailure("KFnVectorArrayData::KFnVectorArrayData", status)) {
        attach(data, status);
    }
}

KObject KFnVectorArrayData::create(const KVectorArray& values, KStatus* status) {
    object_ = Set::create("KFnVectorArrayData::create", values, status);
    return object_;
}

KVectorArray KFnVectorArrayData::array(KStatus* status) const {
    return Set::array(object_, status);
}

unsigned int KFnVectorArrayData::length() const {
    const auto* data = Set::of(object_);
    return data ? data->values.length() : 0;
}

KVector KFnVectorArrayData::operator[](unsigned int index) const {
    const auto* data = Set::of(object_);
    return data && index < data->values.length() ? data->values[index] : KVector();
}

KStatus KFnVectorArrayData::copyTo(KVectorArray& target) const {
    return Set::copyTo(object_, target);
}

KStatus KFnVectorArrayData::set(const KVectorArray& values) {
    return Set::set(object_, values);
}
