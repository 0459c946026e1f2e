#pragma once

#include <memory>
#include <tbb/global_control.h>

// oneTBB comes from the system, built without ThreadSanitizer: the hand-over of a task from
// the thread that spawns it to the worker that runs it happens inside oneTBB, where the
// sanitizer cannot see it, so every parallel loop would be reported as a race on the data it
// fills. While alive, in ThreadSanitizer builds, this keeps oneTBB to the calling threads
// (no workers): the tests' own threads still run boards at once, and every exchange between
// them goes through code the sanitizer sees. Other builds keep their workers.
class ThreadingForSanitizers {
public:
    ThreadingForSanitizers() {
#if defined(__SANITIZE_THREAD__)
        limit_ =
            std::make_unique<tbb::global_control>(tbb::global_control::max_allowed_parallelism, 1);
#endif
    }

private:
    std::unique_ptr<tbb::global_control> limit_;
};
