#pragma once

#include <kova/KStatus.h>
#include <kova/KString.h>
#include <string>

namespace kova::detail {

// Stores `value` in an optional status out-parameter and returns it.
inline KStatus report(KStatus* status, const KStatus& value) {
    if (status != nullptr) {
        *status = value;
    }
    return value;
}

// A failed status for an argument the caller got wrong.
inline KStatus invalid(const std::string& text) {
    return KStatus(KStatus::kInvalidParameter, KString(text));
}

} // namespace kova::detail
