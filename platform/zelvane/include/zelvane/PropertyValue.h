#pragma once

#include <cstddef>
#include <cstdint>
#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <orsel/Type.h>
#include <type_traits>
#include <variant>
#include <zelvane/Export.h>
#include <zelvane/math/Matrix.h>
#include <zelvane/math/Vector.h>

namespace Zelvane {

class Object;

/// What an object property may hold: a scalar, a string, a small vector or matrix, a nested
/// object, or a shared array of one of the graph element types. Objects and arrays are held
/// by shared pointer and never changed once shared.
using PropertyValue =
    std::variant<bool, std::int32_t, std::uint32_t, std::int64_t, float, double, Orsel::String,
                 Math::float2, Math::float3, Math::float4, Math::float4x4, Orsel::Ptr<Object>,
                 Orsel::Ptr<Orsel::Array<bool>>, Orsel::Ptr<Orsel::Array<std::int32_t>>,
                 Orsel::Ptr<Orsel::Array<std::uint32_t>>, Orsel::Ptr<Orsel::Array<float>>,
                 Orsel::Ptr<Orsel::Array<double>>, Orsel::Ptr<Orsel::Array<Math::float2>>,
                 Orsel::Ptr<Orsel::Array<Math::float3>>, Orsel::Ptr<Orsel::Array<Math::float4>>,
                 Orsel::Ptr<Orsel::Array<Orsel::String>>,
                 Orsel::Ptr<Orsel::Array<Orsel::Ptr<Object>>>>;

namespace detail {
template <class T, class Variant>
struct IsAlternative;
template <class T, class... Alternatives>
struct IsAlternative<T, std::variant<Alternatives...>>
    : std::bool_constant<(std::is_same_v<T, Alternatives> || ...)> {};
} // namespace detail

/// A type that a property holds as it is.
template <class T>
concept PropertyType = detail::IsAlternative<T, PropertyValue>::value;

/// An element type of the arrays a property may hold.
template <class T>
concept ArrayElement = PropertyType<Orsel::Ptr<Orsel::Array<T>>>;

/// A description of a property value, for inspectors and dumps.
struct PropertyInfo {
    /// The runtime type: a builtin scalar type, "Object", or "array<...>" of one of them.
    Orsel::Type type;
    /// Number of elements: the array's size (0 for a null array), 0 for a null object, 1
    /// otherwise.
    std::size_t size;
};

ZELVANE_API PropertyInfo describeProperty(const PropertyValue& value);

} // namespace Zelvane
