// SPDX-License-Identifier: MIT
// Scenes kept in files: what is written, drawn again, and refused.

#include "extrude/Library.h"
#include "host/CArchive.h"
#include "host/CFile.h"
#include "scene/NamedViewList.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/PictureFile.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

namespace
{

/// The objects of a file, read as the library's own readers do.
struct Loaded
{
    explicit Loaded(const std::string& path)
    {
        CreateFontList(0, nullptr);  // without which texts lose theirs
        CFile file(path.c_str(), CFile::modeRead);
        CArchive archive(&file, CArchive::load);
        scene.reset(static_cast<SceneObject*>(archive.ReadObject(RUNTIME_CLASS(SceneObject))));
        view.reset(static_cast<ViewObject*>(archive.ReadObject(RUNTIME_CLASS(ViewObject))));
        archive >> codePage;
    }
    void Store(const std::string& path) const
    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive archive(&file, CArchive::store);
        archive.WriteObject(scene.get());
        archive.WriteObject(view.get());
        archive << codePage;
        archive.Close();
    }

    std::unique_ptr<SceneObject> scene;
    std::unique_ptr<ViewObject> view;
    DWORD codePage = 0;
};

bool Contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

/// Runs that are to succeed.
void Must(ToolFolder& folder, const std::vector<std::string>& arguments)
{
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
}

TEST(ToolScene, AFileIsAnArchiveOfSceneViewAndCodePage)
{
    ToolFolder folder;
    Must(folder,
         {"render", "One", "two", "--plain", "--save", "s.orv", "--size", "300x200", "--ortho"});
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"s.orv"});  // and no picture
    const Loaded loaded(folder.Path("s.orv"));
    ASSERT_EQ(loaded.scene->GetChildCount(), 1);
    const auto* const text = dynamic_cast<OrvFontString*>(loaded.scene->GetChildByIndex(0));
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(*text->GetTextString(), "One\r\ntwo");
    EXPECT_TRUE(loaded.view->IsProjectionOrthographic());
    EXPECT_EQ(loaded.view->GetProjection().GetReferenceAspect(), 1.5);
    EXPECT_EQ(loaded.view->GetProjection().referenceHeight, 200);
    EXPECT_EQ(loaded.codePage, 1252u);
}

TEST(ToolScene, ASceneDrawnAgainIsTheSameToThePixel)
{
    const PictureFile picture("checks", 4, 4, [](int x, int y) {
        return (x + y) % 2 == 0 ? Rgb{255, 255, 255} : Rgb{200, 40, 0};
    });
    const std::vector<std::vector<std::string>> looks = {
        {"Again", "--style", "round"},
        {"\u041f\u0440\u0438\u0432\u0435\u0442", "--plain"},  // in another code page
        {"Kern AVA", "\u0394"},
        {"Wide lens", "--fov", "100", "--turn", "20,50,10"},
        {"Ortho", "--ortho", "--outline"},
        {"A very long line of text that makes the camera stand far away from it"},
        {"Lit", "--lights-follow", "scene", "--ambient", "navy", "--light", "3,on,red"},
        {"See", "--face-color", "#ff000080"},
        {"Laid", "--texture", picture.Path(), "--texture-repeat", "3", "--background",
         picture.Path(), "--background-placement", "tile"},
    };
    for (std::vector<std::string> command : looks)
    {
        const std::string which = command.front();
        ToolFolder folder;
        command.insert(command.begin(), "render");
        command.insert(command.end(), {"--size", "233x131", "-o", "a.png", "--save", "a.orv"});
        Must(folder, command);
        Must(folder, {"render", "--scene", "a.orv", "-o", "b.png", "--save", "b.orv",
                      "--allow-folder", TemporaryFolder()});
        EXPECT_TRUE(folder.Read("a.png") == folder.Read("b.png")) << which;
        EXPECT_TRUE(folder.Read("a.orv") == folder.Read("b.orv")) << which;
        EXPECT_EQ(DecodePng(folder.Read("b.png")).width, 233) << which;
    }
}

TEST(ToolScene, AnotherSizeShowsTheSameScene)
{
    ToolFolder folder;
    Must(folder, {"render", "HHHHH", "--save", "s.orv", "--size", "300x200", "--turn", "0,0,0"});
    const auto box = [&folder](const std::string& size) {
        Must(folder, {"render", "--scene", "s.orv", "-o", "x.png", "--size", size});
        return BoxOfContent(DecodePng(folder.Read("x.png")));
    };
    const PixelBox framed = box("300x200");
    EXPECT_NEAR(framed.Width(), 300 * 0.84, 300 * 0.06);
    // Narrower: as much of the width. Wider: as much of the height.
    EXPECT_NEAR(box("300x400").Width(), framed.Width(), 1);
    EXPECT_NEAR(box("900x200").Height(), framed.Height(), 1);
    EXPECT_NEAR(box("600x400").Width(), 2 * framed.Width(), 2);
}

