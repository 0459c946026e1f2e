#include <orsel/Type.h>

namespace Orsel {

struct Type::Node {
    String name;
    TypeKind kind;
    Type element;
};

Type::Type() noexcept = default;

Type::Type(std::shared_ptr<const Node> node) noexcept : node_(std::move(node)) {}

Type Type::named(const String& name, TypeKind kind) {
    if (name.empty() || kind == TypeKind::Invalid || kind == TypeKind::Array) {
        return {};
    }
    return Type(std::make_shared<const Node>(Node{name, kind, Type()}));
}

Type Type::arrayOf(const Type& element) {
    if (!element.isValid()) {
        return {};
    }
    return Type(std::make_shared<const Node>(
        Node{"array<" + element.fullyQualifiedName() + ">", TypeKind::Array, element}));
}

Type Type::builtin(TypeKind kind) {
    switch (kind) {
    case TypeKind::Bool:
        return named(String::literal("bool"), kind);
    case TypeKind::Int32:
        return named(String::literal("int32"), kind);
    case TypeKind::UInt32:
        return named(String::literal("uint32"), kind);
    case TypeKind::Int64:
        return named(String::literal("int64"), kind);
    case TypeKind::Float:
        return named(String::literal("float"), kind);
    case TypeKind::Double:
        return named(String::literal("double"), kind);
    case TypeKind::String:
        return named(String::literal("string"), kind);
    case TypeKind::Float2:
        return named(String::literal("float2"), kind);
    case TypeKind::Float3:
        return named(String::literal("float3"), kind);
    case TypeKind::Float4:
        return named(String::literal("float4"), kind);
    case TypeKind::Float4x4:
        return named(String::literal("float4x4"), kind);
    default:
        return {};
    }
}

const String& Type::fullyQualifiedName() const noexcept {
    static const String empty;
    return node_ ? node_->name : empty;
}

TypeKind Type::kind() const noexcept {
    return node_ ? node_->kind : TypeKind::Invalid;
}

Type Type::elementType() const noexcept {
    return node_ ? node_->element : Type();
}

bool operator==(const Type& a, const Type& b) noexcept {
    if (a.node_ == b.node_) {
        return true;
    }
    return a.kind() == b.kind() && a.fullyQualifiedName() == b.fullyQualifiedName() &&
           a.elementType() == b.elementType();
}

} // namespace Orsel
