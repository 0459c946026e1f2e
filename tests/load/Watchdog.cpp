#include "Watchdog.h"

#include <cstdio>
#include <cstdlib>

Watchdog::Watchdog(std::string what, std::chrono::seconds stallLimit,
                   std::function<std::string()> describe)
    : what_(std::move(what)), stallLimit_(stallLimit), describe_(std::move(describe)),
      thread_([this] { watch(); }) {}

Watchdog::~Watchdog() {
    {
        std::lock_guard lock(mutex_);
        stop_ = true;
    }
    stopped_.notify_one();
    thread_.join();
}

void Watchdog::watch() {
    using Clock = std::chrono::steady_clock;
    std::unique_lock lock(mutex_);
    unsigned long seen = steps_.load(std::memory_order_relaxed);
    Clock::time_point lastStep = Clock::now();
    while (!stopped_.wait_for(lock, std::chrono::seconds(1), [this] { return stop_; })) {
        const unsigned long now = steps_.load(std::memory_order_relaxed);
        if (now != seen) {
            seen = now;
            lastStep = Clock::now();
        } else if (Clock::now() - lastStep >= stallLimit_) {
            std::fprintf(stderr, "%s: no progress for %lld s (deadlock?)\n%s\n", what_.c_str(),
                         static_cast<long long>(stallLimit_.count()), describe_().c_str());
            std::fflush(stderr);
            std::_Exit(EXIT_FAILURE);
        }
    }
}
