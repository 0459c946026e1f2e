#pragma once

#include <kova/KExport.h>
#include <kova/KFn.h>
#include <memory>

namespace kova::detail {
class Entity;
}

// A handle on any host entity: a node, an attribute, a piece of data, a component or a
// plug-in. Handles are cheap to copy and compare equal when they refer to the same entity.
// The entity lives at least as long as a handle refers to it; function sets (KFn...) attach
// to a handle to work on its entity.
class KOVA_API KObject {
public:
    KObject() = default;
    // Host internals: wraps an entity.
    explicit KObject(std::shared_ptr<kova::detail::Entity> entity);

    bool isNull() const { return entity_ == nullptr; }
    // The entity's kind; kInvalid for the null object.
    KFn::Type apiType() const;
    const char* apiTypeStr() const;
    // True when the entity is of kind `type` or of a kind below it.
    bool hasFn(KFn::Type type) const;

    bool operator==(const KObject& other) const { return entity_ == other.entity_; }
    bool operator!=(const KObject& other) const { return entity_ != other.entity_; }

    // Host internals: the entity behind the handle (null for the null object).
    const std::shared_ptr<kova::detail::Entity>& entity() const { return entity_; }

    static const KObject kNullObj;

private:
    std::shared_ptr<kova::detail::Entity> entity_;
};
