// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Texts for refusals whose error number says too little. Each thread has its own.

#include "platform/Types.h"

#include <string>

namespace posix
{

/// Sets the error number of this thread, which GetLastError returns, and its text.
void SetError(DWORD error, std::string text);

/// The text that SetError has set on this thread; null when the number was set without one since.
const std::string* FindErrorText();

void ForgetErrorText();

}  // namespace posix
