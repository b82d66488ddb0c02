// SPDX-License-Identifier: MIT
#include "document/DrawingModes.h"

#include "scene/DrawingParameters.h"
#include "scene/ViewObject.h"

namespace orvane
{

DrawingMode DrawingModeOf(const ViewObject& view)
{
    DrawingParameters parameters;
    parameters.SetFlags(view.GetDrawingMode());
    return parameters.IsOutline()  ? DrawingMode::Outline
           : parameters.IsRender() ? DrawingMode::Solid
                                   : DrawingMode::Boxes;
}

void SetDrawingMode(ViewObject& view, DrawingMode mode)
{
    view.SetDrawingModeIndex(static_cast<int>(mode));
}

}  // namespace orvane
