// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The measures of a face, read from only a few places of its file. Opening the file with FreeType
/// reads far more, which takes noticeably longer when thousands of faces are listed.

#include "platform/posix/fonts/DesignMetrics.h"
#include "platform/posix/fonts/InstalledFonts.h"

#include <optional>

namespace posix
{

/// Reads the measures that FreeType would give for a face with TrueType or CFF outlines. Returns no
/// value when the file is damaged, compressed or unusual, so that FreeType must be asked. One such
/// case is an instance of a variable font whose measures vary.
std::optional<DesignMetrics> ReadDesignTables(const InstalledFace& face);

}  // namespace posix
