#include "curve/NurbsCurveData.h"
#include "detail/Report.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnNurbsCurveData.h>

KFnNurbsCurveData::KFnNurbsCurveData(const KObject& data, KStatus* status) {
    attach(data, status);
}

KObject KFnNurbsCurveData::create(KStatus* status) {
    if (KFailureInjection::shouldFail("KFnNurbsCurveData::create")) {
        kova::detail::report(status, KFailureInjection::failure("KFnNurbsCurveData::create"));
        return KObject();
    }
    object_ = KObject(std::make_shared<kova::detail::NurbsCurveData>());
    kova::detail::report(status, KStatus());
    return object_;
}
