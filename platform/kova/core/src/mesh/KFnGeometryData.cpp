#include "detail/Report.h"

#include <kova/KFailureInjection.h>
#include <kova/KFnGeometryData.h>
#include <kova/detail/GeometryData.h>
#include <string>

using kova::detail::ComponentData;
using kova::detail::ComponentTags;
using kova::detail::GeometryData;
using kova::detail::invalid;
using kova::detail::report;

namespace {

// The geometry behind `object` after the failure-injection point `operation`.
GeometryData* geometry(const KObject& object, const char* operation, KStatus& status) {
    if (KFailureInjection::shouldFail(operation)) {
        status = KFailureInjection::failure(operation);
        return nullptr;
    }
    GeometryData* data = kova::detail::geometryDataOf(object);
    status = data ? KStatus() : invalid("no geometry data attached");
    return data;
}

// The tag named `name`, or null with a failed status.
const ComponentTags::Tag* tagOf(const GeometryData& data, const KString& name, KStatus& status) {
    const ComponentTags::Tag* tag = data.componentTags.find(std::string(name.view()));
    if (tag == nullptr) {
        status = invalid("no component tag '" + std::string(name.view()) + "'");
    }
    return tag;
}

} // namespace

KFnGeometryData::KFnGeometryData(const KObject& data, KStatus* status) {
    if (KFailureInjection::shouldFail("KFnGeometryData::KFnGeometryData")) {
        report(status, KFailureInjection::failure("KFnGeometryData::KFnGeometryData"));
        return;
    }
    attach(data, status);
}

KStatus KFnGeometryData::componentTags(KStringArray& names) const {
    KStatus status;
    const GeometryData* data = geometry(object_, "KFnGeometryData::componentTags", status);
    if (data != nullptr) {
        names.clear();
        for (const auto& tag : data->componentTags.tags()) {
            if (status = names.append(KString(tag.name)); !status) {
                break;
            }
        }
    }
    return status;
}

bool KFnGeometryData::hasComponentTag(const KString& name) const {
    const GeometryData* data = kova::detail::geometryDataOf(object_);
    return data != nullptr && data->componentTags.find(std::string(name.view())) != nullptr;
}

int KFnGeometryData::componentTagCategory(const KString& name, KStatus* status) const {
    KStatus result;
    const GeometryData* data = geometry(object_, "KFnGeometryData::componentTagCategory", result);
    const ComponentTags::Tag* tag = data ? tagOf(*data, name, result) : nullptr;
    report(status, result);
    return tag && tag->contents ? ComponentTags::categoryOf(tag->contents->apiType()) : 0;
}

KObject KFnGeometryData::componentTagContents(const KString& name, KStatus* status) const {
    KStatus result;
    const GeometryData* data = geometry(object_, "KFnGeometryData::componentTagContents", result);
    const ComponentTags::Tag* tag = data ? tagOf(*data, name, result) : nullptr;
    report(status, result);
    return tag && tag->contents ? KObject(tag->contents->clone()) : KObject();
}

KStatus KFnGeometryData::addComponentTag(const KString& name) {
    KStatus status;
    GeometryData* data = geometry(object_, "KFnGeometryData::addComponentTag", status);
    if (data != nullptr && !data->componentTags.add(std::string(name.view()))) {
        status = invalid("component tag name '" + std::string(name.view()) + "' is empty or taken");
    }
    return status;
}

KStatus KFnGeometryData::removeComponentTag(const KString& name) {
    KStatus status;
    GeometryData* data = geometry(object_, "KFnGeometryData::removeComponentTag", status);
    if (data != nullptr && !data->componentTags.remove(std::string(name.view()))) {
        status = invalid("no component tag '" + std::string(name.view()) + "'");
    }
    return status;
}

KStatus KFnGeometryData::setComponentTagContents(const KString& name, const KObject& component) {
    KStatus status;
    GeometryData* data = geometry(object_, "KFnGeometryData::setComponentTagContents", status);
    if (data == nullptr || tagOf(*data, name, status) == nullptr) {
        return status;
    }
    const auto* contents = kova::detail::entityAs<ComponentData>(component.entity());
    if (contents == nullptr || ComponentTags::categoryOf(contents->apiType()) == 0) {
        return invalid("tag contents must be a vertex, edge, face or CV component");
    }
    const int count = data->elementCount(contents->apiType());
    if (count >= 0) {
        const bool fits = contents->complete
                              ? contents->completeCount <= count
                              : contents->elements.empty() || contents->elements.back() < count;
        if (!fits) {
            return invalid("the component lists elements the geometry does not have");
        }
    }
    data->componentTags.setContents(std::string(name.view()), *contents);
    return KStatus();
}
