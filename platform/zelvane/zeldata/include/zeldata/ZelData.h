#pragma once

#include <kova/KPxData.h>
#include <kova/KTypeId.h>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <zelvane/Object.h>

#define ZELDATA_API __attribute__((visibility("default")))

// Host plug-in data that carries graph objects through host attributes, in both directions.
// The objects are shared, never copied: a graph that wants to change one makes its own copy.
class ZELDATA_API ZelData : public KPxData {
public:
    // Type id of this data type in the host (0x81120). Registered by the board library.
    static const KTypeId id;
    static constexpr const char* kTypeName = "ZelData";

    ZelData();
    ~ZelData() override;

    static void* creator();

    KTypeId typeId() const override;
    KString name() const override;
    void copy(const KPxData& other) override;

    void addZelvaneObject(Orsel::Ptr<Zelvane::Object> object);
    void clear();
    bool empty() const;
    std::size_t size() const;
    const Orsel::Array<Orsel::Ptr<Zelvane::Object>>& objects() const { return objects_; }

    // Set to 1 once the objects have been handed to a graph without copying, so that the
    // host side knows it must not change them either.
    int shared() const { return shared_; }
    void setShared(int flag) { shared_ = flag; }

private:
    Orsel::Array<Orsel::Ptr<Zelvane::Object>> objects_;
    int shared_ = 0;
};
