// SPDX-License-Identifier: MIT
#include "document/DrawingModes.h"

#include "scene/DrawingParameters.h"
#include "scene/ViewObject.h"

namespace orvane
{

DrawingMode DrawingModeOf(const ViewObject& view)
{
    const DWORD mode = view.GetDrawingMode();
    return (mode & DrawingParameters::outlineBit) != 0  ? DrawingMode::Outline
           : (mode & DrawingParameters::renderBit) != 0 ? DrawingMode::Solid
                                                        : DrawingMode::Boxes;
}

void SetDrawingMode(ViewObject& view, DrawingMode mode)
{
    view.SetDrawingModeIndex(static_cast<int>(mode));
}

}  // namespace orvane
