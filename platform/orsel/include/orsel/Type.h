#pragma once

#include <cstdint>
#include <memory>
#include <orsel/Export.h>
#include <orsel/String.h>

namespace Orsel {

/// What a runtime type is made of. The values are fixed (they are stored and compared as
/// numbers by the runtime and its translation libraries).
enum class TypeKind : std::int32_t {
    Invalid = 0,   ///< no type
    Bool = 1,      ///< "bool"
    Int32 = 2,     ///< "int32"
    UInt32 = 3,    ///< "uint32"
    Int64 = 4,     ///< "int64"
    Float = 5,     ///< "float"
    Double = 6,    ///< "double"
    String = 7,    ///< "string" (Orsel::String)
    Float2 = 8,    ///< "float2"
    Float3 = 9,    ///< "float3"
    Float4 = 10,   ///< "float4"
    Float4x4 = 11, ///< "float4x4"
    Record = 12,   ///< a plain copyable struct, e.g. "Simulation::Time"
    Class = 13,    ///< a shared class instance (Orsel::Class), e.g. "Object"
    Array = 14,    ///< an array of another type, see `Type::elementType`
    Opaque = 15,   ///< a value the runtime carries without looking inside
};

/// A runtime type description: a fully qualified name, a kind and, for arrays, the element
/// type (arrays nest: an array of arrays is fine).
///
/// Array names are formed from the element's: "array<" + element name + ">", e.g.
/// "array<Object>" or "array<array<float>>". Types are immutable and cheap to copy; two
/// types are equal when kind, name and element type are equal.
class ORSEL_API Type {
public:
    /// The invalid type (kind Invalid, empty name).
    Type() noexcept;

    /// A named type of a non-array kind. An empty name, `TypeKind::Invalid` or
    /// `TypeKind::Array` (use `arrayOf`) gives the invalid type.
    static Type named(const String& name, TypeKind kind);
    /// The array type of `element`; invalid when `element` is invalid.
    static Type arrayOf(const Type& element);
    /// The canonical type of a scalar kind (Bool ... Float4x4), named as listed on `TypeKind`;
    /// the invalid type for the other kinds.
    static Type builtin(TypeKind kind);

    const String& fullyQualifiedName() const noexcept;
    TypeKind kind() const noexcept;
    bool isValid() const noexcept { return kind() != TypeKind::Invalid; }
    bool isArray() const noexcept { return kind() == TypeKind::Array; }
    /// The element type of an array type; the invalid type otherwise.
    Type elementType() const noexcept;

    friend ORSEL_API bool operator==(const Type& a, const Type& b) noexcept;

private:
    struct Node;
    explicit Type(std::shared_ptr<const Node> node) noexcept;

    std::shared_ptr<const Node> node_;
};

} // namespace Orsel
