// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

/// Adds or replaces a string resource, the texts that CString::LoadString finds by number. The text
/// is copied. The library's own numbers are 300 to 321 and 20000 to 21101.
ORVANE_API void AfxSetResourceString(UINT resource, LPCSTR text);
