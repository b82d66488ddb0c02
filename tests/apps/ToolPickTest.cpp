// SPDX-License-Identifier: MIT
// Picking finds what lies under a pixel of a scene's picture.

#include "document/EnumNames.h"
#include "document/SceneDocument.h"
#include "document/SceneFraming.h"
#include "document/ScenePick.h"
#include "extrude/Library.h"
#include "extrude/OrvFontList.h"
#include "import3ds/ThreeDStudioObject.h"
#include "import3ds/TriangularMeshObject.h"
#include "scene/OrvFontString.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/Json.h"
#include "tests/support/SceneFiles.h"
#include "tests/support/StubFont.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

using orvane::HitKind;
using orvane::LetterPart;
using orvane::NodePath;
using orvane::PathText;
using orvane::PickedPart;
using orvane::SceneDocument;
using orvane::ScenePicker;

namespace
{

constexpr int width = 256;
constexpr int height = 96;
constexpr int pixelsPerUnit = 40;

/// Picks in a picture of that size of a document, which must live longer.
ScenePicker PickerOf(const SceneDocument& document, const orvane::Size& size = {width, height})
{
    ViewObject view(*document.view);
    SizeView(view, size);
    return ScenePicker(view);
}

/// A scene without light, seen straight from the front: the middle of the picture is the origin.
/// Each surface has the colour that it emits.
class ToolPick : public testing::Test
{
protected:
    ToolPick()
    {
        scene.SetGlobalAmbientColor({0, 0, 0, 1});
        scene.SetBackgroundColor({0, 0, 0, 1});
        for (int i = 0; i < 8; ++i)
        {
            scene.GetLightByIndex(i)->ClearInUse();
        }
        view.SetUnscaledSize(width, height);
        view.SetProjectionOrthographic();
        view.SetProjectionOrthographicWidth(static_cast<double>(width) / pixelsPerUnit);
        view.SaveReferenceAspect();
    }
    ~ToolPick() override
    {
        DetachLibrary();  // with the fonts
        AttachLibrary();
    }

    static NamedColor Glow(float red, float green, float blue)
    {
        NamedColor color;
        color.SetEmissionColor({red, green, blue, 1});
        color.SetSpecularColor({0, 0, 0, 1});
        return color;
    }

    /// A text whose faces, edges and bevels glow red, green and blue, as bright as is given.
    OrvFontString& AddText(const char* characters, DrawingObject* parent = nullptr, float glow = 1)
    {
        font.GetEnumLogFont()->elfLogFont.lfWeight = 400;
        std::snprintf(font.GetEnumLogFont()->elfLogFont.lfFaceName, LF_FACESIZE,
                      "DejaVu Sans Mono");
        auto* const text = new OrvFontString;
        text->AttachFont(&font);
        text->SetTextString(characters);
        text->SetFaceColor(Glow(glow, 0, 0));
        text->SetEdgeColor(Glow(0, glow, 0));
        text->SetBevelColor(Glow(0, 0, glow));
        (parent != nullptr ? parent : &scene)->AddChild(text);
        return *text;
    }

    void Save() { folder.Write("s.orv", SceneFileBytes(scene, view)); }

    SceneDocument Load()
    {
        Save();
        SceneDocument document = SceneDocument::Load(folder.Path("s.orv"));
        document.scene->CalculateBounds();  // texts are placed by their measured heights
        return document;
    }

    std::vector<PickedPart> Pick(int x, int y) { return PickerOf(Load()).Pick(x, y); }

