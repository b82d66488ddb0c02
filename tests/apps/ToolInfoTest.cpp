// SPDX-License-Identifier: MIT
// What `orvane info` prints of the parts of a scene.
#include "import3ds/ThreeDStudioObject.h"
#include "import3ds/TriangularMeshObject.h"
#include "tests/support/SavedScene.h"

#include <cmath>

namespace
{

using Numbers = std::vector<double>;

using ToolInfo = SavedScene;

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
    const Json node = InfoAsJson().at("scene").at("children").at(0);
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

    const Json node = InfoAsJson().at("scene").at("children").at(0);
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
    const std::string out = RunInfo().out;
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

    const Json root = InfoAsJson().at("scene");
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

    const std::string out = RunInfo().out;
    EXPECT_NE(out.find("\nNodes: 2\n"), std::string::npos);  // those that are not deleted
    EXPECT_NE(out.find("\n  1    DrawingObject, deleted\n"), std::string::npos) << out;
    EXPECT_NE(out.find("\n  1.0  DrawingObject\n       at      1 2 3\n"), std::string::npos) << out;
}

TEST_F(ToolInfo, BoundsAreReadFromTheFile)
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
    const Json children = InfoAsJson().at("scene").at("children");
    const Json& bounds = children.at(0).at("bounds");
    EXPECT_EQ(bounds.at("own").at("minimum").get<std::vector<double>>(), (Numbers{-1, -2, -3}));
    EXPECT_EQ(bounds.at("own").at("maximum").get<std::vector<double>>(), (Numbers{1, 2, 3}));
    EXPECT_EQ(bounds.at("parent").at("minimum").get<std::vector<double>>(), (Numbers{9, -2, -3}));
    EXPECT_EQ(bounds.at("parent").at("maximum").get<std::vector<double>>(), (Numbers{11, 2, 3}));
    EXPECT_TRUE(children.at(1).at("bounds").is_null());
}

TEST_F(ToolInfo, MeshesHaveNamesAndCountsAndImportsHaveMaterials)
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
    const Json node = InfoAsJson().at("scene").at("children").at(0);
    EXPECT_EQ(node.at("class").get<std::string>(), "ThreeDStudioObject");
    EXPECT_EQ(node.at("materials").at(0).at("name").get<std::string>(), "Steel");
    EXPECT_EQ(node.at("materials").at(0).at("diffuse").get<std::vector<double>>(),
              (Numbers{0.5, 0.5, 0.75, 1}));
    EXPECT_EQ(node.at("children").at(0).at("name").get<std::string>(), "Cube");
    EXPECT_EQ(node.at("children").at(0).at("vertices").get<double>(), 4);
    EXPECT_EQ(node.at("children").at(0).at("faces").get<double>(), 1);
    const std::string out = RunInfo().out;
    EXPECT_NE(out.find("TriangularMeshObject \"Cube\"\n"), std::string::npos);
    EXPECT_NE(out.find("4 vertices, 1 face\n"), std::string::npos);
}

TEST_F(ToolInfo, LightsHaveAStateAKindAPlaceAndADirection)
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

    const Json lights = InfoAsJson().at("lights");
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

    const std::string out = RunInfo().out;
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

TEST_F(ToolInfo, TheSceneHasLightingAndABackground)
{
    scene.SetBackgroundColor({0.25f, 0.5f, 0.75f, 1});
    scene.SetGlobalAmbientColor({0.125f, 0, 0, 1});
    scene.SetLightingLocalViewer();
    scene.ClearRotateLightsWithScene();
    Save();
    const Json json = InfoAsJson();
    EXPECT_EQ(json.at("background").at("color").get<std::vector<double>>(),
              (Numbers{0.25, 0.5, 0.75, 1}));
    EXPECT_TRUE(json.at("background").at("picture").is_null());
    EXPECT_EQ(json.at("ambientLight").get<std::vector<double>>(), (Numbers{0.125, 0, 0, 1}));
    EXPECT_TRUE(json.at("localViewer").get<bool>());
    EXPECT_EQ(json.at("lightsFollow").get<std::string>(), "camera");
    EXPECT_NE(RunInfo().out.find("  lighting    ambient #200000, lights follow the camera\n"),
              std::string::npos);
}

TEST_F(ToolInfo, TexturesAndBackgroundPicturesHaveFilesAndPlacements)
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

    const Json json = InfoAsJson();
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

TEST_F(ToolInfo, AMissingPictureIsReplacedByTheFileOfThatNameBesideTheSceneOrKeepsItsName)
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
    const Json children = InfoAsJson().at("scene").at("children");
    EXPECT_EQ(children.at(0).at("texture").at("file").get<std::string>(), folder.Path("wood.bmp"));
    EXPECT_TRUE(children.at(0).at("texture").at("on").get<bool>());
    EXPECT_TRUE(children.at(0).at("texture").at("found").get<bool>());
    EXPECT_EQ(children.at(1).at("texture").at("file").get<std::string>(),
              "/nowhere/elsewhere/stone.bmp");
    EXPECT_FALSE(children.at(1).at("texture").at("found").get<bool>());
    EXPECT_NE(RunInfo().out.find("\"/nowhere/elsewhere/stone.bmp\", nearest, 1 times across, "
                                 "switched off, not found in the scene's folder\n"),
              std::string::npos);
}

TEST_F(ToolInfo, TheCameraOfTheViewAndTheSavedViewsAreListed)
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

    const Json json = InfoAsJson();
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
    EXPECT_NE(RunInfo().out.find("\nSaved views: 2\n"
                                 "  0  \"Front\"   perspective, 20 degrees, lens 99.25 mm  "
                                 "moves the scene by 4 5 6\n"
                                 "  1  \"Straße\"  perspective, 20 degrees, lens 99.25 mm  "
                                 "moves the scene by 4 5 6\n"),
              std::string::npos);
}

}  // namespace
