// SPDX-License-Identifier: MIT
// A mesh cache draws outlines as immediate mode draws them, and sees every change of the node.
#include "solids/OrvOutlineShape.h"
#include "tests/support/MeshDrawingPixels.h"
#include "tests/support/OutlineAreas.h"
#include "tests/support/PictureFile.h"

#include <functional>

namespace
{
using orvane::BevelSides;
using orvane::MeshCache;
using orvane::OrvOutlineShape;
using orvane::ParseProfile;

/// A frame around a square, each in a colour of its own, with profiles on both faces.
class OutlineMeshPixels : public MeshDrawingPixels
{
protected:
    OutlineMeshPixels()
    {
        SetColors(1, 1);
        shape.SetProfile(ParseProfile("round -0.1"));
        shape.SetScale(DVector(1.6, 1.6, 0.5));
        shape.CalculateBounds();
    }
    void SetColors(float frameAlpha, float fillingAlpha)
    {
        shape.SetAreas({{FrameArea().region, MaterialOf(0.9f, 0.3f, 0.1f, frameAlpha)},
                        {FillingArea().region, MaterialOf(0.1f, 0.3f, 0.9f, fillingAlpha)}});
    }

    OrvOutlineShape shape;
};

INSTANTIATE_TEST_SUITE_P(Storages, OutlineMeshPixels,
                         testing::Values(MeshCache::Storage::Automatic, MeshCache::Storage::Arrays),
                         [](const auto& each) {
                             return each.param == MeshCache::Storage::Arrays ? "Arrays" : "Buffers";
                         });

TEST_P(OutlineMeshPixels, OutlinesLookTheSameAndEveryChangeIsSeen)
{
    REQUIRE_CONTEXT(context);
    ExpectSamePicture(shape);
    EXPECT_GT(cache.Bytes(), 5000u) << "The cache did not draw them.";
    const std::vector<std::function<void()>> changes = {
        [this] { shape.SetProfile(ParseProfile("chamfer -0.05")); },
        [this] { shape.SetSmoothAngle(100); },
        [this] { shape.SetProfileSides(BevelSides::Back); },
        [this] { shape.SetAlignment(orvane::Alignment::Left); },
        [this] { shape.SetScale(DVector(1, 1.8, 0.2)); },
        [this] { shape.SetScale(DVector(-1, 1.8, 0.2)); },
        [this] { shape.SetSurfaceColor(MaterialOf(0.2f, 0.9f, 0.2f), 1); },
        [this] { shape.SetAreas({FrameArea()}); },
    };
    Picture before = Drawn(shape, nullptr);
    for (std::size_t i = 0; i < changes.size(); ++i)
    {
        SCOPED_TRACE(i);
        changes[i]();
        const Picture now = Drawn(shape, nullptr);
        EXPECT_FALSE(PicturesMatch(before, now, "outlines-unchanged")) << "changes nothing";
        ExpectSamePicture(shape);
        before = now;
    }
}

TEST_P(OutlineMeshPixels, TransparentAndTexturedOutlinesLookTheSame)
{
    REQUIRE_CONTEXT(context);
    SetColors(0.5f, 1);
    ExpectSamePicture(shape);
    SetColors(1, 0.5f);
    ExpectSamePicture(shape);
    const PictureFile picture("outline-mesh", 4, 4, [](int x, int y) {
        return Rgb{60 * x + 40, 60 * y + 40, 100};
    });
    shape.GetTexture()->Load(picture.Path());
    shape.GetTexture()->textureFlags |= TextureMap::Textured;
    ExpectSamePicture(shape);
    shape.GetTexture()->SetRepeatRate(3);
    ExpectSamePicture(shape);
}

TEST_P(OutlineMeshPixels, TheStateAfterwardsIsThatOfImmediateMode)
{
    REQUIRE_CONTEXT(context);
    for (const float alpha : {1.0f, 0.5f})
    {
        SetColors(1, alpha);
        Drawn(shape, nullptr);
        const std::vector<float> expected = StateOfOpenGL();
        for (int draw = 0; draw < 2; ++draw)
        {
            Drawn(shape, &cache);
            EXPECT_EQ(StateOfOpenGL(), expected) << "draw " << draw;
        }
    }
    OrvOutlineShape empty;
    Drawn(empty, &cache);
}

TEST_P(OutlineMeshPixels, OutlinesWithoutRoomDrawThemselves)
{
    REQUIRE_CONTEXT(context);
    MeshCache small(GetParam(), 3000);
    const Picture expected = Drawn(shape, nullptr);
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_TRUE(PicturesMatch(expected, Drawn(shape, &small), "outlines-no-room", 0));
        EXPECT_LE(small.Bytes(), 3000u);
    }
}

}  // namespace
