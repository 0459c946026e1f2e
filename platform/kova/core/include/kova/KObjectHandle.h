#pragma once

#include <cstdint>
#include <kova/KExport.h>
#include <kova/KObject.h>
#include <memory>

// A weak handle on a host entity: it does not keep the entity alive and can tell whether the
// entity still exists (isAlive) and is still part of the scene (isValid; a deleted node is
// alive while some KObject still refers to it, but no longer valid).
class KOVA_API KObjectHandle {
public:
    KObjectHandle() = default;
    KObjectHandle(const KObject& object);

    // A 32-bit code that is unique among the entities of the process and stays the same for
    // the entity's whole life; 0 for the null object.
    std::uint32_t objectHashCode() const { return hashCode_; }
    bool isAlive() const;
    bool isValid() const;
    // The entity, or the null object when it no longer exists.
    KObject object() const;

    bool operator==(const KObjectHandle& other) const { return hashCode_ == other.hashCode_; }
    bool operator!=(const KObjectHandle& other) const { return hashCode_ != other.hashCode_; }

private:
    std::weak_ptr<kova::detail::Entity> entity_;
    std::uint32_t hashCode_ = 0;
};
