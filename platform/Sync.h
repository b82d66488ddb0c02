// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Mutexes, events and waiting for them.

#include "platform/Export.h"
#include "platform/Types.h"

#if !defined(_WIN32)

constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_ABANDONED = 0x80;
constexpr DWORD WAIT_TIMEOUT = 258;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;

/// Accepted and ignored: a process shares no objects with its children here.
struct SECURITY_ATTRIBUTES;

/// A recursive mutex with an owning thread. Named ones are not offered: \p name must be null, else
/// the result is null. The handle is closed with CloseHandle, which is legal also while the mutex
/// is owned.
ORVANE_API HANDLE CreateMutexA(SECURITY_ATTRIBUTES* attributes, BOOL initiallyOwned, LPCSTR name);

/// FALSE when the calling thread does not own the mutex.
ORVANE_API BOOL ReleaseMutex(HANDLE mutex);

/// An event that a wait resets (\p manualReset FALSE) or that stays signalled. \p name must be
/// null.
ORVANE_API HANDLE CreateEventA(SECURITY_ATTRIBUTES* attributes, BOOL manualReset, BOOL initialState,
                               LPCSTR name);
ORVANE_API BOOL SetEvent(HANDLE event);
ORVANE_API BOOL ResetEvent(HANDLE event);

/// Waits for a mutex or an event. A mutex whose owner thread has ended is acquired and reported as
/// WAIT_ABANDONED. A handle that names neither gives WAIT_FAILED.
/// \param milliseconds 0 only tests; INFINITE waits for ever.
ORVANE_API DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds);

/// Closes a kernel object's handle. Threads that wait on it go on waiting for the object itself.
ORVANE_API BOOL CloseHandle(HANDLE object);

#endif
