#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

// Ends the process with a message when work stops making progress, so that a deadlock fails
// its test instead of hanging the test run. Workers call `progress()` after every step; when
// no step completes for `stallLimit`, the watchdog prints "<what>: no progress for N s",
// then `describe()`, to standard error and exits with a failure status.
//
// The limit only tells a hang from slow work (a sanitizer build, a loaded machine): make it
// generous; nothing else depends on time.
class Watchdog {
public:
    Watchdog(std::string what, std::chrono::seconds stallLimit,
             std::function<std::string()> describe);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    void progress() { steps_.fetch_add(1, std::memory_order_relaxed); }

private:
    void watch();

    const std::string what_;
    const std::chrono::seconds stallLimit_;
    const std::function<std::string()> describe_;
    std::atomic<unsigned long> steps_{0};
    std::mutex mutex_;
    std::condition_variable stopped_;
    bool stop_ = false;
    std::thread thread_;
};
