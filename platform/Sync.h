// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Mutexes and events, and how to wait for them.

#include "platform/Export.h"
#include "platform/Types.h"

#if !defined(_WIN32)

constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_ABANDONED = 0x80;
constexpr DWORD WAIT_TIMEOUT = 258;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;

/// A parameter of this type is ignored, because processes share no objects here.
struct SECURITY_ATTRIBUTES;

/// Makes a mutex that one thread owns at a time and may lock several times. \p name must be null,
/// because named mutexes are not offered; otherwise the result is null. The caller closes the
/// handle with CloseHandle, which is allowed even while a thread owns the mutex.
ORVANE_API HANDLE CreateMutexA(SECURITY_ATTRIBUTES* attributes, BOOL initiallyOwned, LPCSTR name);

/// FALSE when the calling thread does not own the mutex.
ORVANE_API BOOL ReleaseMutex(HANDLE mutex);

/// Makes an event. With \p manualReset FALSE, a successful wait resets it; otherwise it stays
/// signalled until ResetEvent. \p name must be null; otherwise the result is null.
ORVANE_API HANDLE CreateEventA(SECURITY_ATTRIBUTES* attributes, BOOL manualReset, BOOL initialState,
                               LPCSTR name);
ORVANE_API BOOL SetEvent(HANDLE event);
ORVANE_API BOOL ResetEvent(HANDLE event);

/// Waits until a mutex can be acquired or an event is signalled. WAIT_ABANDONED means that the
/// mutex was acquired but that its last owner, a thread, ended without releasing it. WAIT_FAILED
/// means that the handle names neither a mutex nor an event.
/// \param milliseconds the longest wait; with 0 the call returns at once, with INFINITE it waits
/// without a limit.
ORVANE_API DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds);

/// Closes the handle of a mutex, event, file or mapping. Threads that are waiting for the object go
/// on waiting.
ORVANE_API BOOL CloseHandle(HANDLE object);

#endif
