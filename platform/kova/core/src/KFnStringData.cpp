#include "detail/Report.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnStringData.h>
#include <kova/detail/StringData.h>

using kova::detail::report;
using kova::detail::StringData;

KFnStringData::KFnStringData(const KObject& data, KStatus* status) {
    attach(data, status);
}

KObject KFnStringData::create(const KString& text, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnStringData::create")) {
        report(status, KFailureInjection::failure("KFnStringData::create"));
        return KObject();
    }
    report(status, KStatus());
    object_ = KObject(std::make_shared<StringData>(text));
    return object_;
}

KString KFnStringData::string(KStatus* status) const {
    const auto* data = kova::detail::entityAs<StringData>(object_.entity());
    report(status,
           data ? KStatus() : KStatus(KStatus::kInvalidParameter, "no string data attached"));
    return data ? data->text : KString();
}

KStatus KFnStringData::set(const KString& text) {
    auto* data = kova::detail::entityAs<StringData>(object_.entity());
    if (data == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no string data attached");
    }
    data->text = text;
    return KStatus();
}
