// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

/// Adds or replaces a string resource: a text that CString::LoadString finds by its number. The
/// text is copied. The library itself uses the numbers 300 to 321 and 20000 to 21101.
ORVANE_API void AfxSetResourceString(UINT resource, LPCSTR text);
