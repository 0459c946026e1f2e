#pragma once

#include <cstdint>
#include <orsel/Type.h>
#include <zelvane/Export.h>

namespace Zelvane::Simulation {

/// The graph's time record, type "Simulation::Time".
struct Time {
    std::int64_t ticks; ///< the time in host ticks
    double seconds;     ///< the time in seconds
    double frame;       ///< the time in the host's current time unit (normally frames)
    double frameLength; ///< seconds per frame
};

/// "Simulation::Time", kind `Orsel::TypeKind::Record`.
ZELVANE_API const Orsel::Type& timeType();

} // namespace Zelvane::Simulation
