// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Texts for failures whose error number says too little. Each thread has its own text.

#include "platform/Types.h"

#include <string>

namespace posix
{

/// Sets the error number of this thread, which GetLastError returns, and its text.
void SetError(DWORD error, std::string text);

/// The text that SetError has set on this thread; null when a later call has set the error number
/// without a text.
const std::string* FindErrorText();

void ForgetErrorText();

}  // namespace posix
