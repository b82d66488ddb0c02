// SPDX-License-Identifier: MIT
#include "apps/cli/info/InfoText.h"
#include "apps/cli/info/JsonWriter.h"
#if defined(ORVANE_WITH_SHAPING)
#include "apps/cli/shaping/ShapedInfo.h"
#endif
#include "apps/cli/info/SceneInfo.h"
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

namespace orvane
{

namespace
{

void WriteVector(JsonWriter& json, const char* key, const DVector& vector)
{
    json.Numbers(key, vector.x, vector.y, vector.z);
}

void WriteMatrix(JsonWriter& json, const char* key, const CoordinateTransform& transform)
{
    const double* const matrix = transform.GetCompositeMatrix();
    json.Key(key);
    json.BeginArray(JsonWriter::Layout::OneLine);
    for (int i = 0; i < 16; ++i)
    {
        json.Value(matrix[i]);
    }
    json.EndArray();
}

void WriteMaterial(JsonWriter& json, const char* key, const NamedColor& material)
{
    json.Key(key);
    json.BeginObject(JsonWriter::Layout::OneLine);
    WriteMaterial(json, material);
    json.EndObject();
}

/// Writes a node's texture, or null if it has none.
void WriteTexture(JsonWriter& json, const TextureMap& texture)
{
    json.Key("texture");
    if (texture.filename.IsEmpty())
    {
        json.Null();
        return;
    }
    json.BeginObject(JsonWriter::Layout::OneLine);
    json.Member("name", ToUtf8(texture.GetName()));
    json.Member("file", texture.filename.Text());
    json.Member("found", (texture.textureFlags & TextureMap::Valid) != 0);
    json.Member("on", texture.ShouldTexture() != 0);
    json.Member("quality", QualityName(texture.GetQuality()));
    json.Member("repeat", texture.GetRepeatRate());
    json.Member("scales", texture.ShouldScaleWithObject() != 0);
    json.Member("blended", texture.modulate != 0);
    json.EndObject();
}

/// Writes the stored box in the node's coordinates and in its parent's, or null if no box is
/// stored.
void WriteBounds(JsonWriter& json, const DrawingObject& node)
{
    json.Key("bounds");
    if ((node.bounds.flags & BoundingElement::localBoundsDefined) == 0)
    {
        json.Null();
        return;
    }
    json.BeginObject();
    const auto box = [&json](const char* key, const Vector& minimum, const Vector& maximum) {
        json.Key(key);
        json.BeginObject(JsonWriter::Layout::OneLine);
        WriteVector(json, "minimum", minimum);
        WriteVector(json, "maximum", maximum);
        json.EndObject();
    };
    box("own", node.GetBoundsLocalMinimum(), node.GetBoundsLocalMaximum());
    box("parent", node.GetBoundsGlobalMinimum(), node.GetBoundsGlobalMaximum());
    json.EndObject();
}

void WriteText(JsonWriter& json, const OrvString& text)
{
    const auto* const inFont = dynamic_cast<const OrvFontString*>(&text);
    json.Member("text", NameOfNode(text));
    json.Key("font");
    if (inFont != nullptr && inFont->GetFont() != nullptr)
    {
        json.Text(NameOfFont(*inFont));
    }
    else
    {
        json.Null();
    }
    if (const auto* const profiled = dynamic_cast<const OrvProfileString*>(&text);
        profiled != nullptr && profiled->HasProfile())
    {
        json.Member("style", "profile");
        json.Member("profile", ProfileText(profiled->GetProfile()));
        json.Member("fusion", NameOf(profiled->GetFusion()));
    }
    else
    {
        json.Member("style", StyleName(text.GetBevelStyle()));
        json.Member("bevel", text.GetBevelDepth());
    }
    json.Member("bevelOn", LocationName(text.GetBevelLocation()));
    json.Member("bevelScales", text.ShouldScaleBevels() != 0);
    json.Member("align", SideName(text.GetJustification()));
    json.Member("characterSpacing", text.GetInterCharacterSpacing());
    json.Member("lineSpacing", text.GetInterLineSpacing());
    json.Key("materials");
    json.BeginObject();
    WriteMaterial(json, "face", text.GetFaceColor());
    WriteMaterial(json, "edge", text.GetEdgeColor());
    WriteMaterial(json, "bevel", text.GetBevelColor());
    json.EndObject();
#if defined(ORVANE_WITH_SHAPING)
    if (OrvShapedString* const shaped = AsShapedText(text))
    {
        WriteShapedText(json, *shaped);
    }
#endif
}

void WriteOutlines(JsonWriter& json, const OrvOutlineShape& outlines)
{
    json.Member("name", NameOfNode(outlines));
    json.Member("profile", ProfileText(outlines.GetProfile()));
    json.Member("profileOn", NameOf(outlines.GetProfileSides()));
    json.Member("align", NameOf(outlines.GetAlignment()));
    json.Key("areas");
    json.BeginArray();
    for (int area = 0; area < outlines.AreaCount(); ++area)
    {
        json.BeginObject();
        json.Key("contours");
        json.BeginArray(JsonWriter::Layout::OneLine);
        for (const std::vector<contours::DoublePoint>& contour : outlines.Region(area).contours)
        {
            json.Value(static_cast<int>(contour.size()));
        }
        json.EndArray();
        WriteMaterial(json, "material", outlines.Material(area));
        json.EndObject();
    }
    json.EndArray();
}

void WriteMesh(JsonWriter& json, const TriangularMeshObject& mesh)
{
    json.Member("name", NameOfNode(mesh));
    json.Member("vertices", mesh.GetVerticies()->GetSize());
    json.Member("faces", mesh.GetFaces()->GetSize());
}

void WriteImport(JsonWriter& json, const ThreeDStudioObject& import)
{
    json.Key("materials");
    json.BeginArray();
    for (int i = 0; i < import.materials.GetSize(); ++i)
    {
        json.BeginObject(JsonWriter::Layout::OneLine);
        WriteMaterial(json, import.materials.GetAt(i));
        json.EndObject();
    }
    json.EndArray();
}

void WriteNode(JsonWriter& json, const DrawingObject& node, const NodePath& path)
{
    json.BeginObject();
    json.Key("path");
    json.BeginArray(JsonWriter::Layout::OneLine);
    for (const int index : path)
    {
        json.Value(index);
    }
    json.EndArray();
    json.Member("class", node.GetRuntimeClass()->m_lpszClassName);
    if (const auto* const text = dynamic_cast<const OrvString*>(&node))
    {
        WriteText(json, *text);
    }
    else if (const auto* const outlines = dynamic_cast<const OrvOutlineShape*>(&node))
    {
        WriteOutlines(json, *outlines);
    }
    else if (const auto* const mesh = dynamic_cast<const TriangularMeshObject*>(&node))
    {
        WriteMesh(json, *mesh);
    }
    else if (const auto* const import = dynamic_cast<const ThreeDStudioObject*>(&node))
    {
        WriteImport(json, *import);
    }
    json.Member("deleted", node.IsDeleted() != 0);
    json.Member("transparent", node.IsTransparent() != 0);
    WriteVector(json, "size", node.GetScaledDimensions());
    WriteMatrix(json, "transform", *node.GetTransform());
    WriteBounds(json, node);
    if (!path.empty())  // the scene's own texture is its background picture
    {
        WriteTexture(json, *node.GetTexture());
    }
    json.Key("children");
    json.BeginArray();
    ForEachChild(node, [&](const DrawingObject& child, int index) {
        NodePath below = path;
        below.push_back(index);
        WriteNode(json, child, below);
    });
    json.EndArray();
    json.EndObject();
}

void WriteLight(JsonWriter& json, const LightObject& light, int index)
{
    const double* const matrix = light.GetCompositeMatrix();
    json.BeginObject();
    json.Member("index", index);
    json.Member("name", ToUtf8(light.GetColors().GetName()));
    json.Member("number", light.GetLightNumber() - GL_LIGHT0);
    json.Member("inUse", light.IsInUse() != 0);
    json.Member("on", light.IsActive() != 0);
    json.Member("kind", light.IsDirectional() ? "directional" : "positional");
    WriteColor(json, "ambient", light.GetColors().GetAmbientColor());
    WriteColor(json, "diffuse", light.GetColors().GetDiffuseColor());
    WriteColor(json, "specular", light.GetColors().GetSpecularColor());
    json.Numbers("position", matrix[12], matrix[13], matrix[14]);
    // A light shines along its own negative z axis.
    json.Numbers("direction", -matrix[8], -matrix[9], -matrix[10]);
    json.Member("spotCutoff", light.GetSpotCutoffAngle());
    json.Member("spotExponent", light.GetSpotExponent());
    json.EndObject();
}

/// Writes a camera as members of the JSON object that is open.
void WriteCamera(JsonWriter& json, const CoordinateTransform& transform, const ProjectionData& lens)
{
    json.Member("projection", lens.IsOrthographic() ? "orthographic" : "perspective");
    json.Member("fieldOfView", lens.GetFieldOfViewAngle());
    json.Member("lens", lens.GetLensLength());
    json.Numbers("orthographicSize", lens.GetOrthographicWidth(), lens.GetOrthographicHeight());
    WriteMatrix(json, "transform", transform);
}

void WriteView(JsonWriter& json, const ViewObject& view)
{
    const ProjectionData lens = view.GetProjection();
    json.Key("view");
    json.BeginObject();
    WriteCamera(json, *view.GetTransform(), lens);
    json.Member("referenceAspect", lens.GetReferenceAspect());
    json.Member("referenceHeight", lens.referenceHeight);
    json.Member("mode", DrawingModeName(view.GetDrawingModeIndex()));
    json.Member("showsLights", view.ShouldShowLightsMode() != 0);
    json.Member("showsTextures", view.ShouldShowTextures() != 0);
    json.EndObject();
}

void WriteBackground(JsonWriter& json, const SceneObject& scene)
{
    const TextureMap& picture = *scene.GetTexture();
    json.Key("background");
    json.BeginObject();
    WriteColor(json, "color", scene.GetBackgroundColor());
    json.Key("picture");
    if (picture.filename.IsEmpty())
    {
        json.Null();
    }
    else
    {
        json.BeginObject(JsonWriter::Layout::OneLine);
        json.Member("name", ToUtf8(picture.GetName()));
        json.Member("file", picture.filename.Text());
        json.Member("found", (picture.textureFlags & TextureMap::Valid) != 0);
        json.Member("placement", PlacementName(picture.placement));
        json.Numbers("at", picture.GetHorizontalLocation(), picture.GetVerticalLocation());
        json.EndObject();
    }
    json.EndObject();
}

void WriteScene(JsonWriter& json, const SceneObject& scene)
{
    WriteBackground(json, scene);
    WriteColor(json, "ambientLight", scene.GetGlobalAmbientColor());
    json.Member("localViewer", scene.IsLightingLocalViewer() != 0);
    json.Member("lightsFollow", scene.ShouldRotateLightsWithScene() ? "scene" : "camera");
    json.Key("lights");
    json.BeginArray();
    for (int i = 0; i < scene.GetLightCount(); ++i)
    {
        WriteLight(json, *scene.GetLightByIndex(i), i);
    }
    json.EndArray();

    json.Key("savedViews");
    json.BeginArray();
    const NamedViewList& views = *scene.GetSavedViews();
    for (POSITION position = views.GetHeadPosition(); position != nullptr;)
    {
        const NamedView& saved = *views.GetNext(position);
        json.BeginObject();
        json.Member("name", ToUtf8(saved.GetName()));
        WriteCamera(json, saved.GetTransform(), saved.GetProjection());
        json.EndObject();
    }
    json.EndArray();
    json.Key("scene");
    WriteNode(json, scene, {});
}

}  // namespace

std::string SceneToJson(const SceneDocument& document)
{
    JsonWriter json;
    json.BeginObject();
    json.Member("file", document.path);
    json.Member("kind", "scene");
    json.Member("bytes", document.bytes);
    json.Member("codePage", GetACP());
    WriteView(json, *document.view);
    WriteScene(json, *document.scene);
    json.Key("records");
    json.BeginArray();
    for (const auto& [record, count] : document.records)
    {
        json.BeginObject(JsonWriter::Layout::OneLine);
        json.Member("class", record.first);
        json.Member("version", record.second);
        json.Member("count", count);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Result();
}

}  // namespace orvane
