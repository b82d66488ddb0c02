// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// How a program of its own, as opposed to a library in a host, lives with the system around it.

#include "platform/Export.h"

/// To be called first thing in a program. Standard streams that were closed lead nowhere, so that
/// no file opened later is taken for them; and writing to a pipe that nobody reads, or past the
/// limit of a file's size, is refused instead of ending the process.
ORVANE_API void PrepareProcess();

/// Names a file that is removed when the process is interrupted or told to end; null for none any
/// more. One at a time. Only a program may call it: it decides what the signals do. They still end
/// the process, and one that was ignored stays so.
/// \param path borrowed, until the next call
ORVANE_API void RemoveWhenInterrupted(const char* path);
