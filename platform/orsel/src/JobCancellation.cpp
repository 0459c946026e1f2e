#include <orsel/JobCancellation.h>

namespace Orsel {

namespace {

thread_local const JobCancellationScope* tInnermostScope = nullptr;

} // namespace

JobCancellationScope::JobCancellationScope(const std::atomic<bool>& cancelled) noexcept
    : cancelled_(&cancelled), outer_(tInnermostScope) {
    tInnermostScope = this;
}

JobCancellationScope::~JobCancellationScope() {
    tInnermostScope = outer_;
}

bool isJobCancelled() noexcept {
    for (const JobCancellationScope* scope = tInnermostScope; scope; scope = scope->outer_) {
        if (scope->cancelled_->load(std::memory_order_acquire)) {
            return true;
        }
    }
    return false;
}

} // namespace Orsel
