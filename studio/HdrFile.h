// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "studio/Environment.h"

#include <string>

namespace orvane
{

/// Reads a picture of all directions in the format RGBE of Radiance (.hdr), whose rows run from the
/// top to the bottom and whose columns run from the left to the right (Greg Ward, Real Pixels,
/// 1991). A picture that is larger than a LightMap needs is reduced while it is read, so that
/// little memory is needed. Throws Error for any other file.
ORVANE_API LightMap ReadHdrFile(const std::string& path);

}  // namespace orvane
