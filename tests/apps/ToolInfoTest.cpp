// SPDX-License-Identifier: MIT
// What is in a scene's file.

#include "apps/cli/Errors.h"
#include "apps/cli/info/SceneInfo.h"
#include "extrude/Library.h"
#include "import3ds/ThreeDStudioObject.h"
#include "import3ds/TriangularMeshObject.h"
#include "platform/Fonts.h"
#include "scene/OrvFontString.h"
#include "tests/support/Json.h"
#include "tests/support/PrivateFonts.h"
#include "tests/support/SceneFiles.h"
#include "tests/support/SceneRecords.h"
#include "tests/support/StubFont.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <random>

namespace
{

using Numbers = std::vector<double>;

/// A number as a float holds it.
double F(float value)
{
    return value;
}

/// A scene in a file, and what the tool tells of it.
class ToolInfo : public testing::Test
{
protected:
    ToolInfo() { folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"}); }

    OrvFontString& AddText(const char* characters, DrawingObject* parent = nullptr)
    {
        auto* const text = new OrvFontString;
        text->SetTextString(characters);
        (parent != nullptr ? parent : &scene)->AddChild(text);
        return *text;
    }

    void Save(DWORD codePage = westernCodePage)
    {
        folder.Write("s.orv", SceneFileBytes(scene, view, codePage));
    }

    ToolResult Tell(const std::vector<std::string>& more = {})
    {
        std::vector<std::string> arguments = {"info", "s.orv"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return folder.Run(arguments);
    }

    Json TellInJson()
    {
        const ToolResult result = Tell({"--json"});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return Json::parse(result.out);
    }

    ToolFolder folder;
    SceneObject scene;
    ViewObject view;
};

TEST_F(ToolInfo, ATextHasItsCharactersItsFontAndItsEdges)
{
    OrvFontString& text = AddText("One\r\nTwo");
    text.SetBevelStyle(2);
    text.SetBevelDepth(0.125f);
    text.SetBevelLocation(1);
    text.SetJustification(2);
    text.SetInterCharacterSpacing(0.25f);
    text.SetInterLineSpacing(-0.5f);
    text.SetScaleBevels();
    Save();
    const Json node = TellInJson().at("scene").at("children").at(0);
    EXPECT_EQ(node.at("class").get<std::string>(), "OrvFontString");
    EXPECT_EQ(node.at("path").get<std::vector<double>>(), Numbers{0});
    EXPECT_EQ(node.at("text").get<std::string>(), "One\r\nTwo");
    EXPECT_EQ(node.at("font").get<std::string>(), "Edge Test Regular");  // the only one there is
    EXPECT_EQ(node.at("style").get<std::string>(), "round");
    EXPECT_EQ(node.at("bevel").get<double>(), 0.125);
    EXPECT_EQ(node.at("bevelOn").get<std::string>(), "back");
    EXPECT_TRUE(node.at("bevelScales").get<bool>());
    EXPECT_EQ(node.at("align").get<std::string>(), "right");
    EXPECT_EQ(node.at("characterSpacing").get<double>(), 0.25);
    EXPECT_EQ(node.at("lineSpacing").get<double>(), -0.5);
}

TEST_F(ToolInfo, MaterialsHaveAllTheirColors)
{
    OrvFontString& text = AddText("x");
    NamedColor face("Gold");
    face.SetAmbientColor({0.125f, 0.25f, 0.5f, 1});
    face.SetDiffuseColor({0.75f, 0.5f, 0.25f, 0.5f});
    face.SetEmissionColor({0, 0.0625f, 0, 1});
    face.SetSpecularColor({1, 1, 0.1f, 1});
    face.SetShininess(16);
    text.SetFaceColor(face);
    NamedColor edge("Rim");
    edge.SetDiffuseColor({1, 0, 0, 1});
    text.SetEdgeColor(edge);
    NamedColor bevel("Rounding");
    bevel.SetDiffuseColor({0, 0, 1, 1});
    text.SetBevelColor(bevel);
    Save();

    const Json node = TellInJson().at("scene").at("children").at(0);
    const Json& materials = node.at("materials");
    EXPECT_EQ(KeysOf(materials), (std::vector<std::string>{"face", "edge", "bevel"}));
    EXPECT_EQ(materials.at("face").at("name").get<std::string>(), "Gold");
    EXPECT_EQ(materials.at("face").at("ambient").get<std::vector<double>>(),
              (Numbers{0.125, 0.25, 0.5, 1}));
    EXPECT_EQ(materials.at("face").at("diffuse").get<std::vector<double>>(),
              (Numbers{0.75, 0.5, 0.25, 0.5}));
    EXPECT_EQ(materials.at("face").at("emission").get<std::vector<double>>(),
              (Numbers{0, 0.0625, 0, 1}));
    EXPECT_EQ(materials.at("face").at("specular").get<std::vector<double>>(),
              (Numbers{1, 1, 0.1, 1}));
    EXPECT_EQ(materials.at("face").at("shininess").get<double>(), 16);
    EXPECT_EQ(materials.at("edge").at("diffuse").get<std::vector<double>>(), (Numbers{1, 0, 0, 1}));
    EXPECT_EQ(materials.at("bevel").at("name").get<std::string>(), "Rounding");
    EXPECT_TRUE(node.at("transparent").get<bool>());  // by the face's alpha

    // For people the colours as they are written: 0.75 is the step 191.25, 0.5 is 127.5.
    const std::string out = Tell().out;
    EXPECT_NE(out.find("face    #bf804080  ambient #204080  specular #ffff1a  emission #001000  "
                       "shininess 16  \"Gold\"\n"),
              std::string::npos)
        << out;
}

TEST_F(ToolInfo, NodesAreATreeWithTheirPaths)
{
    OrvFontString& first = AddText("first");
    AddText("below", &first);
    DrawingObject* const plain = new DrawingObject;
    scene.AddChild(plain);
    plain->SetDeleted();
    DrawingObject* const inside = new DrawingObject;
    plain->AddChild(inside);
    inside->SetTranslation(DVector(1.0, 2.0, 3.0));
    Save();

    const Json root = TellInJson().at("scene");
    EXPECT_EQ(root.at("class").get<std::string>(), "SceneObject");
    EXPECT_EQ(root.at("path").size(), 0u);
    EXPECT_FALSE(root.contains("texture"));  // it is the background
    ASSERT_EQ(root.at("children").size(), 2u);
    EXPECT_EQ(root.at("children").at(0).at("children").at(0).at("text").get<std::string>(),
              "below");
    EXPECT_EQ(root.at("children").at(0).at("children").at(0).at("path").get<std::vector<double>>(),
              (Numbers{0, 0}));
    EXPECT_FALSE(root.at("children").at(0).at("deleted").get<bool>());
    EXPECT_TRUE(root.at("children").at(1).at("deleted").get<bool>());
    EXPECT_EQ(root.at("children").at(1).at("class").get<std::string>(), "DrawingObject");
    const Json& deepest = root.at("children").at(1).at("children").at(0);
    EXPECT_EQ(deepest.at("path").get<std::vector<double>>(), (Numbers{1, 0}));
    EXPECT_EQ(deepest.at("transform").get<std::vector<double>>(),
              (Numbers{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));

    const std::string out = Tell().out;
    EXPECT_NE(out.find("\nNodes: 2\n"), std::string::npos);  // those that are not deleted
    EXPECT_NE(out.find("\n  1    DrawingObject, deleted\n"), std::string::npos) << out;
    EXPECT_NE(out.find("\n  1.0  DrawingObject\n       at      1 2 3\n"), std::string::npos) << out;
}

TEST_F(ToolInfo, BoundsAreThoseOfTheFile)
{
    auto* const node = new DrawingObject;
    scene.AddChild(node);
    scene.AddChild(new DrawingObject);
    node->SetTranslation(DVector(10.0, 0.0, 0.0));
    Sphere sphere;
    sphere.CalculateSphere(Vector(-1, -2, -3), Vector(1, 2, 3));
    node->bounds.ResetLocalBounds();
    node->bounds.AccumulateLocalBounds(Vector(-1, -2, -3), Vector(1, 2, 3), sphere);
    node->bounds.CalculateBounds(*node->GetTransform());
    Save();
    const Json children = TellInJson().at("scene").at("children");
    const Json& bounds = children.at(0).at("bounds");
    EXPECT_EQ(bounds.at("own").at("minimum").get<std::vector<double>>(), (Numbers{-1, -2, -3}));
    EXPECT_EQ(bounds.at("own").at("maximum").get<std::vector<double>>(), (Numbers{1, 2, 3}));
    EXPECT_EQ(bounds.at("parent").at("minimum").get<std::vector<double>>(), (Numbers{9, -2, -3}));
    EXPECT_EQ(bounds.at("parent").at("maximum").get<std::vector<double>>(), (Numbers{11, 2, 3}));
    EXPECT_TRUE(children.at(1).at("bounds").is_null());
}

TEST_F(ToolInfo, MeshesTellTheirNamesAndSizesAndImportsTheirMaterials)
{
    auto* const import = new ThreeDStudioObject;
    NamedColor steel("Steel");
    steel.SetDiffuseColor({0.5f, 0.5f, 0.75f, 1});
    import->materials.Add(steel);
    auto* const mesh = new TriangularMeshObject;
    mesh->SetName("Cube");
    for (int i = 0; i < 4; ++i)
    {
        mesh->GetVerticies()->Add(Vector(static_cast<float>(i), 0, 0));
    }
    mesh->GetFaces()->Add(TriangularFace());
    import->AddChild(mesh);
    scene.AddChild(import);
    Save();
    const Json node = TellInJson().at("scene").at("children").at(0);
    EXPECT_EQ(node.at("class").get<std::string>(), "ThreeDStudioObject");
    EXPECT_EQ(node.at("materials").at(0).at("name").get<std::string>(), "Steel");
    EXPECT_EQ(node.at("materials").at(0).at("diffuse").get<std::vector<double>>(),
              (Numbers{0.5, 0.5, 0.75, 1}));
    EXPECT_EQ(node.at("children").at(0).at("name").get<std::string>(), "Cube");
    EXPECT_EQ(node.at("children").at(0).at("vertices").get<double>(), 4);
    EXPECT_EQ(node.at("children").at(0).at("faces").get<double>(), 1);
    const std::string out = Tell().out;
    EXPECT_NE(out.find("TriangularMeshObject \"Cube\"\n"), std::string::npos);
    EXPECT_NE(out.find("4 vertices, 1 face\n"), std::string::npos);
}

TEST_F(ToolInfo, LightsTellStateKindPlaceAndDirection)
{
    LightObject& third = *scene.GetLightByIndex(2);
    NamedColor colors("Lamp");
    colors.SetAmbientColor({0, 0, 0.5f, 1});
    colors.SetDiffuseColor({1, 0.5f, 0, 1});
    colors.SetSpecularColor({0, 1, 0, 1});
    third.SetColors(colors);
    third.SetInUse();
    third.ClearActive();
    third.ClearDirectional();
    third.SetTransform(CoordinateTransform());
    third.SetTranslation(DVector(1.0, 2.0, 3.0));
    third.SetSpotCutoffAngle(30);
    third.SetSpotExponent(4);
    Save();

    const Json lights = TellInJson().at("lights");
    ASSERT_EQ(lights.size(), 8u);
    const Json& lamp = lights.at(2);
    EXPECT_EQ(lamp.at("index").get<double>(), 2);
    EXPECT_EQ(lamp.at("number").get<double>(), 2);
    EXPECT_EQ(lamp.at("name").get<std::string>(), "Lamp");
    EXPECT_TRUE(lamp.at("inUse").get<bool>());
    EXPECT_FALSE(lamp.at("on").get<bool>());
    EXPECT_EQ(lamp.at("kind").get<std::string>(), "positional");
    EXPECT_EQ(lamp.at("ambient").get<std::vector<double>>(), (Numbers{0, 0, 0.5, 1}));
    EXPECT_EQ(lamp.at("diffuse").get<std::vector<double>>(), (Numbers{1, 0.5, 0, 1}));
    EXPECT_EQ(lamp.at("specular").get<std::vector<double>>(), (Numbers{0, 1, 0, 1}));
    EXPECT_EQ(lamp.at("position").get<std::vector<double>>(), (Numbers{1, 2, 3}));
    EXPECT_EQ(lamp.at("direction").get<std::vector<double>>(), (Numbers{0, 0, -1}));
    EXPECT_EQ(lamp.at("spotCutoff").get<double>(), 30);
    EXPECT_EQ(lamp.at("spotExponent").get<double>(), 4);

    // A new scene's first light is free; it stands 30 degrees up and shines down from there.
    EXPECT_FALSE(lights.at(0).at("inUse").get<bool>());
    EXPECT_TRUE(lights.at(0).at("on").get<bool>());
    EXPECT_EQ(lights.at(0).at("kind").get<std::string>(), "directional");
    const Numbers direction = lights.at(0).at("direction").get<std::vector<double>>();
    EXPECT_NEAR(direction[0], 0, 1e-6);
    EXPECT_NEAR(direction[1], -0.5, 1e-6);
    EXPECT_NEAR(direction[2], -std::sqrt(0.75), 1e-6);

    const std::string out = Tell().out;
    EXPECT_NE(out.find("\nLights: 3 of 8 in use\n"
                       "  0  free    on   directional  #999999  towards 0 -0.5 -0.866         "
                       "\"Default Light\"\n"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("\n  2  in use  off  positional   #ff8000  at 1 2 3                      "
                       "\"Lamp\"\n"),
              std::string::npos)
        << out;
}

TEST_F(ToolInfo, TheLightingAndTheBackgroundAreTheScenes)
{
    scene.SetBackgroundColor({0.25f, 0.5f, 0.75f, 1});
    scene.SetGlobalAmbientColor({0.125f, 0, 0, 1});
    scene.SetLightingLocalViewer();
    scene.ClearRotateLightsWithScene();
    Save();
    const Json json = TellInJson();
    EXPECT_EQ(json.at("background").at("color").get<std::vector<double>>(),
              (Numbers{0.25, 0.5, 0.75, 1}));
    EXPECT_TRUE(json.at("background").at("picture").is_null());
    EXPECT_EQ(json.at("ambientLight").get<std::vector<double>>(), (Numbers{0.125, 0, 0, 1}));
    EXPECT_TRUE(json.at("localViewer").get<bool>());
    EXPECT_EQ(json.at("lightsFollow").get<std::string>(), "camera");
    EXPECT_NE(Tell().out.find("  lighting    ambient #200000, lights follow the camera\n"),
              std::string::npos);
}

TEST_F(ToolInfo, TexturesAndBackgroundPicturesTellTheirFilesAndHowTheyLie)
{
    folder.Write("wood.bmp", "BM");  // enough to be there
    const CString file = folder.Path("wood.bmp").c_str();
    scene.GetTexture()->Load(file);
    scene.GetTexture()->placement = 2;
    scene.GetTexture()->SetHorizontalLocation(12.5);
    scene.GetTexture()->SetVerticalLocation(-3);
    TextureMap& texture = *AddText("x").GetTexture();
    texture.Load(file);
    texture.textureFlags |= TextureMap::Textured;
    texture.SetQuality(1);
    texture.SetRepeatRate(2.5);
    texture.SetScaleWithObject();
    AddText("plain");
    Save();

    const Json json = TellInJson();
    const Json& picture = json.at("background").at("picture");
    EXPECT_EQ(picture.at("name").get<std::string>(), "wood");
    EXPECT_EQ(picture.at("file").get<std::string>(), file.Text());
    EXPECT_EQ(picture.at("placement").get<std::string>(), "center");
    EXPECT_EQ(picture.at("at").get<std::vector<double>>(), (Numbers{12.5, -3}));
    const Json& laid = json.at("scene").at("children").at(0).at("texture");
    EXPECT_EQ(laid.at("file").get<std::string>(), file.Text());
    EXPECT_TRUE(laid.at("on").get<bool>());
    EXPECT_EQ(laid.at("quality").get<std::string>(), "linear");
    EXPECT_EQ(laid.at("repeat").get<double>(), 2.5);
    EXPECT_TRUE(laid.at("scales").get<bool>());
    EXPECT_TRUE(laid.at("blended").get<bool>());
    EXPECT_TRUE(json.at("scene").at("children").at(1).at("texture").is_null());
}

TEST_F(ToolInfo, APictureThatIsGoneIsFoundBesideTheFileByItsName)
{
    folder.Write("wood.bmp", "BM");
    TextureMap& texture = *AddText("x").GetTexture();
    texture.Load(folder.Path("wood.bmp").c_str());
    texture.SetFilename("/nowhere/elsewhere/wood.bmp");
    texture.textureFlags |= TextureMap::Textured;
    TextureMap& lost = *AddText("y").GetTexture();
    lost.Load(folder.Path("wood.bmp").c_str());
    lost.SetName("stone");
    lost.SetFilename("/nowhere/elsewhere/stone.bmp");
    Save();
    const Json children = TellInJson().at("scene").at("children");
    EXPECT_EQ(children.at(0).at("texture").at("file").get<std::string>(), folder.Path("wood.bmp"));
    EXPECT_TRUE(children.at(0).at("texture").at("on").get<bool>());
    EXPECT_TRUE(children.at(1).at("texture").is_null());
}

TEST_F(ToolInfo, CamerasAreTheViewsAndTheSavedOnes)
{
    view.SetDrawingModeOutline();
    view.SetShowLightsMode();
    view.SetProjectionOrthographic();
    view.SetProjectionOrthographicWidth(8);
    CoordinateTransform aside;
    aside.Translate(DVector(4.0, 5.0, 6.0));
    ProjectionData lens;
    lens.SetFieldOfViewAngle(20);
    scene.SaveCurrentView("Front", &aside, &lens);
    scene.SaveCurrentView(
        "Stra\xDF"
        "e",
        &aside, &lens);
    Save();

    const Json json = TellInJson();
    const Json& camera = json.at("view");
    EXPECT_EQ(camera.at("projection").get<std::string>(), "orthographic");
    EXPECT_EQ(camera.at("orthographicSize").get<std::vector<double>>(), (Numbers{8, 8}));
    EXPECT_EQ(camera.at("mode").get<std::string>(), "outline");
    EXPECT_TRUE(camera.at("showsLights").get<bool>());
    EXPECT_FALSE(camera.at("showsTextures").get<bool>());
    EXPECT_EQ(camera.at("transform")
                  .get<std::vector<double>>(),  // a new camera stands five units in front
              (Numbers{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, -5, 1}));
    ASSERT_EQ(json.at("savedViews").size(), 2u);
    const Json& front = json.at("savedViews").at(0);
    EXPECT_EQ(front.at("name").get<std::string>(), "Front");
    EXPECT_EQ(front.at("projection").get<std::string>(), "perspective");
    EXPECT_EQ(front.at("fieldOfView").get<double>(), 20);
    EXPECT_NEAR(front.at("lens").get<double>(), 17.5 / std::tan(10 * M_PI / 180), 1e-6);
    EXPECT_EQ(front.at("transform").get<std::vector<double>>(),
              (Numbers{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 4, 5, 6, 1}));
    EXPECT_EQ(json.at("savedViews").at(1).at("name").get<std::string>(), "Straße");
    // The letter of two bytes does not shift the column behind it.
    EXPECT_NE(Tell().out.find("\nSaved views: 2\n"
                              "  0  \"Front\"   perspective, 20 degrees, lens 99.25 mm  "
                              "moves the scene by 4 5 6\n"
                              "  1  \"Straße\"  perspective, 20 degrees, lens 99.25 mm  "
                              "moves the scene by 4 5 6\n"),
              std::string::npos);
}

TEST_F(ToolInfo, TheKeysOfTheJsonAreThese)
{
    AddText("x");
    scene.SaveCurrentView("a", view.GetTransform(), std::make_unique<ProjectionData>().get());
    Save();
    const Json json = TellInJson();
    using Keys = std::vector<std::string>;
    EXPECT_EQ(KeysOf(json),
              (Keys{"file", "kind", "bytes", "codePage", "view", "background", "ambientLight",
                    "localViewer", "lightsFollow", "lights", "savedViews", "scene", "records"}));
    EXPECT_EQ(json.at("file").get<std::string>(), "s.orv");
    EXPECT_EQ(json.at("kind").get<std::string>(), "scene");
    EXPECT_EQ(json.at("bytes").get<double>(), static_cast<double>(folder.Read("s.orv").size()));
    EXPECT_EQ(json.at("codePage").get<double>(), 1252);
    EXPECT_EQ(KeysOf(json.at("scene").at("children").at(0)),
              (Keys{"path", "class", "text", "font", "style", "bevel", "bevelOn", "bevelScales",
                    "align", "characterSpacing", "lineSpacing", "materials", "deleted",
                    "transparent", "size", "transform", "bounds", "texture", "children"}));
    EXPECT_EQ(KeysOf(json.at("view")),
              (Keys{"projection", "fieldOfView", "lens", "orthographicSize", "transform",
                    "referenceAspect", "referenceHeight", "mode", "showsLights", "showsTextures"}));
    EXPECT_EQ(KeysOf(json.at("savedViews").at(0)),
              (Keys{"name", "projection", "fieldOfView", "lens", "orthographicSize", "transform"}));
    EXPECT_EQ(KeysOf(json.at("lights").at(0)),
              (Keys{"index", "name", "number", "inUse", "on", "kind", "ambient", "diffuse",
                    "specular", "position", "direction", "spotCutoff", "spotExponent"}));
    EXPECT_EQ(KeysOf(json.at("records").at(0)), (Keys{"class", "version", "count"}));
}

TEST_F(ToolInfo, TextsOfACodePageAreShownInUtf8)
{
    AddText("\xC5\xEB\xEB\xDC\xE4\xE1");  // Ελλάδα
    Save(1253);
    EXPECT_EQ(TellInJson().at("scene").at("children").at(0).at("text").get<std::string>(),
              "Ελλάδα");
    EXPECT_EQ(TellInJson().at("codePage").get<double>(), 1253);
    EXPECT_NE(Tell().out.find("\"Ελλάδα\""), std::string::npos);
}

TEST_F(ToolInfo, CharactersThatSteerTerminalsAreEscaped)
{
    AddText("a\"\\\t\x1B[2J\x7F\x9B\r\n/");  // 0x9B is a bracket in western, 0x81 nothing
    AddText("\x81");
    Save();
    const ToolResult result = Tell();
    EXPECT_NE(result.out.find("\"a\\\"\\\\\\u0009\\u001b[2J\\u007f›\\r\\n/\"\n"), std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("\"\\u0081\"\n"), std::string::npos) << result.out;
    const Json children = TellInJson().at("scene").at("children");
    EXPECT_EQ(children.at(0).at("text").get<std::string>(), "a\"\\\t\x1B[2J\x7F›\r\n/");
    EXPECT_EQ(children.at(1).at("text").get<std::string>(), "\u0081");

    // A name that is not UTF-8 makes no broken JSON.
    folder.Write("\xFF\xC3(\xE2\x82.orv", folder.Read("s.orv"));
    const ToolResult odd = folder.Run({"info", "\xFF\xC3(\xE2\x82.orv", "--json"});
    EXPECT_EQ(Json::parse(odd.out).at("file").get<std::string>(), "\uFFFD\uFFFD(\uFFFD\uFFFD.orv");
}

TEST_F(ToolInfo, NumbersThatJsonDoesNotHaveAreNull)
{
    AddText("x").SetInterLineSpacing(std::nanf(""));
    AddText("x").SetInterLineSpacing(INFINITY);
    AddText("x").SetInterLineSpacing(0.1f);
    Save();
    const Json children = TellInJson().at("scene").at("children");
    EXPECT_TRUE(children.at(0).at("lineSpacing").is_null());
    EXPECT_TRUE(children.at(1).at("lineSpacing").is_null());
    EXPECT_EQ(children.at(2).at("lineSpacing").get<double>(),
              0.1);  // in as many digits as a float needs
    EXPECT_NE(children.at(2).at("lineSpacing").get<double>(), F(0.1f));
}

// Versions.

std::vector<std::string> Records(const Json& json)
{
    std::vector<std::string> records;
    for (const Json& record : json.at("records"))
    {
        records.push_back(record.at("class").get<std::string>() + " " +
                          std::to_string(static_cast<int>(record.at("version").get<double>())) +
                          " x" +
                          std::to_string(static_cast<int>(record.at("count").get<double>())));
    }
    return records;
}

TEST_F(ToolInfo, RecordsAreCountedByClassAndVersion)
{
    scene.DestroyLights();
    AddText("x");
    AddText("y");
    Save();
    // Nodes: scene, view, two texts; each has one bounding element with two spheres, a box colour,
    // a texture and a transform; a text has three colours more, a view a lens.
    EXPECT_EQ(
        Records(TellInJson()),
        (std::vector<std::string>{"BoundingElement 1 x4", "Color 1 x10", "CoordinateTransform 1 x4",
                                  "DrawingObject 3 x4", "NamedColor 1 x10", "OrvFontString 1 x2",
                                  "OrvString 2 x2", "ProjectionData 4 x1", "SceneObject 3 x1",
                                  "Sphere 1 x8", "TextureMap 2 x4", "ViewObject 5 x1"}));
}

TEST_F(ToolInfo, OldRecordsAreToldByTheVersionsThatTheyHave)
{
    // A scene of version 1 whose node is of version 2, looked at by a view of version 3 with a lens
    // of version 2. The class mark says what was current then, which need not be the same.
    NodeRecord old;
    old.version = 2;
    RecordBytes bytes;
    bytes.NewClass("SceneObject", 1).Append(old.Get());
    bytes.Dword(1).Append(SceneColorsRecord()).Dword(0).Word(0);
    bytes.NewClass("ViewObject", 3).Append(ViewNodeRecord().Get());
    bytes.Dword(3).Dword(1).Dword(0);
    bytes.Dword(2).Doubles({40, 1, 40, -1}).Dword(1).Double(1);
    bytes.Dword(0).Dword(1).Dword(1).Dword(1).Dword(1);
    folder.Write("s.orv", std::string(bytes.Get().begin(), bytes.Get().end()));
    EXPECT_EQ(
        Records(TellInJson()),
        (std::vector<std::string>{"BoundingElement 1 x2", "Color 1 x2", "CoordinateTransform 1 x2",
                                  "DrawingObject 2 x1", "DrawingObject 3 x1", "NamedColor 1 x2",
                                  "ProjectionData 2 x1", "SceneObject 1 x1", "Sphere 1 x4",
                                  "TextureMap 2 x2", "ViewObject 3 x1"}));
    EXPECT_NE(Tell().out.find("\n  DrawingObject        version 2  1 record\n"
                              "  DrawingObject        version 3  1 record\n"),
              std::string::npos);
}

// For people.

TEST_F(ToolInfo, WhatPeopleReadHasNoSpacesAtTheEndsOfLines)
{
    AddText("x");
    Save();
    const ToolResult result = Tell();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out.find(" \n"), std::string::npos);
    const std::string size = std::to_string(folder.Read("s.orv").size());
    EXPECT_EQ(result.out.substr(0, result.out.find('\n')),
              "\"s.orv\": a scene, " + size.substr(0, 2) + "," + size.substr(2) +
                  " bytes, texts in code page 1252");
}

// Files that are none.

class ToolInfoRefusal : public ToolInfo
{
protected:
    std::string Refused(const std::string& content)
    {
        folder.Write("s.orv", content);
        const ToolResult result = Tell();
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        return result.err;
    }
};

TEST_F(ToolInfoRefusal, NamesTheFileThePlaceWhatIsThereAndWhatIsExpected)
{
    Save();
    const std::string good = folder.Read("s.orv");
    EXPECT_EQ(Refused(""),
              "orvane: s.orv: byte 0: the input ends after 0 of the 2 bytes of a value\n");
    EXPECT_EQ(Refused(good.substr(0, 1000)),
              "orvane: s.orv: byte 1000: the input ends after 1 of the 8 bytes of a value\n");
    EXPECT_EQ(Refused(good + "more!"), "orvane: s.orv: byte " + std::to_string(good.size() + 1) +
                                           ": other bytes behind the view than a code page\n");

    // Two objects of other classes.
    RecordBytes text;
    text.NewClass("NamedView", 2).Append(NamedViewRecord("a"));
    EXPECT_EQ(Refused(std::string(text.Get().begin(), text.Get().end())),
              "orvane: s.orv: byte 15: class NamedView where SceneObject is expected\n");
    RecordBytes unknown;
    unknown.NewClass("Sc\x1Bne", 2);
    EXPECT_EQ(Refused(std::string(unknown.Get().begin(), unknown.Get().end())),
              "orvane: s.orv: byte 11: no class Sc?ne is known\n");
    EXPECT_EQ(Refused("PNG or anything else"),
              "orvane: s.orv: byte 0: found 50 4E, expected FF FF as scenes begin\n");

    // The version of the scene's node, behind the mark, the schema, the length and the name.
    std::string newer = good;
    newer[17] = 9;
    EXPECT_EQ(Refused(newer),
              "orvane: s.orv: byte 21: class DrawingObject has a record of version 9 "
              "where 1 to 3 are known\n");
}

TEST_F(ToolInfoRefusal, OfAFileThatIsNotThereSaysSo)
{
    const ToolResult result = folder.Run({"info", "none.orv"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("none.orv"), std::string::npos);
    EXPECT_NE(result.err.find("No such file"), std::string::npos) << result.err;
    const ToolResult directory = folder.Run({"info", "."});
    EXPECT_EQ(directory.status, 1);
    EXPECT_NE(directory.err.find("directory"), std::string::npos) << directory.err;
}

TEST_F(ToolInfoRefusal, OfTheCommandLineIsStatus2)
{
    EXPECT_EQ(folder.Run({"info"}).status, 2);
    EXPECT_EQ(folder.Run({"info", "a", "b"}).status, 2);
    EXPECT_EQ(folder.Run({"info", "a", "--yaml"}).status, 2);
}

// In this process: a run for each would take minutes.
TEST_F(ToolInfo, TwoThousandDamagedFilesAreToldOrRefusedAndEndNothing)
{
    OrvFontString& text = AddText("Orvane\r\nA");
    AddText("below", &text);
    auto* const import = new ThreeDStudioObject;
    auto* const mesh = new TriangularMeshObject;
    mesh->GetVerticies()->Add(Vector(1, 2, 3));
    mesh->GetFaces()->Add(TriangularFace());
    import->AddChild(mesh);
    scene.AddChild(import);
    scene.SaveCurrentView("Front", view.GetTransform(), std::make_unique<ProjectionData>().get());
    const std::string good = SceneFileBytes(scene, view);
    const std::string path = folder.Path("s.orv");

    const PrivateFonts fonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const UINT codePage = GetACP();
    std::mt19937 random(20);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    int told = 0;
    int refused = 0;
    for (int i = 0; i < 2000; ++i)
    {
        std::string damaged = good;
        const std::size_t changes = 1 + below(4);
        for (std::size_t change = 0; change < changes; ++change)
        {
            // Small numbers, large ones and signs do most harm to counts and lengths.
            const char values[] = {0, 1, 2, 127, -128, -1, static_cast<char>(below(256))};
            damaged[below(damaged.size())] = values[below(sizeof values)];
        }
        switch (below(8))
        {
            case 0:
                damaged.resize(below(damaged.size()));
                break;
            case 1:
                damaged.erase(below(damaged.size()), 1 + below(40));
                break;
            case 2:
                damaged.insert(below(damaged.size()), 1 + below(40), static_cast<char>(below(256)));
                break;
            default:
                break;
        }
        std::ofstream(path, std::ios::binary) << damaged;
        try
        {
            const Json json = Json::parse(TellScene(path, true));
            EXPECT_EQ(json.at("kind").get<std::string>(), "scene");
            EXPECT_FALSE(TellScene(path, false).empty());
            ++told;
        }
        catch (const Failure& failure)
        {
            EXPECT_EQ(std::string(failure.what()).rfind(path + ": byte ", 0), 0u) << failure.what();
            ++refused;
        }
    }
    SetProcessCodePage(codePage);
    DetachLibrary();  // with the fonts
    AttachLibrary();
    // Most bytes are numbers of which any will do.
    EXPECT_GT(told, 500);
    EXPECT_GT(refused, 500);
}

}  // namespace
