// SPDX-License-Identifier: MIT
// Texts, numbers and keys in the output of `orvane info`.
#include "tests/support/SavedScene.h"

#include <cmath>

namespace
{

using ToolInfoText = SavedScene;

TEST_F(ToolInfoText, TheJsonHasTheDocumentedKeysInOrder)
{
    AddText("x");
    scene.SaveCurrentView("a", view.GetTransform(), std::make_unique<ProjectionData>().get());
    Save();
    const Json json = InfoAsJson();
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

TEST_F(ToolInfoText, TextsOfACodePageAreShownInUtf8)
{
    AddText("\xC5\xEB\xEB\xDC\xE4\xE1");  // Ελλάδα
    Save(1253);
    EXPECT_EQ(InfoAsJson().at("scene").at("children").at(0).at("text").get<std::string>(),
              "Ελλάδα");
    EXPECT_EQ(InfoAsJson().at("codePage").get<double>(), 1253);
    EXPECT_NE(RunInfo().out.find("\"Ελλάδα\""), std::string::npos);
}

TEST_F(ToolInfoText, ControlCharactersAreEscaped)
{
    AddText("a\"\\\t\x1B[2J\x7F\x9B\r\n/");  // 0x9B is a bracket in western, 0x81 nothing
    AddText("\x81");
    Save();
    const ToolResult result = RunInfo();
    EXPECT_NE(result.out.find("\"a\\\"\\\\\\u0009\\u001b[2J\\u007f›\\r\\n/\"\n"), std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("\"\\u0081\"\n"), std::string::npos) << result.out;
    const Json children = InfoAsJson().at("scene").at("children");
    EXPECT_EQ(children.at(0).at("text").get<std::string>(), "a\"\\\t\x1B[2J\x7F›\r\n/");
    EXPECT_EQ(children.at(1).at("text").get<std::string>(), "\u0081");

    // A name that is not UTF-8 makes no broken JSON.
    folder.Write("\xFF\xC3(\xE2\x82.orv", folder.Read("s.orv"));
    const ToolResult odd = folder.Run({"info", "\xFF\xC3(\xE2\x82.orv", "--json"});
    EXPECT_EQ(Json::parse(odd.out).at("file").get<std::string>(), "\uFFFD\uFFFD(\uFFFD\uFFFD.orv");
}

TEST_F(ToolInfoText, InfinityAndNotANumberAreNullInJson)
{
    AddText("x").SetInterLineSpacing(std::nanf(""));
    AddText("x").SetInterLineSpacing(INFINITY);
    AddText("x").SetInterLineSpacing(0.1f);
    Save();
    const Json children = InfoAsJson().at("scene").at("children");
    EXPECT_TRUE(children.at(0).at("lineSpacing").is_null());
    EXPECT_TRUE(children.at(1).at("lineSpacing").is_null());
    EXPECT_EQ(children.at(2).at("lineSpacing").get<double>(),
              0.1);  // in as many digits as a float needs
    EXPECT_NE(children.at(2).at("lineSpacing").get<double>(), static_cast<double>(0.1f));
}

TEST_F(ToolInfoText, TheTextHasNoSpacesAtTheEndsOfLines)
{
    AddText("x");
    Save();
    const ToolResult result = RunInfo();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out.find(" \n"), std::string::npos);
    const std::string size = std::to_string(folder.Read("s.orv").size());
    EXPECT_EQ(result.out.substr(0, result.out.find('\n')),
              "\"s.orv\": a scene, " + size.substr(0, 2) + "," + size.substr(2) +
                  " bytes, texts in code page 1252");
}

}  // namespace
