#pragma once

#include <sched.h>

/// Keeps this thread, and the threads and processes that it starts meanwhile, on one processor while it lives. A call
/// on the bus wakes one process after the other, never two at a time; on several processors the time that these take
/// to wake each other is as long as the call itself, changes with their idle states, and hides what the call costs.
class OneProcessor {
public:
    OneProcessor() {
        ::sched_getaffinity(0, sizeof before_, &before_);
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(static_cast<unsigned>(::sched_getcpu()), &one);
        ::sched_setaffinity(0, sizeof one, &one);
    }
    OneProcessor(const OneProcessor&) = delete;
    OneProcessor& operator=(const OneProcessor&) = delete;
    ~OneProcessor() { ::sched_setaffinity(0, sizeof before_, &before_); }

private:
    cpu_set_t before_;
};
