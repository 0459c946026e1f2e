#pragma once

#include <cstddef>
#include <orsel/Array.h>
#include <orsel/Class.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <orsel/Type.h>
#include <string_view>
#include <utility>
#include <vector>
#include <zelvane/Export.h>
#include <zelvane/PropertyValue.h>

namespace Zelvane {

/// A graph object: an ordered record of named properties, plus an optional prototype.
///
/// Properties keep the order in which their names were first set; setting a name again
/// replaces the value in place. Lookups are linear, which is the fast choice for the few
/// dozen properties objects carry.
///
/// Copying an object copies its property table and shares every string, array and sub-object
/// with the original. That is a complete copy as far as anyone can tell: shared arrays and
/// objects are immutable (they are reached only through `Orsel::Ptr`, whose pointee is
/// const), so changing the copy means setting new values on it, never writing into a shared
/// one. `Orsel::MutablePtr<Object>::fromShared` makes such a copy when an object has other
/// owners.
///
/// The prototype says what kind of object this is (see `isA`). Prototype chains cannot form
/// cycles: a prototype is shared, and an object can only be changed while uniquely owned.
class ZELVANE_API Object : public Orsel::Class {
public:
    Object();
    Object(const Object& other);
    Object(Object&& other) noexcept;
    Object& operator=(const Object& other);
    Object& operator=(Object&& other) noexcept;
    ~Object() override;

    /// Sets the property `name`; false (and nothing stored) when `name` is empty.
    bool set(const Orsel::String& name, PropertyValue value);
    /// Text is stored as `Orsel::String` (never converted to bool).
    bool set(const Orsel::String& name, const char* text) {
        return set(name, PropertyValue(Orsel::String(text)));
    }
    /// A uniquely owned object or array becomes shared by the property.
    template <class T>
    requires PropertyType<Orsel::Ptr<T>>
    bool set(const Orsel::String& name, Orsel::MutablePtr<T>&& value) {
        return set(name, PropertyValue(Orsel::Ptr<T>(std::move(value))));
    }

    /// The value of `name`, or null.
    const PropertyValue* find(std::string_view name) const noexcept;
    bool has(std::string_view name) const noexcept { return find(name) != nullptr; }
    /// The value of `name` when it holds a `T`, or null.
    template <PropertyType T>
    const T* get(std::string_view name) const noexcept {
        const PropertyValue* value = find(name);
        return value ? std::get_if<T>(value) : nullptr;
    }
    /// The array of `name` when it holds an array of `T`, or null.
    template <ArrayElement T>
    Orsel::Ptr<Orsel::Array<T>> getArray(std::string_view name) const noexcept {
        const auto* array = get<Orsel::Ptr<Orsel::Array<T>>>(name);
        return array ? *array : Orsel::Ptr<Orsel::Array<T>>();
    }
    /// The sub-object of `name`, or null.
    Orsel::Ptr<Object> getObject(std::string_view name) const noexcept;
    /// Removes `name`; false when there was no such property.
    bool remove(std::string_view name);

    std::size_t propertyCount() const noexcept { return properties_.size(); }
    /// The property names in order.
    Orsel::Array<Orsel::String> propertyNames() const;
    /// Calls `visit(const Orsel::String& name, const PropertyValue& value)` for every property
    /// in order (use `describeProperty` or `std::visit` on the value).
    template <class Visitor>
    void forEachProperty(Visitor&& visit) const {
        for (const Property& property : properties_) {
            visit(property.name, property.value);
        }
    }

    const Orsel::Ptr<Object>& prototype() const noexcept { return prototype_; }
    void setPrototype(Orsel::Ptr<Object> prototype) noexcept { prototype_ = std::move(prototype); }

    /// True when `prototype` is `object` itself or on its prototype chain (by identity).
    static bool isA(const Object& object, const Object& prototype) noexcept;

private:
    struct Property {
        Orsel::String name;
        PropertyValue value;
    };

    std::vector<Property> properties_;
    Orsel::Ptr<Object> prototype_;
};

/// A new empty object.
ZELVANE_API Orsel::MutablePtr<Object> createObject();

/// The runtime type of objects: "Object", kind `Orsel::TypeKind::Class`.
ZELVANE_API const Orsel::Type& objectType();

} // namespace Zelvane
