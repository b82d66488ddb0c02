// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// How a program of its own, as opposed to a library in a host, lives with the system around it.

#include "platform/Export.h"
#include "platform/Types.h"

/// To be called first thing in a program. Standard streams that were closed lead nowhere, so that
/// no file opened later is taken for them; and writing to a pipe that nobody reads, or past the
/// limit of a file's size, is refused instead of ending the process.
ORVANE_API void PrepareProcess();

/// Names a file that is removed when the process is interrupted or told to end; null for none any
/// more. One at a time. Only a program may call it: it decides what the signals do. They still end
/// the process, and one that was ignored stays so.
ORVANE_API void RemoveWhenInterrupted(const char* path);

/// From now on an interruption signals an event first, and ends the process when that has not ended
/// by itself, with EndIfInterrupted, a sixth of a second later, or when it comes again. For a
/// program, too. Null leaves things as they are.
ORVANE_API void SignalWhenInterrupted(HANDLE event);

/// Ends the process as the interruption does when there was one, else returns.
ORVANE_API void EndIfInterrupted();
