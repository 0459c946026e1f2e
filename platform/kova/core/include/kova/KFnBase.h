#pragma once

#include <kova/KExport.h>
#include <kova/KFn.h>
#include <kova/KObject.h>
#include <kova/KStatus.h>

// Base of the function sets. A function set is attached to one object and works on it; each
// set accepts the objects of its own kind (functionType()) and of the kinds below it.
class KOVA_API KFnBase {
public:
    KFnBase() = default;
    virtual ~KFnBase() = default;

    // The kind this function set works on.
    virtual KFn::Type functionType() const { return KFn::kBase; }
    // True when this set can work on objects of kind `type`.
    bool hasObj(KFn::Type type) const { return KFn::isA(type, functionType()); }
    bool hasObj(const KObject& object) const {
        return !object.isNull() && hasObj(object.apiType());
    }

    // Attaches to `object`; fails with kInvalidParameter (and detaches) when the object is
    // null or of another kind.
    KStatus setObject(const KObject& object);
    KObject object() const { return object_; }

protected:
    // Attaches without checking; for constructors, which report through their status.
    KStatus attach(const KObject& object, KStatus* status);
    KObject object_;
};
