// SPDX-License-Identifier: MIT
#include "shapes/SvgFile.h"

#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shapes/ContourGrid.h"
#include "shapes/SvgPainter.h"

#include <algorithm>
#include <cmath>

namespace orvane
{

SvgDrawing ReadSvg(std::string_view bytes, const std::string& name, const SvgOptions& options)
{
    if (!(options.tolerance >= 1e-6 && options.tolerance <= 0.1))
    {
        throw OptionError("tolerance", "0.000001 to 0.1", std::to_string(options.tolerance));
    }
    shapes::SvgDocument document(bytes, name);
    shapes::SvgPainter painter(document, options);
    painter.Paint();
    const shapes::SvgFrame& frame = painter.Frame();
    const double extent = std::max({std::abs(frame.low.x), std::abs(frame.low.y),
                                    std::abs(frame.high.x), std::abs(frame.high.y)});
    shapes::WorkLimit work(name, limits::maxShapeSteps);
    std::vector<shapes::Contours> areas =
        shapes::VisibleAreas(painter.Layers(), painter.Clips(), painter.Colors().size(),
                             shapes::GridStepFor(extent), work);
    SvgDrawing drawing;
    drawing.width = frame.width;
    for (std::size_t i = 0; i < areas.size(); ++i)
    {
        if (!areas[i].empty())
        {
            drawing.shapes.push_back({painter.Colors()[i], std::move(areas[i])});
        }
    }
    drawing.notices = document.TakeNotices();
    return drawing;
}

}  // namespace orvane
