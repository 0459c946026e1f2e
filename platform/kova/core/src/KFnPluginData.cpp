#include "detail/Report.h"
#include "detail/TypeRegistry.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnPluginData.h>
#include <kova/detail/PluginData.h>

using kova::detail::PluginData;
using kova::detail::report;

KFnPluginData::KFnPluginData(const KObject& data, KStatus* status) {
    attach(data, status);
}

KObject KFnPluginData::create(const KTypeId& id, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnPluginData::create")) {
        report(status, KFailureInjection::failure("KFnPluginData::create"));
        return KObject();
    }
    auto type = kova::detail::TypeRegistry::instance().findData(id);
    if (!type) {
        report(status,
               KStatus(KStatus::kInvalidParameter,
                       KString("no plug-in data type has the id " + std::to_string(id.id()))));
        return KObject();
    }
    auto data = PluginData::create(type);
    report(status, data ? KStatus()
                        : KStatus(KStatus::kFailure,
                                  KString("the creator of data type '" + type->name + "' failed")));
    object_ = data ? KObject(data) : KObject();
    return object_;
}

KPxData* KFnPluginData::data(KStatus* status) const {
    const auto* data = kova::detail::entityAs<PluginData>(object_.entity());
    report(status,
           data ? KStatus() : KStatus(KStatus::kInvalidParameter, "no plug-in data attached"));
    return data ? data->instance() : nullptr;
}

KTypeId KFnPluginData::typeId(KStatus* status) const {
    const auto* data = kova::detail::entityAs<PluginData>(object_.entity());
    report(status,
           data ? KStatus() : KStatus(KStatus::kInvalidParameter, "no plug-in data attached"));
    return data ? data->typeId() : KTypeId();
}
