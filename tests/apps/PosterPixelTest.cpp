// SPDX-License-Identifier: MIT
// The tool's bands against the same scene drawn in one piece.

#include "extrude/Library.h"
#include "host/CArchive.h"
#include "host/CFile.h"
#include "platform/Rendering.h"
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>
#include <memory>

namespace
{

constexpr int width = 2300;  // more than one band of 2048, and four of 170
constexpr int height = 600;
const std::string size = "2300x600";

/// Draws the scene of a file into the current context.
void DrawWhole(const std::string& path)
{
    CreateFontList(0, nullptr);
    CFile file(path.c_str(), CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    const std::unique_ptr<SceneObject> scene(
        static_cast<SceneObject*>(archive.ReadObject(RUNTIME_CLASS(SceneObject))));
    const std::unique_ptr<ViewObject> view(
        static_cast<ViewObject*>(archive.ReadObject(RUNTIME_CLASS(ViewObject))));
    view->AttachScene(scene.get());
    view->SetUnscaledSize(width, height);
    view->SetViewSize(width, height);
    glEnable(GL_NORMALIZE);
    glEnable(GL_CULL_FACE);
    CutQuadsAlike();
    DrawingParameters parameters;
    EXPECT_TRUE(view->Draw(&parameters));
}

/// The tool's picture as the context's.
Picture FromTop(const DecodedPicture& picture)
{
    Picture turned{picture.width, picture.height, {}};
    for (int y = picture.height - 1; y >= 0; --y)
    {
        for (int x = 0; x < picture.width; ++x)
        {
            const Rgb& pixel = picture.At(x, y);
            for (const int part : {pixel.red, pixel.green, pixel.blue})
            {
                turned.bytes.push_back(static_cast<GLubyte>(part));
            }
        }
    }
    return turned;
}

// Where an edge meets a pixel's middle, rounding decides: so many pixels may differ by more.
constexpr int alongEdges = 40;

void ExpectBandsToMatch(const char* name, std::vector<std::string> look)
{
    ToolFolder folder;
    look.insert(look.begin(), {"render", "Bands", "--size", size, "--samples", "1", "-o", "x.png",
                               "--save", "x.orv"});
    const ToolResult result = folder.Run(look);
    ASSERT_EQ(result.status, 0) << result.err;
    HeadlessContext context(width, height);
    REQUIRE_CONTEXT(context);
    glLineWidth(std::max(1.0f, height / 480.0f));
    DrawWhole(folder.Path("x.orv"));
    EXPECT_TRUE(PicturesMatch(context.ReadPixels(), FromTop(DecodePng(folder.Read("x.png"))), name,
                              1, alongEdges));
}

TEST(Poster, BandsOfASolidTextJoinAsIfDrawnInOnePiece)
{
    ExpectBandsToMatch("bands-solid", {"--style", "bevel"});
}

TEST(Poster, BandsOfRoundedEdgesJoinAsIfDrawnInOnePiece)
{
    ExpectBandsToMatch("bands-round", {"--style", "round", "--bevel", "0.08", "--turn", "30,40,0"});
}

TEST(Poster, BandsOfWiresJoinAsIfDrawnInOnePiece)
{
    // Wires are wider than the part of them that a band without a margin would draw.
    ExpectBandsToMatch("bands-wires", {"--outline"});
}

}  // namespace
