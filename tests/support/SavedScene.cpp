// SPDX-License-Identifier: MIT
#include "tests/support/SavedScene.h"

SavedScene::SavedScene()
{
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
}

OrvFontString& SavedScene::AddText(const char* characters, DrawingObject* parent)
{
    auto* const text = new OrvFontString;
    text->SetTextString(characters);
    (parent != nullptr ? parent : &scene)->AddChild(text);
    return *text;
}

void SavedScene::Save(DWORD codePage)
{
    folder.Write("s.orv", SceneFileBytes(scene, view, codePage));
}

ToolResult SavedScene::RunInfo(const std::vector<std::string>& options)
{
    std::vector<std::string> arguments = {"info", "s.orv"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return folder.Run(arguments);
}

Json SavedScene::InfoAsJson()
{
    const ToolResult result = RunInfo({"--json"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return Json::parse(result.out);
}
