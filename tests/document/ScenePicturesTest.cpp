// SPDX-License-Identifier: MIT
// Which files the names in a scene file may open, as a host and as a user of the tool sees it.

#include "document/SceneDocument.h"
#include "orvane/DocumentAccess.h"
#include "orvane/orvane.h"
#include "scene/SceneObject.h"
#include "scene/TextureFinder.h"
#include "scene/ViewObject.h"
#include "tests/support/BmpFile.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace
{

using orvane::Document;
using orvane::MissingPicture;
using orvane::OpenOptions;

const Rgb green = {10, 200, 30};
const Rgb white = {255, 255, 255};  // the background of a new scene

/// A scene file here/s.orv whose background picture has a name of the test's choice, and pictures
/// in folders beside "here".
class ScenePictures : public testing::Test
{
protected:
    ScenePictures()
    {
        for (const char* const name : {"here", "here/below", "other", "third"})
        {
            std::filesystem::create_directory(folder.Path(name));
        }
    }

    /// Writes a green BMP picture of 2 by 2 pixels.
    void WritePicture(const std::string& name) const
    {
        BmpFile file;
        file.width = 2;
        file.height = 2;
        for (int row = 0; row < 2; ++row)
        {
            for (const int byte :
                 {green.blue, green.green, green.red, green.blue, green.green, green.red, 0, 0})
            {
                file.pixels.push_back(static_cast<BYTE>(byte));
            }
        }
        folder.Write(name, AsText(file.File()));
    }

    /// Saves a scene without nodes whose background picture has this name.
    void SaveScene(const std::string& picture, const std::string& name = "picture") const
    {
        orvane::SceneDocument document;
        TextureMap& background = *document.scene->GetTexture();
        background.SetFilename(picture.c_str());
        background.SetName(name.c_str());
        background.textureFlags = TextureMap::Valid;
        background.placement = static_cast<DWORD>(orvane::BackgroundPlacement::Tile);
        folder.Write("here/s.orv", document.Bytes());
    }

    /// The file of the background picture in a document; empty when the document shows none.
    static std::string ShownPicture(const Document& document)
    {
        const TextureMap& background = *orvane::SceneOf(document).GetTexture();
        const bool isShown = (background.textureFlags & TextureMap::Valid) != 0;
        return isShown ? background.filename.Text() : "";
    }

    std::string Shown(const OpenOptions& options = {}) const
    {
        return ShownPicture(Document::Open(folder.Path("here/s.orv"), options));
    }

    std::vector<MissingPicture> Missing(const OpenOptions& options = {}) const
    {
        return Document::Open(folder.Path("here/s.orv"), options).MissingPictures();
    }

    void ExpectRefused(const OpenOptions& options = {}) const
    {
        EXPECT_EQ(Shown(options), "");
        const std::vector<MissingPicture> missing = Missing(options);
        ASSERT_EQ(missing.size(), 1u);
        EXPECT_EQ(missing[0].reason, MissingPicture::Reason::NotAllowed);
    }

    OpenOptions Allowing(const std::string& name) const { return {{folder.Path(name)}, false}; }

    ToolFolder folder;
};

TEST_F(ScenePictures, APictureInTheFolderOfTheSceneOrBelowIsShown)
{
    for (const char* const name : {"here/picture.bmp", "here/below/picture.bmp"})
    {
        WritePicture(name);
        SaveScene(folder.Path(name));
        EXPECT_EQ(Shown(), folder.Path(name));
        EXPECT_TRUE(Missing().empty());
        std::filesystem::remove(folder.Path(name));
    }
    // A relative name belongs to the folder of the scene, not to the current folder.
    WritePicture("here/below/picture.bmp");
    SaveScene("below/picture.bmp");
    EXPECT_EQ(Shown(), folder.Path("here/below/picture.bmp"));
}

TEST_F(ScenePictures, APictureElsewhereIsNotOpenedUnlessItIsAllowed)
{
    WritePicture("other/picture.bmp");
    for (const std::string& name :
         {folder.Path("other/picture.bmp"), std::string("../other/picture.bmp"),
          folder.Path("here/../other/picture.bmp"),
          folder.Path("here/below/../../other/picture.bmp")})
    {
        SaveScene(name);
        SCOPED_TRACE(name);
        ExpectRefused();
        ExpectRefused(Allowing("third"));
        EXPECT_EQ(Missing()[0].file, name);
        EXPECT_NE(Shown(Allowing("other")), "");
        EXPECT_NE(Shown({{}, true}), "");
    }
    // A folder whose name only begins with an allowed name is another folder.
    std::filesystem::create_directory(folder.Path("here2"));
    WritePicture("here2/picture.bmp");
    SaveScene(folder.Path("here2/picture.bmp"));
    ExpectRefused();
}

TEST_F(ScenePictures, ALinkIsFollowedBeforeItsPlaceIsJudged)
{
    namespace fs = std::filesystem;
    WritePicture("other/picture.bmp");
    fs::create_symlink(folder.Path("other/picture.bmp"), folder.Path("here/picture.bmp"));
    SaveScene(folder.Path("here/picture.bmp"));
    ExpectRefused();
    EXPECT_EQ(Shown(Allowing("other")), folder.Path("here/picture.bmp"));
    fs::remove(folder.Path("here/picture.bmp"));

    fs::create_directory_symlink(folder.Path("other"), folder.Path("here/link"));
    SaveScene("link/picture.bmp");
    ExpectRefused();
    EXPECT_NE(Shown(Allowing("other")), "");

    // An allowed folder may be named through a link.
    fs::create_directory_symlink(folder.Path("other"), folder.Path("alias"));
    SaveScene(folder.Path("alias/picture.bmp"));
    EXPECT_NE(Shown(Allowing("alias")), "");
    SaveScene(folder.Path("other/picture.bmp"));
    EXPECT_NE(Shown(Allowing("alias")), "");
}

TEST_F(ScenePictures, APictureThatIsGoneIsLookedForByItsPlainNameInEachFolderInTurn)
{
    for (const std::string& name : {std::string("/nowhere/elsewhere/wood.bmp"),
                                    std::string("C:\\pictures\\wood.bmp"), std::string("wood.bmp")})
    {
        SaveScene(name, "wood");
        EXPECT_EQ(Shown(), "");
        EXPECT_EQ(Shown(Allowing("other")), "");
        WritePicture("third/wood.bmp");
        EXPECT_EQ(Shown({{folder.Path("other"), folder.Path("third")}, false}),
                  folder.Path("third/wood.bmp"));
        WritePicture("here/wood.bmp");
        EXPECT_EQ(Shown(Allowing("third")), folder.Path("here/wood.bmp"));
        std::filesystem::remove(folder.Path("here/wood.bmp"));
        std::filesystem::remove(folder.Path("third/wood.bmp"));
    }
    // The name of the texture is enough, if a BMP file has it.
    SaveScene("/nowhere/renamed.bmp", "wood");
    WritePicture("here/wood.BMP");
    EXPECT_EQ(Shown(), folder.Path("here/wood.BMP"));
}

TEST_F(ScenePictures, AMissingPictureIsToldOnceAndSaveKeepsItsName)
{
    SaveScene("/nowhere/elsewhere/wood.bmp", "wood");
    Document document = Document::Open(folder.Path("here/s.orv"));
    ASSERT_EQ(document.MissingPictures().size(), 1u);
    EXPECT_EQ(document.MissingPictures()[0].file, "/nowhere/elsewhere/wood.bmp");
    EXPECT_EQ(document.MissingPictures()[0].reason, MissingPicture::Reason::NotAllowed);

    document.Save(folder.Path("here/t.orv"));
    WritePicture("here/wood.bmp");
    const Document found = Document::Open(folder.Path("here/t.orv"));
    EXPECT_EQ(ShownPicture(found), folder.Path("here/wood.bmp"));
    EXPECT_EQ(orvane::SceneOf(found).GetTexture()->placement,
              static_cast<DWORD>(orvane::BackgroundPlacement::Tile));

    // Inside of the folder it is not found instead of not allowed.
    SaveScene("gone.bmp", "gone");
    ASSERT_EQ(Missing().size(), 1u);
    EXPECT_EQ(Missing()[0].reason, MissingPicture::Reason::NotFound);
}

TEST_F(ScenePictures, WhatIsNoRegularFileIsNotOpened)
{
    ASSERT_EQ(mkfifo(folder.Path("here/pipe.bmp").c_str(), 0600), 0);
    for (const char* const name :
         {"pipe.bmp", "below", ".", "..", "below/", "/proc/kmsg", "/dev/zero"})
    {
        SaveScene(name, "none");
        EXPECT_EQ(Shown(), "") << name;
        EXPECT_EQ(Shown({{}, true}), "") << name;
    }
}

TEST_F(ScenePictures, AnAllowedFolderMustExist)
{
    SaveScene("");
    try
    {
        Document::Open(folder.Path("here/s.orv"), Allowing("nowhere"));
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const orvane::OptionError& error)
    {
        EXPECT_EQ(error.Place(), "allowedFolders");
        EXPECT_EQ(error.Found(), "\"" + folder.Path("nowhere") + "\"");
    }
}

TEST_F(ScenePictures, AHostThatReadsNodesItselfMayNameAnyFile)
{
    WritePicture("other/picture.bmp");
    SaveScene(folder.Path("other/picture.bmp"));
    EXPECT_EQ(Shown(), "");
    EXPECT_EQ(orvane::TextureFinder::Current(), nullptr);
    CFile file(folder.Path("here/s.orv").c_str(), CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    const std::unique_ptr<SceneObject> scene(
        static_cast<SceneObject*>(archive.ReadObject(RUNTIME_CLASS(SceneObject))));
    EXPECT_NE(scene->GetTexture()->textureFlags & TextureMap::Valid, 0u);
}

// The tool.

TEST_F(ScenePictures, TheToolShowsAPictureFromElsewhereOnlyWhenItIsAskedTo)
{
    WritePicture("other/picture.bmp");
    SaveScene(folder.Path("other/picture.bmp"));
    const auto render = [this](std::vector<std::string> options) {
        options.insert(options.begin(),
                       {"render", "--scene", "here/s.orv", "-o", "x.png", "--size", "16x9"});
        return folder.Run(options);
    };
    const auto corner = [this] { return DecodePng(folder.Read("x.png")).pixels.front(); };

    ToolResult result = render({"--save", "here/t.orv"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "orvane: here/s.orv: the picture \"" + folder.Path("other/picture.bmp") +
                              "\" is left out: it is not in the folder of the scene; "
                              "--allow-folder with its folder, or --trust, allows it\n");
    EXPECT_EQ(corner(), white);

    for (const std::vector<std::string>& options :
         {std::vector<std::string>{"--allow-folder", "third", "--allow-folder", "other"},
          {"--trust"}})
    {
        result = render(options);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(corner(), green);
    }

    // The scene that was saved without the picture still names it.
    result =
        folder.Run({"render", "--scene", "here/t.orv", "--trust", "-o", "x.png", "--size", "16x9"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(corner(), green);

    EXPECT_EQ(render({"--allow-folder", "nowhere"}).status, 2);
    EXPECT_EQ(folder.Run({"render", "x", "-o", "x.png", "--trust"}).status, 2);
    EXPECT_EQ(folder.Run({"render", "x", "-o", "x.png", "--allow-folder", "other"}).status, 2);
}

TEST_F(ScenePictures, TheToolQuotesNoBytesOfAFileThatASceneNames)
{
    folder.Write("other/secret", "QWerty");
    folder.Write("here/secret", "QWerty");
    const auto message = [this](const std::vector<std::string>& options) {
        std::vector<std::string> command = {"render", "--scene", "here/s.orv", "-o", "x.png"};
        command.insert(command.end(), options.begin(), options.end());
        const ToolResult result = folder.Run(command);
        EXPECT_NE(result.err, "");
        return result.err;
    };
    for (const std::string& text :
         {(SaveScene("secret"), message({})),
          (SaveScene(folder.Path("other/secret"), "s"), message({"--trust"})),
          (SaveScene("/proc/version", "s"), message({})),
          (SaveScene("/proc/version", "s"), message({"--trust"}))})
    {
        EXPECT_EQ(text.find("51 57"), std::string::npos) << text;  // QW
        EXPECT_EQ(text.find("QW"), std::string::npos) << text;
        EXPECT_EQ(text.find("4C 69"), std::string::npos) << text;  // Li of "Linux version"
    }
}

}  // namespace
