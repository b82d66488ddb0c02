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

/// Larger than a band of 2048 by 170 pixels.
struct Size
{
    int width;
    int height;

    std::string Text() const { return std::to_string(width) + "x" + std::to_string(height); }
};

/// Draws the scene of a file into the current context.
void DrawWhole(const std::string& path, const Size& size)
{
    CreateFontList(0, nullptr);
    CFile file(path.c_str(), CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    const std::unique_ptr<SceneObject> scene(
        static_cast<SceneObject*>(archive.ReadObject(RUNTIME_CLASS(SceneObject))));
    const std::unique_ptr<ViewObject> view(
        static_cast<ViewObject*>(archive.ReadObject(RUNTIME_CLASS(ViewObject))));
    view->AttachScene(scene.get());
    view->SetUnscaledSize(size.width, size.height);
    view->SetViewSize(size.width, size.height);
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

// Bands cut what crosses their edges, and OpenGL puts the new corners on a grid of a part of a
// pixel. Where an edge nearly meets the middle of a pixel, that decides: so many may change sides.
constexpr int alongEdges = 16;
constexpr int alongWires = 32;

void ExpectBandsToMatch(const char* name, const Size& size, std::vector<std::string> look,
                        int allowed = alongEdges)
{
    SCOPED_TRACE(size.Text());
    ToolFolder folder;
    look.insert(look.begin(), {"render", "Bands", "--size", size.Text(), "--samples", "1", "-o",
                               "x.png", "--save", "x.orv"});
    const ToolResult result = folder.Run(look);
    ASSERT_EQ(result.status, 0) << result.err;
    HeadlessContext context(size.width, size.height);
    REQUIRE_CONTEXT(context);
    glLineWidth(std::max(1.0f, static_cast<float>(size.height) / 480.0f));
    DrawWhole(folder.Path("x.orv"), size);
    const Picture whole = context.ReadPixels();
    const Picture bands = FromTop(DecodePng(folder.Read("x.png")));
    EXPECT_TRUE(PicturesMatch(whole, bands, name, 1, allowed));
    EXPECT_EQ(CountDifferentOffEdges(whole, bands), 0);
}

TEST(Poster, BandsOfASolidTextJoinAsIfDrawnInOnePiece)
{
    // Bands meet in different places of the text.
    for (const Size& size : {Size{2300, 600}, Size{3001, 411}, Size{4096, 777}})
    {
        ExpectBandsToMatch("bands-solid", size, {"--style", "bevel"});
    }
}

TEST(Poster, BandsOfRoundedEdgesJoinAsIfDrawnInOnePiece)
{
    for (const Size& size : {Size{2300, 600}, Size{2601, 900}})
    {
        ExpectBandsToMatch("bands-round", size,
                           {"--style", "round", "--bevel", "0.08", "--turn", "30,40,0"});
    }
}

TEST(Poster, BandsOfWiresJoinAsIfDrawnInOnePiece)
{
    // Wires are wider than the part of them that a band without a margin would draw.
    ExpectBandsToMatch("bands-wires", {2300, 600}, {"--outline"}, alongWires);
}

}  // namespace
