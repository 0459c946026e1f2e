#include "detail/Report.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnMeshData.h>
#include <kova/detail/MeshData.h>

using kova::detail::report;

KFnMeshData::KFnMeshData(const KObject& data, KStatus* status) {
    attach(data, status);
}

KObject KFnMeshData::create(KStatus* status) {
    if (KFailureInjection::shouldFail("KFnMeshData::create")) {
        report(status, KFailureInjection::failure("KFnMeshData::create"));
        return KObject();
    }
    object_ = KObject(std::make_shared<kova::detail::MeshData>());
    report(status, KStatus());
    return object_;
}
