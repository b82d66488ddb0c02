// SPDX-License-Identifier: MIT
// A large picture, whose bands draw only the nodes that they show, against bands that draw all.

#include "document/poster/Poster.h"
#include "document/poster/PosterTarget.h"
#include "imaging/GLMemoryDIB.h"
#include "orvane/Error.h"
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/PanelNode.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

using orvane::PosterSettings;

namespace
{

constexpr int size = 4900;  // 3 columns and 29 rows of bands of 2048 x 170

/// A panel whose bounds are much smaller than what it draws. It counts how often it is drawn.
class ModestPanel final : public PanelNode
{
public:
    explicit ModestPanel(float panelSize) : PanelNode(panelSize, 3) {}

    int DrawObject(DrawingParameters* parameters) override
    {
        ++draws;
        return PanelNode::DrawObject(parameters);
    }

    int CalculateBounds() override
    {
        SetLocalBounds(Vector(-0.01f, -0.01f, 0.0f), Vector(0.01f, 0.01f, 0.0f));
        return 1;
    }

    int draws = 0;
};

/// Five nodes, of which one is far outside the picture and one is deleted.
class Panels
{
public:
    /// \param name of the picture's file.
    explicit Panels(const char* name) : file(name)
    {
        Add(0.3f, -0.8, 0.7);
        Add(0.2f, 0.8, -0.75)->Rotate(30, DVector(1.0, 1.0, 0.0));
        Add(0.5f, 0.1, 0.1)->Rotate(20, DVector(0.0, 0.0, 1.0));
        Add(0.5f, 40, 40);
        Add(0.5f, -0.4, -0.6)->SetDeleted();
        view.AttachScene(&scene);
        view.SetTranslation(DVector(0.0, 0.0, -3.0));
        view.SetUnscaledSize(size, size);
        view.SetViewSize(size, size);
        settings.output = file.Path();
        settings.size = {size, size};
        settings.options.samples = 1;
    }

    /// The flags of the nodes, for a comparison of before and after.
    std::string Flags() const
    {
        std::string flags;
        for (int i = 0; i < scene.GetChildCount(); ++i)
        {
            flags += scene.GetChildByIndex(i)->IsDeleted() != 0 ? 'x' : '-';
        }
        return flags;
    }
    int DrawsOf(int index) const
    {
        return static_cast<const ModestPanel*>(scene.GetChildByIndex(index))->draws;
    }

    TemporaryName file;
    SceneObject scene;
    ViewObject view;
    PosterSettings settings;

private:
    DrawingObject* Add(float panelSize, double x, double y)
    {
        auto* const node = new ModestPanel(panelSize);
        node->SetTranslation(DVector(x, y, 0.0));
        scene.AddChild(node);
        return node;
    }
};

TEST(PosterParts, BandsWithoutTheNodesThatTheyDoNotShowAreTheSame)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    Panels panels("panels-bands.bmp");
    DrawPoster(panels.view, panels.settings, *MakeTarget(panels.settings));
    EXPECT_EQ(panels.Flags(), "----x");
    const std::vector<BYTE> picture = panels.file.Read();
    constexpr std::size_t rowBytes = 3 * size;
    static_assert(rowBytes % 4 == 0);
    ASSERT_GT(picture.size(), rowBytes * size);
    const BYTE* const pixels = picture.data() + picture.size() - rowBytes * size;

    GLMemoryDIB dib;
    ASSERT_TRUE(dib.Create(panels.view.GetProjection(), 24));
    glEnable(GL_NORMALIZE);
    CutQuadsAlike();
    DrawingParameters parameters;
    parameters.SetFlags(panels.view.GetDrawingMode());
    parameters.SetShowObject();
    parameters.SetShowChildren();
    const int width = static_cast<int>(dib.GetDIBWidth());
    const int height = static_cast<int>(dib.GetDIBHeight());
    const auto bandRowBytes = static_cast<std::size_t>((3 * width + 3) / 4 * 4);
    int lit = 0;
    for (int top = 0; top < size; top += height)
    {
        for (int left = 0; left < size; left += width)
        {
            dib.PrepareNextBand(double(top) / height, double(left) / width, &parameters);
            ASSERT_TRUE(panels.view.Draw(&parameters));
            GdiFlush();
            const BYTE* const band = static_cast<const BYTE*>(dib.GetDIBBits());
            const auto count = static_cast<std::size_t>(3 * std::min(width, size - left));
            for (int y = 0; y < std::min(height, size - top); ++y)
            {
                const BYTE* const expected =
                    band + bandRowBytes * static_cast<std::size_t>(height - 1 - y);
                const BYTE* const row =
                    pixels + rowBytes * static_cast<std::size_t>(size - 1 - top - y) + 3 * left;
                ASSERT_EQ(std::memcmp(row, expected, count), 0) << left << ", " << top + y;
                lit += std::count(row, row + count, BYTE{0}) != static_cast<long>(count) ? 1 : 0;
            }
        }
    }
    EXPECT_GT(lit, size / 4);  // there is something to see
}

TEST(PosterParts, ABandDrawsOnlyTheNodesThatItShows)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    Panels panels("panels-drawn.bmp");
    DrawPoster(panels.view, panels.settings, *MakeTarget(panels.settings));
    constexpr int bands = 87;  // 3 columns and 29 rows
    // Each is drawn once for the feedback that tells where it is. The fourth is far outside of the
    // picture, the fifth is deleted.
    EXPECT_EQ(panels.DrawsOf(3), 1);
    EXPECT_EQ(panels.DrawsOf(4), 0);
    for (const int seen : {0, 1, 2})
    {
        EXPECT_GT(panels.DrawsOf(seen), 1) << seen;
        EXPECT_LT(panels.DrawsOf(seen), bands) << seen;
    }
}

TEST(PosterParts, ACancelledPictureLeavesNoFileAndTheNodesAsTheyWere)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    Panels panels("panels-stopped.bmp");
    orvane::Cancellation cancellation;
    panels.settings.options.cancellation = cancellation;
    std::string flags;
    panels.settings.options.progress = [&](double share) {
        if (share > 0.1)
        {
            flags = panels.Flags();
            cancellation.Cancel();
        }
    };
    EXPECT_THROW(DrawPoster(panels.view, panels.settings, *MakeTarget(panels.settings)),
                 orvane::Cancelled);
    EXPECT_FALSE(panels.file.Exists());
    EXPECT_EQ(flags, "----x");
    EXPECT_EQ(panels.Flags(), "----x");
}

}  // namespace
