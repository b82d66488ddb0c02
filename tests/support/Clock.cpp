// SPDX-License-Identifier: MIT
// The program defines time() itself and exports it, so that shared libraries call this one.
#include "tests/support/Clock.h"

#include <atomic>

namespace
{
std::atomic<std::time_t> secondsAhead = 0;
}  // namespace

extern "C" __attribute__((visibility("default"))) std::time_t time(std::time_t* result) noexcept
{
    std::timespec now = {};
    std::timespec_get(&now, TIME_UTC);
    const std::time_t seconds = now.tv_sec + secondsAhead;
    if (result != nullptr)
    {
        *result = seconds;
    }
    return seconds;
}

ClockAhead::ClockAhead(std::time_t seconds)
{
    secondsAhead = seconds;
}

ClockAhead::~ClockAhead()
{
    secondsAhead = 0;
}
