// SPDX-License-Identifier: MIT
// What has drawn ends without memory, too: contexts, bitmaps, textures and documents.

#include "document/KeptContext.h"
#include "document/poster/Poster.h"
#include "document/poster/PosterTarget.h"
#include "imaging/GLMemoryDIB.h"
#include "orvane/orvane.h"
#include "platform/OpenGL.h"
#include "scene/ViewObject.h"
#include "tests/support/Allocations.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/PictureFile.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

using orvane::Document;

TEST(DestructorsOfDrawings, ContextsEndWithoutMemory)
{
    for (const int bits : {8, 16, 24, 32})
    {
        auto dib = std::make_unique<GLMemoryDIB>();
        ProjectionData projection;
        projection.SetScaledSize(32, 16);
        ASSERT_TRUE(dib->Create(projection, bits));
        glClear(GL_COLOR_BUFFER_BIT);
        // The bitmap's last pixels are not copied, which takes memory.
        EXPECT_GT(RequestsOfEnding(std::move(dib)), 0) << bits;
    }
}

TEST(DestructorsOfDrawings, DrawnDocumentsEndWithoutMemory)
{
    const PictureFile picture("destructors", 20, 10, [](int x, int) { return Rgb{x, 0, 255}; });
    ToolFolder folder;
    auto document = std::make_unique<Document>();
    orvane::TextOptions look;
    look.texture = orvane::TextureOptions{picture.Path()};
    document->AddText("Ab", look);
    orvane::BackgroundOptions background;
    background.file = picture.Path();
    document->SetBackground(background);
    orvane::PictureOptions options;
    options.size = orvane::Size{64, 48};
    for (const int bits : {8, 24})
    {
        options.bits = bits;
        orvane::WritePicture(*document, folder.Path("a.bmp"), options);
    }
    // Its tree of nodes asks for memory, and does without.
    EXPECT_GT(RequestsOfEnding(std::move(document)), 0);
}

TEST(DestructorsOfDrawings, KeptContextsEndWithoutMemory)
{
    const HeadlessContext context(8, 8);
    REQUIRE_CONTEXT(context);
    EXPECT_EQ(RequestsOfEnding(std::make_unique<orvane::KeptContext>()), 0);
}

}  // namespace
