#pragma once

#include <concepts>
#include <memory>
#include <orsel/Array.h>
#include <orsel/Class.h>
#include <orsel/Export.h>
#include <orsel/Ptr.h>
#include <orsel/Type.h>
#include <typeinfo>
#include <utility>
#include <variant>

namespace Orsel {

/// A typed graph value: a runtime `Type` plus a payload, which is one of
/// - a shared class instance (`Ptr<Class>`, possibly null), e.g. an "Object";
/// - a shared array of class instances, e.g. an "array<Object>";
/// - a plain record or scalar of any copyable C++ type (`make<T>` / `get<T>`), e.g. the
///   "Simulation::Time" record.
/// The type is the caller's description of the payload; it is not checked against it.
/// Copies share the payload, which is never changed after construction.
class ORSEL_API Value {
public:
    /// The empty value: invalid type, no payload.
    Value() noexcept;

    static Value fromClass(Type type, Ptr<Class> object);
    template <std::derived_from<Class> T>
    static Value fromClass(Type type, Ptr<T> object) {
        return fromClass(std::move(type), Ptr<Class>(std::move(object)));
    }
    /// The value takes over (and shares) a uniquely owned object.
    template <std::derived_from<Class> T>
    static Value fromClass(Type type, MutablePtr<T>&& object) {
        return fromClass(std::move(type), Ptr<Class>(std::move(object)));
    }

    static Value fromOpaqueArray(Type type, Ptr<Array<Ptr<Class>>> objects);
    /// Converts the element pointers (the objects themselves are shared, not copied).
    template <std::derived_from<Class> T>
    requires(!std::same_as<T, Class>) static Value
        fromOpaqueArray(Type type, Ptr<Array<Ptr<T>>> objects) {
        if (!objects) {
            return fromOpaqueArray(std::move(type), Ptr<Array<Ptr<Class>>>());
        }
        auto converted = Orsel::make<Array<Ptr<Class>>>();
        converted->reserve(objects->size());
        for (const Ptr<T>& object : *objects) {
            converted->push_back(object);
        }
        return fromOpaqueArray(std::move(type), Ptr<Array<Ptr<Class>>>(std::move(converted)));
    }
    template <std::derived_from<Class> T>
    static Value fromOpaqueArray(Type type, MutablePtr<Array<Ptr<T>>>&& objects) {
        return fromOpaqueArray(std::move(type), Ptr<Array<Ptr<T>>>(std::move(objects)));
    }

    /// A record or scalar payload holding a copy of `value`.
    template <std::copy_constructible T>
    static Value make(Type type, T value) {
        Value result;
        result.type_ = std::move(type);
        result.payload_ = Record{std::make_shared<const T>(std::move(value)), &typeid(T)};
        return result;
    }

    const Type& type() const noexcept { return type_; }
    /// True only for a value without any payload (a default-constructed one).
    bool empty() const noexcept { return std::holds_alternative<std::monostate>(payload_); }

    /// The class instance; null when the payload is not one (or is a null one).
    Ptr<Class> getOrselClass() const noexcept;
    template <std::derived_from<Class> T>
    Ptr<T> getOrselClass() const noexcept {
        return dynamicPtrCast<T>(getOrselClass());
    }
    /// The array of class instances; null when the payload is not one.
    Ptr<Array<Ptr<Class>>> getOpaqueArray() const noexcept;
    /// The record made by `make<T>`; null when the payload is not a `T`.
    template <class T>
    const T* get() const noexcept {
        const Record* record = std::get_if<Record>(&payload_);
        // type_info equality compares names, so this works across shared libraries.
        if (record && *record->type == typeid(T)) {
            return static_cast<const T*>(record->data.get());
        }
        return nullptr;
    }

private:
    struct Record {
        std::shared_ptr<const void> data;
        const std::type_info* type;
    };

    Type type_;
    std::variant<std::monostate, Ptr<Class>, Ptr<Array<Ptr<Class>>>, Record> payload_;
};

} // namespace Orsel