    ToolResult Run(const std::string& pixel, const std::vector<std::string>& more = {})
    {
        Save();
        std::vector<std::string> arguments = {"pick", "s.orv", pixel, "--size",
                                              std::to_string(width) + "x" + std::to_string(height)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return folder.Run(arguments);
    }

    StubFont font;
    ToolFolder folder;
    SceneObject scene;
    ViewObject view;
};

TEST_F(ToolPick, EveryPixelIsOfThePartWhoseColorItHas)
{
    OrvFontString& back = AddText("Rg8");
    back.SetBevelStyle(1);
    back.SetBevelDepth(0.06f);
    back.SetScale(DVector(2.0, 2.0, 0.5));
    back.SetJustification(1);
    back.Rotate(35, DVector(0.0, 1.0, 0.0));
    back.Rotate(20, DVector(1.0, 0.0, 0.0));
    OrvFontString& front = AddText("&", nullptr, 0.5f);
    front.SetBevelStyle(2);
    front.SetBevelDepth(0.05f);
    front.SetTranslation(DVector(0.2, 0.1, 1.5));
    front.Rotate(-30, DVector(0.0, 1.0, 0.0));
    SceneDocument document = Load();
    folder.Write("s.orv", document.Bytes());
    ASSERT_EQ(folder
                  .Run({"render", "--scene", "s.orv", "-o", "x.png", "--samples", "1", "--size",
                        std::to_string(width) + "x" + std::to_string(height)})
                  .status,
              0);
    const DecodedPicture picture = DecodePng(folder.Read("x.png"));
    ASSERT_EQ(picture.width, width);

    ScenePicker picker = PickerOf(document);
    std::set<std::string> seen;
    int differing = 0;
    int covered = 0;
    for (int y = 1; y < height; y += 4)
    {
        for (int x = 1; x < width; x += 4)
        {
            const std::vector<PickedPart> parts = picker.Pick(x, y);
            std::string expected;
            const auto pixel = picture.At(x, y);
            const int channel = pixel.red != 0     ? pixel.red
                                : pixel.green != 0 ? pixel.green
                                                   : pixel.blue;
            if (channel != 0)
            {
                expected = channel > 200 ? "0 " : "1 ";
                expected += pixel.red != 0 ? "face" : pixel.green != 0 ? "edge" : "bevel";
                seen.insert(expected);
                ++covered;
            }
            std::string found;
            if (!parts.empty())
            {
                found = PathText(parts.front().path) + " " + NameOf(parts.front().part);
            }
            // The rasterizer rounds corners to parts of a pixel; and beside a shape the pixel that
            // it only touches counts as under it.
            differing += found != expected && !(expected.empty() && !found.empty()) ? 1 : 0;
        }
    }
    EXPECT_EQ(seen, (std::set<std::string>{"0 face", "0 edge", "0 bevel", "1 face", "1 edge",
                                           "1 bevel"}));
    EXPECT_GT(covered, 150);
    EXPECT_LE(differing, covered / 100);
}

TEST_F(ToolPick, TheCharacterIsTheOneInWhoseCellThePixelLies)
{
    // Two lines in cells of 1233 / 2048 em, from x = 0 on.
    AddText("HHH\r\nHH");
    SceneDocument document = Load();
    ScenePicker picker = PickerOf(document);
    std::set<int> seen;
    for (int y = 0; y < height; y += 4)
    {
        for (int x = 0; x < width; ++x)
        {
            const std::vector<PickedPart> parts = picker.Pick(x, y);
            if (parts.empty())
            {
                continue;
            }
            EXPECT_EQ(parts.front().kind, HitKind::Letter);
            EXPECT_EQ(parts.front().path, NodePath{0});
            EXPECT_EQ(parts.front().part, LetterPart::Face);
            const double across = (x + 0.5 - width / 2.0) / pixelsPerUnit;
            const int cell = static_cast<int>(std::floor(across / (1233 / 2048.0)));
            const int line = y < height / 2 ? 0 : 5;  // behind three letters, CR and LF
            EXPECT_EQ(parts.front().index, line + cell) << x << "," << y;
            seen.insert(parts.front().index);
        }
    }
    EXPECT_EQ(seen, (std::set<int>{0, 1, 2, 5, 6}));
}

TEST_F(ToolPick, TheNearestComesFirst)
{
    // The letter's stem crosses the middle; behind it stands a larger one.
    for (const double z : {-1.0, 1.0})
    {
        OrvFontString& text = AddText("I");
        text.SetJustification(1);
        text.SetTranslation(DVector(0.0, 0.0, z));
    }
    std::vector<PickedPart> parts = Pick(width / 2, height / 2);
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts[0].path, NodePath{1});
    EXPECT_EQ(parts[1].path, NodePath{0});
    EXPECT_LT(parts[0].depth, parts[1].depth);
    // Five units before the camera stands the origin; clipped at 0.1 and 10000.
    EXPECT_NEAR(parts[0].depth, (4 - 0.1) / 9999.9, 1e-6);
    EXPECT_NEAR(parts[1].depth, (6 - 0.1) / 9999.9, 1e-6);

