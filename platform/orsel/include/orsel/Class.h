#pragma once

#include <orsel/Export.h>

namespace Orsel {

/// Base of the runtime's class instances (the values of kind `TypeKind::Class`), which travel
/// as `Orsel::Ptr<Class>` and are recovered with `Orsel::dynamicPtrCast`.
class ORSEL_API Class {
public:
    virtual ~Class() = 0;

protected:
    Class() = default;
    Class(const Class&) = default;
    Class& operator=(const Class&) = default;
};

} // namespace Orsel
