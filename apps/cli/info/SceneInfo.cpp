// SPDX-License-Identifier: MIT
#include "apps/cli/info/SceneInfo.h"

#include "apps/cli/Terminal.h"
#include "apps/cli/commands/MissingParts.h"
#include "apps/cli/info/InfoText.h"
#include "apps/cli/info/JsonWriter.h"
#include "apps/cli/info/NodeTitle.h"
#include "apps/cli/info/TextTable.h"
#if defined(ORVANE_WITH_SHAPING)
#include "apps/cli/shaping/ShapedInfo.h"
#endif
#include "document/Colors.h"
#include "document/EnumNames.h"
#include "document/SceneDocument.h"
#include "document/SceneNames.h"
#include "document/TextEncoding.h"
#include "extrude/OrvFont.h"
#include "import3ds/ThreeDStudioObject.h"
#include "import3ds/TriangularMeshObject.h"
#include "platform/Fonts.h"
#include "scene/DescendentWalk.h"
#include "scene/NamedView.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/OrvOutlineShape.h"
#include "solids/OrvProfileString.h"

#include <cmath>
#include <cstdio>

namespace orvane
{

namespace
{

/// What is said about a picture that is gone or lies outside of the folder of the scene.
const char* MissingText(const TextureMap& picture)
{
    return (picture.textureFlags & TextureMap::Valid) != 0 ? ""
                                                           : ", not found in the scene's folder";
}

std::string TextureText(const TextureMap& texture)
{
    std::string text = Quoted(texture.filename.Text()) + ", " + QualityName(texture.GetQuality());
    text += ", " + ShortNumber(texture.GetRepeatRate()) + " times across";
    text += texture.ShouldScaleWithObject() ? ", scales with the node" : "";
    text += (texture.textureFlags & TextureMap::Textured) != 0 ? "" : ", switched off";
    return text + MissingText(texture);
}

std::string EdgesText(const OrvString& text)
{
    if (const auto* const profiled = dynamic_cast<const OrvProfileString*>(&text);
        profiled != nullptr && profiled->HasProfile())
    {
        std::string edges = "profile \"" + ProfileText(profiled->GetProfile()) + "\" on " +
                            LocationName(text.GetBevelLocation());
        edges += text.ShouldScaleBevels() ? ", scales" : "";
        return edges + (profiled->GetFusion() == LetterFusion::Separate
                            ? ""
                            : ", fuses each " + NameOf(profiled->GetFusion()));
    }
    std::string edges = StyleName(text.GetBevelStyle());
    if (!text.ShouldSquareEdges())
    {
        edges += " " + ShortNumber(text.GetBevelDepth()) + " on " +
                 LocationName(text.GetBevelLocation());
        edges += text.ShouldScaleBevels() ? ", scales" : "";
    }
    return edges;
}

void AddRowsOfText(TextTable& table, const OrvString& text)
{
    const auto* const inFont = dynamic_cast<const OrvFontString*>(&text);
    const OrvFont* const font = inFont != nullptr ? inFont->GetFont() : nullptr;
    table.Add({"", "font", font != nullptr ? Quoted(NameOfFont(*inFont)) : "none"});
#if defined(ORVANE_WITH_SHAPING)
    if (OrvShapedString* const shaped = AsShapedText(text))
    {
        AddRowsOfShapedText(table, *shaped);
    }
#endif
    table.Add({"", "edges", EdgesText(text)});
    table.Add({"", "align", SideName(text.GetJustification())});
    table.Add({"", "face", MaterialText(text.GetFaceColor())});
    table.Add({"", "edge", MaterialText(text.GetEdgeColor())});
    table.Add({"", "bevel", MaterialText(text.GetBevelColor())});
}

std::string AreaText(const PlaneRegion& region)
{
    std::size_t corners = 0;
    for (const std::vector<contours::DoublePoint>& contour : region.contours)
    {
        corners += contour.size();
    }
    return CountText(static_cast<int>(region.contours.size()), "contour", "contours") + " of " +
           CountText(static_cast<int>(corners), "corner", "corners");
}

void AddRowsOfOutlines(TextTable& table, const OrvOutlineShape& outlines)
{
    const std::string profile = ProfileText(outlines.GetProfile());
    table.Add({"", "edges",
               outlines.GetProfile().steps.size() > 1
                   ? "profile \"" + profile + "\" on " + NameOf(outlines.GetProfileSides())
                   : NameOf(EdgeStyle::Square)});
    table.Add({"", "align", NameOf(outlines.GetAlignment())});
    for (int area = 0; area < outlines.AreaCount(); ++area)
    {
        table.Add({"", "area",
                   MaterialText(outlines.Material(area)) + ", " + AreaText(outlines.Region(area))});
    }
}

void AddRowsOfNode(TextTable& table, const DrawingObject& node, const NodePath& path)
{
    table.AddLine(PathText(path), TitleOf(node) + (node.IsDeleted() ? ", deleted" : ""));
    if (const auto* const text = dynamic_cast<const OrvString*>(&node))
    {
        AddRowsOfText(table, *text);
    }
    else if (const auto* const outlines = dynamic_cast<const OrvOutlineShape*>(&node))
    {
        AddRowsOfOutlines(table, *outlines);
    }
    else if (const auto* const mesh = dynamic_cast<const TriangularMeshObject*>(&node))
    {
        table.Add({"", "mesh",
                   CountText(mesh->GetVerticies()->GetSize(), "vertex", "vertices") + ", " +
                       CountText(mesh->GetFaces()->GetSize(), "face", "faces")});
    }
    else if (const auto* const import = dynamic_cast<const ThreeDStudioObject*>(&node))
    {
        for (int i = 0; i < import->materials.GetSize(); ++i)
        {
            table.Add({"", "material", MaterialText(import->materials.GetAt(i))});
        }
    }
    if (!node.GetTexture()->filename.IsEmpty())
    {
        table.Add({"", "texture", TextureText(*node.GetTexture())});
    }
    const double* const matrix = node.GetCompositeMatrix();
    table.Add({"", "at", Triple(matrix[12], matrix[13], matrix[14])});
    const bool bounded = (node.bounds.flags & BoundingElement::localBoundsDefined) != 0;
    table.Add({"", "bounds",
               bounded ? Triple(node.GetBoundsGlobalMinimum()) + " to " +
                             Triple(node.GetBoundsGlobalMaximum())
                       : "none"});
    ForEachChild(node, [&](const DrawingObject& child, int index) {
        NodePath below = path;
        below.push_back(index);
        AddRowsOfNode(table, child, below);
    });
}

std::string CameraText(const ProjectionData& lens)
{
    if (lens.IsOrthographic())
    {
        return "orthographic, " + ShortNumber(lens.GetOrthographicWidth()) + " wide";
    }
    return "perspective, " + ShortNumber(lens.GetFieldOfViewAngle()) + " degrees, lens " +
           ShortNumber(lens.GetLensLength()) + " mm";
}

std::string PlaceOf(const CoordinateTransform& transform)
{
    const double* const matrix = transform.GetCompositeMatrix();
    return "moves the scene by " + Triple(matrix[12], matrix[13], matrix[14]);
}

std::string BackgroundText(const SceneObject& scene)
{
    const TextureMap& picture = *scene.GetTexture();
    std::string color = ColorText(scene.GetBackgroundColor());
    if (picture.filename.IsEmpty())
    {
        return color;
    }
    return color + ", " + Quoted(picture.filename.Text()) + " " + PlacementName(picture.placement) +
           " at " + ShortNumber(picture.GetHorizontalLocation()) + "," +
           ShortNumber(picture.GetVerticalLocation()) + MissingText(picture);
}

std::string LightsText(const SceneObject& scene)
{
    TextTable table;
    int inUse = 0;
    for (int i = 0; i < scene.GetLightCount(); ++i)
    {
        const LightObject& light = *scene.GetLightByIndex(i);
        const NamedColor colors = light.GetColors();
        const double* const matrix = light.GetCompositeMatrix();
        inUse += light.IsInUse() ? 1 : 0;
        table.Add({std::to_string(i), light.IsInUse() ? "in use" : "free",
                   light.IsActive() ? "on" : "off",
                   light.IsDirectional() ? "directional" : "positional",
                   ColorText(colors.GetDiffuseColor()),
                   light.IsDirectional() ? "towards " + Triple(-matrix[8], -matrix[9], -matrix[10])
                                         : "at " + Triple(matrix[12], matrix[13], matrix[14]),
                   Quoted(ToUtf8(colors.GetName()))});
    }
    return "\nLights: " + std::to_string(inUse) + " of " + std::to_string(scene.GetLightCount()) +
           " in use\n" + table.Text();
}

std::string SavedViewsText(const SceneObject& scene)
{
    const NamedViewList& views = *scene.GetSavedViews();
    TextTable table;
    int index = 0;
    for (POSITION position = views.GetHeadPosition(); position != nullptr; ++index)
    {
        const NamedView& view = *views.GetNext(position);
        table.Add({std::to_string(index), Quoted(ToUtf8(view.GetName())),
                   CameraText(view.GetProjection()), PlaceOf(view.GetTransform())});
    }
    return "\nSaved views: " + std::to_string(index) + "\n" + table.Text();
}

}  // namespace

std::string SceneToText(const SceneDocument& document)
{
    const SceneObject& scene = *document.scene;
    const ViewObject& view = *document.view;
    TextTable general;
    general.Add(
        {"camera", CameraText(view.GetProjection()) + ", " + PlaceOf(*view.GetTransform())});
    general.Add({"drawing", DrawingModeName(view.GetDrawingModeIndex()) +
                                (view.ShouldShowTextures() ? ", textured" : "") +
                                (view.ShouldShowLightsMode() ? ", lights shown" : "")});
    general.Add({"background", BackgroundText(scene)});
    general.Add({"lighting", "ambient " + ColorText(scene.GetGlobalAmbientColor()) +
                                 ", lights follow the " +
                                 (scene.ShouldRotateLightsWithScene() ? "scene" : "camera")});

    TextTable nodes;
    ForEachChild(scene, [&nodes](const DrawingObject& node, int index) {
        AddRowsOfNode(nodes, node, {index});
    });
    TextTable records;
    for (const auto& [record, count] : document.records)
    {
        records.Add({record.first, "version " + std::to_string(record.second),
                     CountText(count, "record", "records")});
    }
    return Quoted(document.path) + ": a scene, " + GroupedNumber(document.bytes) +
           " bytes, texts in code page " + std::to_string(GetACP()) + "\n" + general.Text() +
           "\nNodes: " + std::to_string(scene.GetDescendentCount()) + "\n" + nodes.Text() +
           LightsText(scene) + SavedViewsText(scene) + "\nRecords\n" + records.Text();
}

std::string DescribeScene(const std::string& path, InfoFormat format)
{
    const SceneDocument document = SceneDocument::Load(path, FontProgress());
    // The description marks missing pictures itself.
    TellMissingParts(document, {MissingKind::Font}, Strictness::GoOn);
    return format == InfoFormat::Json ? SceneToJson(document) : SceneToText(document);
}

}  // namespace orvane
