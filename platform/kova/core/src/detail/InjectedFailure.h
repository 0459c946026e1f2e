#pragma once

#include "detail/Report.h"

#include <kova/KFailureInjection.h>

namespace kova::detail {

// True when a test has armed the failure of `operation`; the failure is then stored in the
// optional status out-parameter.
inline bool injectedFailure(const char* operation, KStatus* status) {
    if (!KFailureInjection::shouldFail(operation)) {
        return false;
    }
    report(status, KFailureInjection::failure(operation));
    return true;
}

} // namespace kova::detail
