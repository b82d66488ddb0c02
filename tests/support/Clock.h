// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The time of day that the program and its libraries get from the C library's time().

#include <ctime>

/// While it lives, time() is ahead of the true time, so that a test need not wait for a later
/// second. One at a time.
class ClockAhead
{
public:
    explicit ClockAhead(std::time_t seconds);
    ~ClockAhead();
    ClockAhead(const ClockAhead&) = delete;
    ClockAhead& operator=(const ClockAhead&) = delete;
};
