// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DeviceContexts.h"
#include "platform/posix/fonts/InstalledFonts.h"

#include <memory>

namespace posix
{

/// Makes a font of a face that need not be installed. The font keeps the face. Null when the face's
/// outlines cannot be handed over under the process's setting (SetProcessOutlines).
/// \param height as in LOGFONTA::lfHeight
HFONT MakeFontOfFace(const std::shared_ptr<const InstalledFace>& face, LONG height);

}  // namespace posix
