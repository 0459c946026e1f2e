#include <mutex>
#include <orsel/Library.h>
#include <shared_mutex>
#include <unordered_map>

namespace Orsel {

namespace {

// Lets the name indexes be searched with a string_view, without building a String.
struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const noexcept {
        return std::hash<std::string_view>{}(name);
    }
};

// Types by name. Map nodes never move, so pointers to the types stay valid.
using TypeMap = std::unordered_map<String, Type, NameHash, std::equal_to<>>;

} // namespace

struct Library::Impl {
    mutable std::shared_mutex mutex;
    Array<const Type*> ordered;
    TypeMap registered;
    // Array types made on lookup, kept so that their pointers stay valid too.
    mutable TypeMap arrays;
};

Library::Library() : impl_(std::make_unique<Impl>()) {}

Library::~Library() = default;

bool Library::registerType(const Type& type) {
    if (!type.isValid() || type.isArray()) {
        return false;
    }
    std::unique_lock lock(impl_->mutex);
    const auto [it, added] = impl_->registered.try_emplace(type.fullyQualifiedName(), type);
    if (!added) {
        return it->second == type;
    }
    impl_->ordered.push_back(&it->second);
    return true;
}

const Type* Library::findType(std::string_view name) const {
    {
        std::shared_lock lock(impl_->mutex);
        if (const auto it = impl_->registered.find(name); it != impl_->registered.end()) {
            return &it->second;
        }
        if (const auto it = impl_->arrays.find(name); it != impl_->arrays.end()) {
            return &it->second;
        }
    }
    // Peel "array<...>" layers off (iteratively, and only so deep: names may come from files,
    // and each layer makes a longer name), then build the array types up from the element.
    constexpr std::string_view open = "array<";
    constexpr std::size_t maxDepth = 64;
    std::size_t depth = 0;
    while (name.starts_with(open) && name.ends_with('>')) {
        if (++depth > maxDepth) {
            return nullptr;
        }
        name = name.substr(open.size(), name.size() - open.size() - 1);
    }
    if (depth == 0) {
        return nullptr;
    }
    std::unique_lock lock(impl_->mutex);
    const auto element = impl_->registered.find(name);
    if (element == impl_->registered.end()) {
        return nullptr;
    }
    const Type* type = &element->second;
    for (; depth > 0; --depth) {
        const Type array = Type::arrayOf(*type);
        type = &impl_->arrays.try_emplace(array.fullyQualifiedName(), array).first->second;
    }
    return type;
}

std::size_t Library::size() const {
    std::shared_lock lock(impl_->mutex);
    return impl_->ordered.size();
}

Array<Type> Library::types() const {
    std::shared_lock lock(impl_->mutex);
    Array<Type> types;
    types.reserve(impl_->ordered.size());
    for (const Type* type : impl_->ordered) {
        types.push_back(*type);
    }
    return types;
}

} // namespace Orsel
