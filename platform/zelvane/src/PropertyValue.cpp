#include <zelvane/Object.h>
#include <zelvane/PropertyValue.h>

namespace Zelvane {

namespace {

// The runtime type of a value held directly (not through an array).
template <class T>
Orsel::Type typeOf() {
    using Orsel::TypeKind;
    if constexpr (std::is_same_v<T, bool>) {
        return Orsel::Type::builtin(TypeKind::Bool);
    } else if constexpr (std::is_same_v<T, std::int32_t>) {
        return Orsel::Type::builtin(TypeKind::Int32);
    } else if constexpr (std::is_same_v<T, std::uint32_t>) {
        return Orsel::Type::builtin(TypeKind::UInt32);
    } else if constexpr (std::is_same_v<T, std::int64_t>) {
        return Orsel::Type::builtin(TypeKind::Int64);
    } else if constexpr (std::is_same_v<T, float>) {
        return Orsel::Type::builtin(TypeKind::Float);
    } else if constexpr (std::is_same_v<T, double>) {
        return Orsel::Type::builtin(TypeKind::Double);
    } else if constexpr (std::is_same_v<T, Orsel::String>) {
        return Orsel::Type::builtin(TypeKind::String);
    } else if constexpr (std::is_same_v<T, Math::float2>) {
        return Orsel::Type::builtin(TypeKind::Float2);
    } else if constexpr (std::is_same_v<T, Math::float3>) {
        return Orsel::Type::builtin(TypeKind::Float3);
    } else if constexpr (std::is_same_v<T, Math::float4>) {
        return Orsel::Type::builtin(TypeKind::Float4);
    } else if constexpr (std::is_same_v<T, Math::float4x4>) {
        return Orsel::Type::builtin(TypeKind::Float4x4);
    } else {
        static_assert(std::is_same_v<T, Orsel::Ptr<Object>>);
        return objectType();
    }
}

template <class T>
struct Describe {
    static PropertyInfo of(const T&) { return {typeOf<T>(), 1}; }
};

template <>
struct Describe<Orsel::Ptr<Object>> {
    static PropertyInfo of(const Orsel::Ptr<Object>& object) {
        return {objectType(), object ? 1u : 0u};
    }
};

template <class E>
struct Describe<Orsel::Ptr<Orsel::Array<E>>> {
    static PropertyInfo of(const Orsel::Ptr<Orsel::Array<E>>& array) {
        return {Orsel::Type::arrayOf(typeOf<E>()), array ? array->size() : 0u};
    }
};

} // namespace

PropertyInfo describeProperty(const PropertyValue& value) {
    return std::visit(
        [](const auto& held) { return Describe<std::decay_t<decltype(held)>>::of(held); }, value);
}

} // namespace Zelvane
