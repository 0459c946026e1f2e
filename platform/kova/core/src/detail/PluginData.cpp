#include <kova/detail/Guarded.h>
#include <kova/detail/PluginData.h>

namespace kova::detail {

namespace {

KString who(const PluginDataType& type, const char* step) {
    KString text;
    text.format("The ^1s of data type '^2s'", KString(step), KString(type.name));
    return text;
}

} // namespace

std::shared_ptr<PluginData> PluginData::create(const std::shared_ptr<PluginDataType>& type) {
    void* raw = nullptr;
    if (!type ||
        !runGuarded([&] { raw = type->creator(); }, [&] { return who(*type, "creator"); }) ||
        raw == nullptr) {
        return nullptr;
    }
    std::unique_ptr<KPxData> instance(static_cast<KPxData*>(raw));
    if (instance->typeId() != type->id) {
        return nullptr;
    }
    return std::make_shared<PluginData>(type, std::move(instance));
}

PluginData::PluginData(std::shared_ptr<PluginDataType> type, std::unique_ptr<KPxData> instance)
    : DataObject(KFn::kPluginData, KFnData::kPlugin), type_(std::move(type)),
      instance_(std::move(instance)) {
    ++type_->liveInstances;
}

PluginData::~PluginData() {
    instance_.reset();
    --type_->liveInstances;
}

std::shared_ptr<DataObject> PluginData::clone() const {
    auto copy = create(type_);
    if (copy && !runGuarded([&] { copy->instance_->copy(*instance_); },
                            [&] { return who(*type_, "copy"); })) {
        return nullptr;
    }
    return copy;
}

KString PluginData::toText() const {
    return KString(type_->name);
}

} // namespace kova::detail
