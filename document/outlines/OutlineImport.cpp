// SPDX-License-Identifier: MIT
#include "document/outlines/OutlineImport.h"

#include "document/Colors.h"
#include "document/FileErrors.h"
#include "document/MeshImport.h"
#include "document/OptionRange.h"
#include "document/ScenePictures.h"
#include "document/meshes/UncutParts.h"
#include "host/CFile.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "profiles/EdgeProfile.h"
#include "scene/SceneObject.h"
#include "solids/OrvOutlineShape.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace orvane
{

namespace
{

void CheckOutlineOptions(const OutlineOptions& options)
{
    if (options.width && options.height)
    {
        throw OptionError("width", "a width or a height, not both");
    }
    CheckRange("width", options.width.value_or(1), 0.001, 1000);
    CheckRange("height", options.height.value_or(1), 0.001, 1000);
    CheckRange("depth", options.depth, 1e-6, 100);
    if (options.texture)
    {
        CheckRange("repeat", options.texture->repeat, 0.001, 1000);
    }
}

std::uint8_t ByteOf(float part)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(part, 0.0f, 1.0f) * 255));
}

ColorVector ColorOf(const SvgColor& color)
{
    const auto part = [](std::uint8_t byte) { return static_cast<float>(byte) / 255.0f; };
    return {part(color.red), part(color.green), part(color.blue), part(color.alpha)};
}

/// The areas of a drawing as those of a node. The materials have the colours as their names.
std::vector<OutlineArea> AreasOf(SvgDrawing& drawing)
{
    std::vector<OutlineArea> areas;
    areas.reserve(drawing.shapes.size());
    for (SvgShape& shape : drawing.shapes)
    {
        const ColorVector color = ColorOf(shape.color);
        areas.push_back(
            {{std::move(shape.contours)}, MakeMaterial(ColorText(color).c_str(), color, 0.1f, 16)});
    }
    return areas;
}

std::string NoticeText(const std::string& path, const SvgNotice& notice)
{
    return path + ": line " + std::to_string(notice.line) + ": <" + notice.element +
           ">: " + notice.problem;
}

/// Builds the solids, and tells of those that are not as the options ask for.
void AddNoticesOfSolids(OrvOutlineShape& node, const std::string& path,
                        std::vector<std::string>& notices)
{
    for (int area = 0; area < node.AreaCount(); ++area)
    {
        node.Solid(area);
    }
    for (const std::string& sentence : UncutAreasOf(node))
    {
        std::string& notice = notices.emplace_back(path);
        notice += ": ";
        notice += sentence;
    }
}

}  // namespace

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

OutlineImport MakeOutlines(SceneObject& scene, const std::string& path,
                           const OutlineOptions& options)
{
    CheckOutlineOptions(options);
    const EdgeProfile profile = options.profile
                                    ? ParseProfile(*options.profile, options.profileWidth)
                                    : EdgeProfile{{ProfileStep{}}};
    SvgOptions reading;
    reading.tolerance = options.tolerance;
    reading.currentColor = {ByteOf(options.currentColor.red), ByteOf(options.currentColor.green),
                            ByteOf(options.currentColor.blue), ByteOf(options.currentColor.alpha)};
    SvgDrawing drawing = ReadSvgFile(path, reading);

    OutlineImport result;
    for (const SvgNotice& notice : drawing.notices)
    {
        result.notices.push_back(NoticeText(path, notice));
    }
    if (drawing.shapes.empty())
    {
        throw Error(path, "the file draws nothing" +
                              (drawing.notices.empty()
                                   ? std::string()
                                   : " that is supported; <" + drawing.notices.front().element +
                                         "> " + drawing.notices.front().problem));
    }
    result.node = std::make_unique<OrvOutlineShape>();
    OrvOutlineShape& node = *result.node;
    node.SetFileName(path.c_str());
    node.SetAreas(AreasOf(drawing));
    node.SetProfile(profile);
    node.SetProfileSides(options.profileSides);
    node.SetAlignment(options.alignment);
    node.SetScale(DVector(1.0, 1.0, options.depth));
    node.CalculateBounds();
    const DVector size = node.GetUnscaledDimensions();
    const double factor = options.width    ? *options.width / size.x
                          : options.height ? *options.height / size.y
                                           : 1.0;
    node.SetScale(DVector(factor, factor, options.depth));
    node.CalculateBounds();
    AddNoticesOfSolids(node, path, result.notices);
    if (options.texture)
    {
        SetTexture(node, *options.texture);
    }
    if (options.at || scene.HasChildren())
    {
        PlaceInScene(scene, node, options.at);
    }
    return result;
}

}  // namespace orvane