    scene.GetChildByIndex(1)->SetDeleted();
    parts = Pick(width / 2, height / 2);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(parts[0].path, NodePath{0});
}

TEST_F(ToolPick, AChildOfATextIsDistinguishedFromTheTextsParts)
{
    // All are named 0: the letter's faces, the child, and the child's child, a box.
    OrvFontString& text = AddText("I");
    text.SetJustification(1);
    OrvFontString& child = AddText("I", &text);
    child.SetJustification(1);
    child.SetTranslation(DVector(1.0, 0.0, 1.0));
    auto* const import = new ThreeDStudioObject;
    import->materials.Add(Glow(1, 1, 1));
    auto* const mesh = new TriangularMeshObject;
    mesh->GetVerticies()->Add(Vector(-2, -0.5f, 0));
    mesh->GetVerticies()->Add(Vector(-2, 0.5f, 0));
    mesh->GetVerticies()->Add(Vector(-1, 0, 0));
    TriangularFace face;
    face.b = 1;
    face.c = 2;
    mesh->GetFaces()->Add(face);
    import->AddChild(mesh);
    text.AddChild(import);

    std::vector<PickedPart> parts = Pick(width / 2, height / 2);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(parts[0].path, NodePath{0});
    EXPECT_EQ(parts[0].part, LetterPart::Face);
    parts = Pick(width / 2 + pixelsPerUnit, height / 2);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(parts[0].path, (NodePath{0, 0}));
    EXPECT_EQ(parts[0].part, LetterPart::Face);
    parts = Pick(width / 2 - 3 * pixelsPerUnit / 2, height / 2);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(parts[0].kind, HitKind::Triangle);
    EXPECT_EQ(parts[0].path, (NodePath{0, 1, 0}));
    EXPECT_EQ(parts[0].index, 0);
}

TEST_F(ToolPick, ABoxWithTheNameOfATextsPartIsStillTheChild)
{
    OrvFontString& text = AddText("I");
    text.SetJustification(1);
    auto* const box = new DrawingObject;  // drawn as lines, without a name of its own
    box->SetEditable();
    text.AddChild(box);
    box->SetLocalBounds(Vector(1, -0.5f, 0.5f), Vector(2, 0.5f, 1));
    box->SetShowScalingBox();
    view.SetDrawingModeExtentsBox();
    const SceneDocument document = Load();
    folder.Write("s.orv", document.Bytes());
    // The flag to show its box is not stored, but this mode shows the boxes of all.
    const std::string middle = std::to_string(height / 2 + pixelsPerUnit / 2);
    const ToolResult result = folder.Run(
        {"pick", "s.orv", std::to_string(width / 2 + 3 * pixelsPerUnit / 2) + "," + middle,
         "--size", "256x96", "--json"});
    EXPECT_EQ(result.status, 0) << result.err;
    const Json json = Json::parse(result.out);
    EXPECT_EQ(json.at("kind").get<std::string>(), "node");
    EXPECT_EQ(json.at("path").get<std::vector<double>>(), (std::vector<double>{0, 0}));
}

TEST_F(ToolPick, WiresAreFoundInOutlinesAlsoBesideThePixel)
{
    OrvFontString& text = AddText("I");
    text.SetJustification(1);
    view.SetDrawingModeOutline();
    SceneDocument document = Load();
    ScenePicker picker = PickerOf(document);
    std::set<int> columns;
    const int row = height / 2;
    for (int x = 0; x < width; ++x)
    {
        for (const PickedPart& part : picker.Pick(x, row))
        {
            EXPECT_EQ(part.part, LetterPart::Outline);
            EXPECT_EQ(part.index, 0);
            columns.insert(x);
        }
    }
    // Two edges of the stem, each found from up to three pixels away; not between nor beside them.
    EXPECT_GE(columns.size(), 6u);
    EXPECT_LE(columns.size(), 12u);
    EXPECT_LT(*columns.rbegin() - *columns.begin(), 16);
}

TEST_F(ToolPick, LightsAreFoundWhereThePictureShowsThem)
{
    LightObject& light = *scene.GetLightByIndex(3);
    light.SetInUse();
    light.ClearDirectional();
    light.SetTransform(CoordinateTransform());
    NamedColor colors("Lamp");
    light.SetColors(colors);
    EXPECT_EQ(Run("128,48").out, "nothing but the background\n");
    view.SetShowLightsMode();
    EXPECT_EQ(Run("128,48").out, "light 3 \"Lamp\"\n");
    const Json json = Json::parse(Run("128,48", {"--json"}).out);
    EXPECT_EQ(json.at("kind").get<std::string>(), "light");
    EXPECT_EQ(json.at("light").get<double>(), 3);
    EXPECT_EQ(json.at("name").get<std::string>(), "Lamp");
    scene.SetRotateLightsWithScene();
    EXPECT_EQ(Run("128,48").out, "light 3 \"Lamp\"\n");
    EXPECT_EQ(Run("1,1").out, "nothing but the background\n");
}

TEST_F(ToolPick, PixelsAreCountedInPicturesOfAnySize)
{
    OrvFontString& text = AddText("I");
    text.SetJustification(1);
    text.SetTranslation(DVector(2.0, 0.0, 0.0));
    SceneDocument document = Load();
    const int x = width / 2 + 2 * pixelsPerUnit;
    EXPECT_EQ(PickerOf(document).Pick(x, height / 2).size(), 1u);
    EXPECT_EQ(PickerOf(document).Pick(width - x, height / 2).size(), 0u);
    constexpr int times = 375;  // up to 96,000 pixels across
    ScenePicker large = PickerOf(document, {width * times, height * times});
    EXPECT_EQ(large.Pick(x * times, height * times / 2).size(), 1u);
    EXPECT_EQ(large.Pick((width - x) * times, height * times / 2).size(), 0u);
}

TEST_F(ToolPick, TheAnswerNamesTextCharacterAndPart)
{
    OrvFontString& text = AddText("\xC4I");  // Ä in western
    text.SetJustification(1);
    text.SetScale(DVector(1.0, 1.0, 0.2));
    // A character's cell right of the middle: its stem lies half a cell away.
    const int x = width / 2 + static_cast<int>(std::lround(pixelsPerUnit * 1233 / 2048.0 / 2));
    // Bounds are measured on drawing alone when nobody asked before: the document has them.
    SceneDocument document = Load();
    folder.Write("s.orv", document.Bytes());
    const std::vector<std::string> arguments = {
        "pick", "s.orv", std::to_string(x) + "," + std::to_string(height / 2), "--size", "256x96"};
    EXPECT_EQ(folder.Run(arguments).out, "0 OrvFontString \"ÄI\", character 1 \"I\", face\n");
    std::vector<std::string> inJson = arguments;
    inJson.push_back("--json");
    const Json json = Json::parse(folder.Run(inJson).out);
    EXPECT_EQ(KeysOf(json), (std::vector<std::string>{"kind", "path", "class", "name", "index",
                                                      "character", "part", "depth", "behind"}));
    EXPECT_EQ(json.at("kind").get<std::string>(), "character");
    EXPECT_EQ(json.at("path").get<std::vector<double>>(), std::vector<double>{0});
    EXPECT_EQ(json.at("name").get<std::string>(), "ÄI");
    EXPECT_EQ(json.at("index").get<double>(), 1);
    EXPECT_EQ(json.at("character").get<std::string>(), "I");
    EXPECT_EQ(json.at("part").get<std::string>(), "face");
    EXPECT_EQ(json.at("behind").size(), 0u);
}

TEST_F(ToolPick, APixelOfTheBackgroundIsStatus0)
{
    const ToolResult result = Run("0,0");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "nothing but the background\n");
    EXPECT_EQ(Run("0,0", {"--json"}).out, "null\n");
    EXPECT_EQ(Run("255,95").status, 0);
}

