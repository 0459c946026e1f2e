#pragma once

#include <atomic>
#include <orsel/Export.h>

namespace Orsel {

/// True when the job running on the calling thread has been cancelled: when the flag of any
/// `JobCancellationScope` open on this thread is set. Cheap enough to poll in loops; false on
/// a thread without a scope.
ORSEL_API bool isJobCancelled() noexcept;

/// Binds a cancellation flag to the calling thread for the scope's lifetime, so that work
/// running inside it can notice cancellation through `isJobCancelled`.
///
/// Scopes nest: an inner job belongs to the outer one, so setting either flag cancels the
/// code inside the inner scope. The flag is owned by the caller and must outlive the scope;
/// any thread may set it. A scope must end on the thread that opened it (it is not movable).
/// Executors that hand work to other threads open a scope with the job's flag in each task.
class ORSEL_API JobCancellationScope {
public:
    explicit JobCancellationScope(const std::atomic<bool>& cancelled) noexcept;
    ~JobCancellationScope();
    JobCancellationScope(const JobCancellationScope&) = delete;
    JobCancellationScope& operator=(const JobCancellationScope&) = delete;

private:
    friend bool isJobCancelled() noexcept;

    const std::atomic<bool>* cancelled_;
    const JobCancellationScope* outer_;
};

} // namespace Orsel
