#include "detail/ArrayDataSet.h"
#include "detail/InjectedFailure.h"

#include <kova/KFnDoubleArrayData.h>
#include <kova/detail/DoubleArrayData.h>

using Set = kova::detail::ArrayDataSet<kova::detail::DoubleArrayData>;

KFnDoubleArrayData::KFnDoubleArrayData(const KObject& data, KStatus* status) {
    if (!kova::detail::injectedFailure("KFnDoubleArrayData::KFnDoubleArrayData", status)) {
        attach(data, status);
    }
}

KObject KFnDoubleArrayData::create(const KDoubleArray& values, KStatus* status) {
    object_ = Set::create("KFnDoubleArrayData::create", values, status);
    return object_;
}

KDoubleArray KFnDoubleArrayData::array(KStatus* status) const {
    return Set::array(object_, status);
}

unsigned int KFnDoubleArrayData::length() const {
    const auto* data = Set::of(object_);
    return data ? data->values.length() : 0;
}

double KFnDoubleArrayData::operator[](unsigned int index) const {
    const auto* data = Set::of(object_);
    return data && index < data->values.length() ? data->values[index] : 0.0;
}

KStatus KFnDoubleArrayData::copyTo(KDoubleArray& target) const {
    return Set::copyTo(object_, target);
}

KStatus KFnDoubleArrayData::set(const KDoubleArray& values) {
    return Set::set(object_, values);
}