TEST_F(ToolPick, APixelOutsideThePictureIsStatus2)
{
    for (const char* const pixel : {"256,0", "0,96", "1000000,0", "1,", ",1", "1", "1,2,3", "a,b",
                                    "1.5,2", "", "-1,0", " 1,1", "1x1", "99999999999,1"})
    {
        const ToolResult result = Run(pixel);
        EXPECT_EQ(result.status, 2) << pixel;
        EXPECT_EQ(result.out, "") << pixel;
        EXPECT_EQ(result.err.substr(0, 8), "orvane: ") << pixel;
    }
    Save();
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"pick"},
          {"pick", "s.orv"},
          {"pick", "s.orv", "1,1"},
          {"pick", "s.orv", "1,1", "--size", "0x5"},
          {"pick", "s.orv", "1,1", "--size", "100001x5"},
          {"pick", "s.orv", "1,1", "--size", "5,5"},
          {"pick", "s.orv", "1,1", "--size", "64x64", "--xml"}})
    {
        EXPECT_EQ(folder.Run(arguments).status, 2) << testing::PrintToString(arguments);
    }
}

TEST_F(ToolPick, ASceneThatCannotBePickedGivesStatus1)
{
    EXPECT_EQ(folder.Run({"pick", "none.orv", "1,1", "--size", "64x64"}).status, 1);
    AddText("I").SetBevelStyle(7);
    const ToolResult result = Run("1,1");
    EXPECT_EQ(result.status, 1);
    // Before it stands that the font is not installed.
    EXPECT_TRUE(
        result.err.ends_with("orvane: the scene cannot be picked: node 0, OrvFontString \"I\", has "
                             "the edge style 7 where 0 to 2 are known\n"))
        << result.err;

    scene.DestroyChildren();
    DrawingObject* deepest = &scene;
    for (int i = 0; i < 100; ++i)  // more than OpenGL stacks
    {
        auto* const below = new DrawingObject;
        deepest->AddChild(below);
        deepest = below;
    }
    const ToolResult deep = Run("1,1");
    EXPECT_EQ(deep.status, 1);
    EXPECT_EQ(
        deep.err,
        "orvane: s.orv: found nodes that nest 101 levels deep, expected at most 30, as OpenGL "
        "draws them\n");
}

}  // namespace
