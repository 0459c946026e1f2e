#pragma once

#include <cstdint>
#include <kova/KExport.h>
#include <kova/KFn.h>
#include <memory>

namespace kova::detail {

// Base of everything a KObject can refer to: nodes, attributes, data, components, plug-ins.
// Entities are always owned by shared pointers.
class KOVA_API Entity : public std::enable_shared_from_this<Entity> {
public:
    explicit Entity(KFn::Type type);
    virtual ~Entity();
    Entity(const Entity&) = delete;
    Entity& operator=(const Entity&) = delete;

    KFn::Type apiType() const { return type_; }
    // Unique among the entities of the process, never 0.
    std::uint32_t hashCode() const { return hashCode_; }
    // False once the entity has left the scene (a deleted node, a removed attribute).
    virtual bool isValid() const { return true; }

private:
    KFn::Type type_;
    std::uint32_t hashCode_;
};

// The entity behind `object` as a T, or null when it is not one.
template <class T>
T* entityAs(const std::shared_ptr<Entity>& entity) {
    return dynamic_cast<T*>(entity.get());
}

template <class T>
std::shared_ptr<T> sharedEntityAs(const std::shared_ptr<Entity>& entity) {
    return std::dynamic_pointer_cast<T>(entity);
}

} // namespace kova::detail
