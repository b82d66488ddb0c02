// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The reason for the last failure of a platform call on this thread.

#include "platform/Export.h"
#include "platform/Types.h"

#include <string>

#if !defined(_WIN32)

constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_BUSY = 170;
constexpr DWORD ERROR_NOT_OWNER = 288;
constexpr DWORD ERROR_INVALID_PIXEL_FORMAT = 2000;
constexpr DWORD ERROR_FILE_INVALID = 1006;  ///< an empty file cannot be mapped
constexpr DWORD ERROR_NO_RENDERING = 2001;  ///< there is no OpenGL here; the text says why

/// The error number of the last call that failed on this thread. Calls that succeed leave it as it
/// was.
ORVANE_API DWORD GetLastError();

/// Sets the number and forgets the text.
ORVANE_API void SetLastError(DWORD error);

#endif

/// The reason for the last failure on this thread, in one line without a full stop. A failure
/// without its own text gets the text for its error number. Empty after SetLastError(0).
ORVANE_API std::string GetLastErrorText();
