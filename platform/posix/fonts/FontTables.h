// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Font files read in a few places only. Opening a file with FreeType reads far more, which tells
/// when thousands of faces are listed.

#include "platform/posix/fonts/DesignMetrics.h"
#include "platform/posix/fonts/InstalledFonts.h"

#include <optional>

namespace posix
{

/// What FreeType would say of a face with TrueType or compact outlines. Nothing when the file is
/// damaged, wrapped or out of the ordinary, so that only FreeType can tell; in particular an
/// instance of a variable font whose measures vary too.
std::optional<DesignMetrics> ReadDesignTables(const InstalledFace& face);

}  // namespace posix
