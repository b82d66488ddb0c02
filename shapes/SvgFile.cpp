// SPDX-License-Identifier: MIT
#include "shapes/SvgFile.h"

#include "document/FileErrors.h"
#include "document/OptionRange.h"
#include "host/CFile.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shapes/SvgPainter.h"

#include <algorithm>
#include <cmath>

namespace orvane
{

namespace
{

/// The distance of the grid to whose lines corners are rounded, in ems: about a millionth, or more
/// for a viewport so large that the grid would have too many lines.
double GridStep(const shapes::SvgFrame& frame)
{
    const double extent = std::max({std::abs(frame.low.x), std::abs(frame.low.y),
                                    std::abs(frame.high.x), std::abs(frame.high.y)});
    constexpr int lineBits = 27;
    return std::exp2(std::max(-20.0, std::ceil(std::log2(extent)) - lineBits));
}

}  // namespace

SvgDrawing ReadSvg(std::string_view bytes, const std::string& name, const SvgOptions& options)
{
    CheckRange("tolerance", options.tolerance, 1e-6, 0.1);
    shapes::SvgDocument document(bytes, name);
    shapes::SvgPainter painter(document, options);
    painter.Paint();
    shapes::WorkLimit work(name, limits::maxShapeSteps);
    std::vector<shapes::Contours> areas =
        shapes::VisibleAreas(painter.Layers(), painter.Clips(), painter.Colors().size(),
                             GridStep(painter.Frame()), work);
    SvgDrawing drawing;
    drawing.width = painter.Frame().width;
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

SvgDrawing ReadSvgFile(const std::string& path, const SvgOptions& options)
{
    CFile file;
    OpenRegularFile(file, path);
    try
    {
        const std::uint64_t length = file.GetLength();
        if (length > limits::maxSvgBytes)
        {
            throw Error(path, std::to_string(length) + " bytes",
                        "at most " + std::to_string(limits::maxSvgBytes));
        }
        std::string bytes(static_cast<std::size_t>(length), '\0');
        bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
        return ReadSvg(bytes, path, options);
    }
    catch (const CFileException& error)
    {
        throw FileError(path, path, error);
    }
}

}  // namespace orvane
