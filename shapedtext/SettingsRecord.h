// SPDX-License-Identifier: MIT
#pragma once

#include "host/CArchive.h"
#include "shapedtext/ShapedTextSettings.h"

namespace orvane
{

/// Writes the settings of a text as version 2 of its record has them.
void WriteSettings(CArchive& archive, const ShapedTextSettings& settings);

/// Reads them from a record of version 1 or 2. Nothing is allocated for a count before what it
/// counts is there. Throws Error for numbers out of their range, and what the archive throws.
ShapedTextSettings ReadSettings(CArchive& archive, DWORD version);

}  // namespace orvane