TEST(ToolScene, ASavedViewIsPickedByItsName)
{
    ToolFolder folder;
    Must(folder, {"render", "View", "--save", "s.orv", "--size", "160x90"});
    Must(folder, {"render", "View", "--save", "front.orv", "--size", "160x90", "--turn", "0,0,0",
                  "--fov", "45", "-o", "front.png"});
    const Loaded document(folder.Path("s.orv"));
    const Loaded front(folder.Path("front.orv"));
    ProjectionData lens = front.view->GetProjection();
    document.scene->SaveCurrentView("Front", front.view->GetTransform(), &lens);
    document.scene->SaveCurrentView("Caf\xE9", front.view->GetTransform(), &lens);
    document.Store(folder.Path("s.orv"));

    Must(folder, {"render", "--scene", "s.orv", "-o", "own.png"});
    EXPECT_FALSE(folder.Read("own.png") == folder.Read("front.png"));
    for (const char* const name : {"Front", "Caf\u00e9"})
    {
        Must(folder, {"render", "--scene", "s.orv", "-o", "x.png", "--view", name});
        EXPECT_TRUE(folder.Read("x.png") == folder.Read("front.png")) << name;
    }

    const ToolResult unknown =
        folder.Run({"render", "--scene", "s.orv", "-o", "y.png", "--view", "Back"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.err,
              "orvane: s.orv: no view \"Back\" is saved; saved views: \"Front\", \"Caf\u00e9\"\n");
    EXPECT_FALSE(folder.Has("y.png"));
    const ToolResult none =
        folder.Run({"render", "--scene", "front.orv", "-o", "y.png", "--view", "Back"});
    EXPECT_EQ(none.err, "orvane: front.orv: no view \"Back\" is saved; saved views: none\n");
}

TEST(ToolScene, OptionsChangeTheLoadedSceneAndAreSaved)
{
    ToolFolder folder;
    Must(folder, {"render", "Red", "--save", "s.orv", "--size", "160x90"});
    Must(folder, {"render", "--scene", "s.orv", "--background", "#ff0000", "--light", "1,off",
                  "--turn", "0,0,0", "--save", "s.orv"});
    Must(folder, {"render", "--scene", "s.orv", "-o", "a.png"});
    Must(folder, {"render", "Red", "--background", "#ff0000", "--light", "1,off", "--turn", "0,0,0",
                  "--size", "160x90", "-o", "b.png"});
    EXPECT_EQ(DecodePng(folder.Read("a.png")).pixels.front(), (Rgb{255, 0, 0}));
    EXPECT_TRUE(folder.Read("a.png") == folder.Read("b.png"));
}

TEST(ToolScene, AFileIsReplacedWholeOrNotAtAll)
{
    ToolFolder folder;
    folder.Write("s.orv", "precious");
    const ToolResult result =
        folder.RunInShell("ulimit -f 1; exec \"$@\"", {"render", "x", "--save", "s.orv"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(Contains(result.err, "s.orv")) << result.err;
    EXPECT_EQ(folder.Read("s.orv"), "precious");
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"s.orv"});
    EXPECT_EQ(folder.Run({"render", "x", "--save", "missing/s.orv"}).status, 1);
}

TEST(ToolScene, AFileThatIsNoSceneIsRefusedByNameAndPlace)
{
    ToolFolder folder;
    const auto refusal = [&folder](const std::string& name) {
        const ToolResult result = folder.Run({"render", "--scene", name, "-o", "x.png"});
        EXPECT_EQ(result.status, 1) << name;
        EXPECT_TRUE(result.err.starts_with("orvane: " + name + ": ")) << result.err;
        EXPECT_FALSE(folder.Has("x.png"));
        return result.err;
    };
    EXPECT_TRUE(Contains(refusal("missing.orv"), "No such file"));
    folder.Write("empty.orv", "");
    EXPECT_TRUE(Contains(refusal("empty.orv"), "byte 0"));
    folder.Write("text.orv", "This is no scene at all.");
    EXPECT_TRUE(Contains(refusal("text.orv"), "byte 0: found 54 68, expected FF FF"));
    std::filesystem::create_directory(folder.Path("folder.orv"));
    refusal("folder.orv");

    Must(folder, {"render", "x", "--save", "s.orv"});
    const std::string whole = folder.Read("s.orv");
    for (std::size_t length = 1; length + 8 < whole.size(); length += 1 + whole.size() / 16)
    {
        folder.Write("cut.orv", whole.substr(0, length));
        EXPECT_TRUE(Contains(refusal("cut.orv"), "byte ")) << length;
    }
    folder.Write("more.orv", whole + "more");
    EXPECT_TRUE(Contains(refusal("more.orv"), "byte "));
    // Without the code page it is whole.
    folder.Write("plain.orv", whole.substr(0, whole.size() - 4));
    Must(folder, {"render", "--scene", "plain.orv", "-o", "x.png", "--size", "16x9"});
}

TEST(ToolScene, ATextureThatIsGoneIsLookedForBesideTheFile)
{
    ToolFolder folder;
    {
        const PictureFile picture("gone", 2, 2, [](int, int) { return Rgb{10, 200, 30}; });
        std::filesystem::copy_file(picture.Path(), folder.Path("orvane-gone.bmp"));
        Must(folder, {"render", " ", "--background", picture.Path(), "--save", "s.orv", "--size",
                      "16x9", "-o", "a.png"});
    }
    Must(folder, {"render", "--scene", "s.orv", "-o", "b.png"});
    EXPECT_TRUE(folder.Read("a.png") == folder.Read("b.png"));
    EXPECT_EQ(DecodePng(folder.Read("b.png")).pixels.front(), (Rgb{10, 200, 30}));
    // Nowhere: the scene is drawn without it, and the tool says so.
    std::filesystem::remove(folder.Path("orvane-gone.bmp"));
    const ToolResult without = folder.Run({"render", "--scene", "s.orv", "-o", "c.png"});
    EXPECT_EQ(without.status, 0);
    EXPECT_TRUE(Contains(without.err, "orvane-gone.bmp\" is left out: ")) << without.err;
    EXPECT_EQ(DecodePng(folder.Read("c.png")).pixels.front(), (Rgb{0x14, 0x1a, 0x2b}));
}

}  // namespace
