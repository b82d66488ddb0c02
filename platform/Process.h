// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Standard streams and signals, for programs. A library inside a host must leave them to the host.

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>

/// A program calls this before anything else. Standard streams that are closed are opened on the
/// null device, so that no file opened later takes their place. From then on, writing to a pipe
/// that nobody reads, or past the limit of a file's size, fails instead of ending the process.
ORVANE_API void PrepareProcess();

/// From now on the files that are being written (see FileReplacement) are removed when a signal
/// interrupts the process or tells it to end. Only a program may call this, because it installs
/// signal handlers. The signals still end the process, and ignored signals stay ignored.
ORVANE_API void RemoveUnfinishedFilesWhenInterrupted();

/// Lets an interruption first signal an event, so that the program can stop its work and call
/// EndIfInterrupted. If the process has not ended a sixth of a second later, or if a second
/// interruption comes, the process is ended. Only a program may call this. A null event changes
/// nothing.
ORVANE_API void SignalWhenInterrupted(HANDLE event);

/// If there was an interruption, ends the process as the interruption would have done. Otherwise
/// returns.
ORVANE_API void EndIfInterrupted();

/// Ends the process at once with an exit status, on any thread. Unfinished files are removed;
/// nothing else is cleaned up.
[[noreturn]] ORVANE_API void EndProcess(int status);

/// Bytes of memory that belong to this process alone, whether they are in memory or swapped out.
/// Mapped files and programs do not count. 0 when the system does not tell.
ORVANE_API std::uint64_t MemoryInUse();
