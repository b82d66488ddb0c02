// SPDX-License-Identifier: MIT
// Threads that draw texts of one font, each in a context of its own.

#include "extrude/OrvFont.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>

#include <latch>
#include <thread>

namespace
{

constexpr int size = 96;

/// A text of a font, with bevels, in a context that is current on this thread.
Picture DrawText(OrvFont& font)
{
    const HeadlessContext context(size, size);
    if (!context.IsValid())
    {
        return {};
    }
    SceneObject scene;
    auto* const text = new OrvFontString;
    scene.AddChild(text);
    text->AttachFont(&font);
    text->SetTextString("BCDE");
    text->SetBevelStyle(1);
    text->SetBevelDepth(0.03f);
    ViewObject view;
    view.AttachScene(&scene);
    view.SetScaledSize(size, size);
    view.SetViewSize(size, size);
    view.ZoomExtents();
    DrawingParameters parameters;
    EXPECT_EQ(view.Draw(&parameters), 1);
    return context.ReadPixels();
}

TEST(SharedFonts, ThreadsThatBuildAndDrawTheSameGlyphsAtOnceGetTheSamePicture)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    const PrivateFonts installed({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const std::vector<EnumeratedFont> faces = EnumerateAsRegistry();
    ASSERT_EQ(faces.size(), 1u);

    OrvFont font;
    ASSERT_EQ(font.Create(&faces[0].record, &faces[0].metrics), 1);
    const Picture alone = DrawText(font);
    ASSERT_GT(alone.CountOther(alone.At(0, 0)), size);

    for (int round = 0; round < 5; ++round)
    {
        OrvFont shared;
        ASSERT_EQ(shared.Create(&faces[0].record, &faces[0].metrics), 1);
        std::latch start(2);
        Picture drawn[2];
        std::thread other([&] {
            start.arrive_and_wait();
            drawn[0] = DrawText(shared);
        });
        start.arrive_and_wait();
        drawn[1] = DrawText(shared);
        other.join();
        EXPECT_EQ(drawn[0].bytes == alone.bytes, true);
        EXPECT_EQ(drawn[1].bytes == alone.bytes, true);
    }
}

}  // namespace
