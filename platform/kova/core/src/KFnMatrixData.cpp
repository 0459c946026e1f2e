#include "detail/Report.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnMatrixData.h>
#include <kova/detail/MatrixData.h>

using kova::detail::MatrixData;
using kova::detail::report;

KFnMatrixData::KFnMatrixData(const KObject& data, KStatus* status) {
    attach(data, status);
}

KObject KFnMatrixData::create(const KMatrix& matrix, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnMatrixData::create")) {
        report(status, KFailureInjection::failure("KFnMatrixData::create"));
        return KObject();
    }
    report(status, KStatus());
    object_ = KObject(std::make_shared<MatrixData>(matrix));
    return object_;
}

KMatrix KFnMatrixData::matrix(KStatus* status) const {
    const auto* data = kova::detail::entityAs<MatrixData>(object_.entity());
    report(status,
           data ? KStatus() : KStatus(KStatus::kInvalidParameter, "no matrix data attached"));
    return data ? data->matrix : KMatrix();
}

KStatus KFnMatrixData::set(const KMatrix& matrix) {
    auto* data = kova::detail::entityAs<MatrixData>(object_.entity());
    if (data == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no matrix data attached");
    }
    data->matrix = matrix;
    return KStatus();
}
