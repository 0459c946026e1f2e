#pragma once

#include <memory>
#include <orsel/Array.h>
#include <orsel/Export.h>
#include <orsel/Type.h>
#include <string_view>

namespace Orsel {

/// A registry of named runtime types. Thread-safe: lookups may run concurrently with each
/// other and with registrations.
class ORSEL_API Library {
public:
    Library();
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Adds `type` under its fully qualified name. True when it was added or an equal type is
    /// already there; false for an invalid type, an array type (arrays are formed on lookup)
    /// or a different type already registered under that name.
    bool registerType(const Type& type);
    /// The type of that name, or null. "array<X>" is found whenever X is (up to 64 levels of
    /// nesting). The pointer stays valid for the life of the library.
    const Type* findType(std::string_view name) const;
    /// Number of registered (non-array) types.
    std::size_t size() const;
    /// The registered types in registration order.
    Array<Type> types() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace Orsel
