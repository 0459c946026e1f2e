#pragma once

#include "detail/Report.h"

#include <kova/KFailureInjection.h>
#include <kova/KObject.h>
#include <kova/KString.h>
#include <kova/detail/Entity.h>
#include <memory>

namespace kova::detail {

// The shared body of the array-data function sets (double arrays, vector arrays): `Data` is
// the data class, holding its values in `values`.
template <class Data>
struct ArrayDataSet {
    using Array = decltype(Data::values);

    static KObject create(const char* operation, const Array& values, KStatus* status) {
        if (KFailureInjection::shouldFail(operation)) {
            report(status, KFailureInjection::failure(operation));
            return KObject();
        }
        auto data = std::make_shared<Data>();
        KStatus result = data->values.copy(values);
        report(status, result);
        return result ? KObject(data) : KObject();
    }

    static Data* of(const KObject& object) { return entityAs<Data>(object.entity()); }

    static Array array(const KObject& object, KStatus* status) {
        const Data* data = of(object);
        report(status, data ? KStatus() : noData());
        return data ? data->values : Array();
    }

    static KStatus copyTo(const KObject& object, Array& target) {
        const Data* data = of(object);
        return data ? target.copy(data->values) : noData();
    }

    static KStatus set(const KObject& object, const Array& values) {
        Data* data = of(object);
        return data ? data->values.copy(values) : noData();
    }

    static KStatus noData() {
        return KStatus(KStatus::kInvalidParameter, "no array data attached");
    }
};

} // namespace kova::detail
