#pragma once

#include <atomic>
#include <kova/KPxData.h>
#include <kova/detail/DataObject.h>
#include <memory>
#include <string>

namespace kova::detail {

// A registered plug-in data type.
struct KOVA_API PluginDataType {
    std::string name;
    KTypeId id;
    void* (*creator)() = nullptr;
    // Instances alive now; the type cannot be deregistered while any exists.
    std::atomic<int> liveInstances{0};
};

// Host data holding one instance of a plug-in data type.
class KOVA_API PluginData : public DataObject {
public:
    // Runs the type's creator; returns null when it fails, throws, or makes an instance of
    // another type.
    static std::shared_ptr<PluginData> create(const std::shared_ptr<PluginDataType>& type);

    PluginData(std::shared_ptr<PluginDataType> type, std::unique_ptr<KPxData> instance);
    ~PluginData() override;

    KPxData* instance() const { return instance_.get(); }
    KTypeId typeId() const { return type_->id; }
    const PluginDataType& type() const { return *type_; }

    // A new instance filled by KPxData::copy; null when the copy fails.
    std::shared_ptr<DataObject> clone() const override;
    KString toText() const override;

private:
    std::shared_ptr<PluginDataType> type_;
    std::unique_ptr<KPxData> instance_;
};

} // namespace kova::detail
