#pragma once

#include <kova/KStatus.h>

namespace kova::detail {

// Stores `value` in an optional status out-parameter and returns it.
inline KStatus report(KStatus* status, const KStatus& value) {
    if (status != nullptr) {
        *status = value;
    }
    return value;
}

} // namespace kova::detail
