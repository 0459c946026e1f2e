#pragma once

#include <kova/KExport.h>
#include <kova/KFnData.h>
#include <kova/KObject.h>
#include <kova/KString.h>
#include <kova/detail/Entity.h>
#include <memory>

namespace kova::detail {

// Base of every piece of host data that attributes hold (strings, arrays, matrices, plug-in
// data, and the geometry kinds added on top). A data object is shared between the attributes
// and handles that hold it; clone() makes an independent copy.
class KOVA_API DataObject : public Entity {
public:
    DataObject(KFn::Type apiType, KFnData::Type dataType) : Entity(apiType), dataType_(dataType) {}

    KFnData::Type dataType() const { return dataType_; }
    virtual std::shared_ptr<DataObject> clone() const = 0;
    // A short text of the value, as `getAttr` prints it.
    virtual KString toText() const = 0;

private:
    KFnData::Type dataType_;
};

// The data object behind `object`, or null.
inline DataObject* dataOf(const KObject& object) {
    return entityAs<DataObject>(object.entity());
}

} // namespace kova::detail
