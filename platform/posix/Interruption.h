// SPDX-License-Identifier: MIT
#pragma once

namespace posix
{

/// While this object lives, an interruption that the program handles (see platform/Process.h) does
/// not end the process; it does so when the last such object ends. For steps of well under a
/// millisecond that belong together.
class InterruptionHold
{
public:
    InterruptionHold();
    ~InterruptionHold();
    InterruptionHold(const InterruptionHold&) = delete;
    InterruptionHold& operator=(const InterruptionHold&) = delete;
};

}  // namespace posix
