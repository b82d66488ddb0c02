// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"

class ViewObject;

namespace orvane
{

ORVANE_API DrawingMode DrawingModeOf(const ViewObject& view);
ORVANE_API void SetDrawingMode(ViewObject& view, DrawingMode mode);

}  // namespace orvane
