#include "detail/AttributeFactory.h"

#include <kova/KFnTypedAttribute.h>
#include <kova/detail/PluginData.h>

using kova::detail::Attribute;
using kova::detail::attributeOf;
using kova::detail::DataObject;

namespace {

std::shared_ptr<DataObject> dataEntity(const KObject& data) {
    return kova::detail::sharedEntityAs<DataObject>(data.entity());
}

} // namespace

KFnTypedAttribute::KFnTypedAttribute(const KObject& attribute, KStatus* status) {
    attach(attribute, status);
}

KObject KFnTypedAttribute::create(const KString& longName, const KString& shortName,
                                  KFnData::Type type, const KObject& defaultData, KStatus* status) {
    object_ = kova::detail::createAttribute(
        "KFnTypedAttribute::create", status, [&](KStatus& result) -> std::shared_ptr<Attribute> {
            if (!defaultData.isNull() && !dataEntity(defaultData)) {
                result = KStatus(KStatus::kInvalidParameter, "the default is not data");
                return nullptr;
            }
            return kova::detail::makeTypedAttribute(longName.str(), shortName.str(), type,
                                                    KTypeId(), dataEntity(defaultData), result);
        });
    return object_;
}

KObject KFnTypedAttribute::create(const KString& longName, const KString& shortName,
                                  const KTypeId& id, const KObject& defaultData, KStatus* status) {
    object_ = kova::detail::createAttribute(
        "KFnTypedAttribute::create", status, [&](KStatus& result) -> std::shared_ptr<Attribute> {
            const auto data = dataEntity(defaultData);
            const auto* plugin = kova::detail::entityAs<kova::detail::PluginData>(data);
            if (!defaultData.isNull() && (plugin == nullptr || plugin->typeId() != id)) {
                result = KStatus(KStatus::kInvalidParameter,
                                 "the default is not plug-in data of the attribute's type");
                return nullptr;
            }
            return kova::detail::makeTypedAttribute(longName.str(), shortName.str(),
                                                    KFnData::kPlugin, id, data, result);
        });
    return object_;
}

KFnData::Type KFnTypedAttribute::attrType() const {
    const Attribute* a = attributeOf(object_);
    return a ? a->dataType : KFnData::kInvalid;
}

KStatus KFnTypedAttribute::setDefault(const KObject& data) {
    Attribute* a = attributeOf(object_);
    if (a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    auto entity = dataEntity(data);
    if (!data.isNull() && (!entity || !a->acceptsDataObject(*entity))) {
        return KStatus(KStatus::kInvalidParameter, "the default is of another data kind");
    }
    a->defaultData = std::move(entity);
    return KStatus();
}

KStatus KFnTypedAttribute::getDefault(KObject& data) const {
    const Attribute* a = attributeOf(object_);
    if (a == nullptr) {
        return KStatus(KStatus::kInvalidParameter, "no attribute attached");
    }
    data = a->defaultData ? KObject(a->defaultData) : KObject();
    return KStatus();
}
