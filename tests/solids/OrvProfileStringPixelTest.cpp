// SPDX-License-Identifier: MIT
// A mesh cache draws texts with profiles as they are drawn in immediate mode, and sees every
// change.
#include "solids/OrvProfileString.h"

#include "tests/support/MeshDrawingPixels.h"
#include "tests/support/PictureFile.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{
using orvane::LetterFusion;
using orvane::MeshCache;
using orvane::OrvProfileString;
using orvane::ParseProfile;

class ProfileMeshPixels : public MeshDrawingPixels
{
protected:
    ProfileMeshPixels()
    {
        static_cast<OrvFontString&>(profiled) = text;
        profiled.SetProfile(ParseProfile("chamfer 0.04"));
        profiled.CalculateBounds();
    }

    OrvProfileString profiled;
};

INSTANTIATE_TEST_SUITE_P(Storages, ProfileMeshPixels,
                         testing::Values(MeshCache::Storage::Automatic, MeshCache::Storage::Arrays),
                         [](const auto& each) {
                             return each.param == MeshCache::Storage::Arrays ? "Arrays" : "Buffers";
                         });

TEST_P(ProfileMeshPixels, EveryProfileAndFusionLooksTheSame)
{
    REQUIRE_CONTEXT(context);
    for (const char* const profile : {"0,0", "round 0.04", "cove -0.02", "chisel 0.05"})
    {
        for (const LetterFusion fusion :
             {LetterFusion::Separate, LetterFusion::Line, LetterFusion::Text})
        {
            SCOPED_TRACE(testing::Message() << profile << ", fusion " << static_cast<int>(fusion));
            profiled.SetProfile(ParseProfile(profile));
            profiled.SetFusion(fusion);
            ExpectSamePicture(profiled);
        }
    }
    EXPECT_GT(cache.Bytes(), 20000u);
}

TEST_P(ProfileMeshPixels, MirroredTransparentAndTexturedTextsLookTheSame)
{
    REQUIRE_CONTEXT(context);
    profiled.SetScale(DVector(-1, 1, 0.4));
    profiled.CalculateBounds();
    ExpectSamePicture(profiled);
    profiled.SetFaceColor(MaterialOf(0.9f, 0.3f, 0.1f, 0.5f));
    profiled.SetBevelColor(MaterialOf(0.2f, 0.3f, 0.9f, 0.7f));
    profiled.SetInterCharacterSpacing(-0.2f);
    ExpectSamePicture(profiled);
    const PictureFile picture("profile-texture", 4, 4, [](int x, int y) {
        return Rgb{60 * x + 40, 60 * y + 40, 100};
    });
    profiled.GetTexture()->Load(picture.Path());
    profiled.GetTexture()->textureFlags |= TextureMap::Textured;
    ASSERT_TRUE(profiled.GetTexture()->ShouldTexture());
    ExpectSamePicture(profiled);
    profiled.GetTexture()->SetScaleWithObject();
    ExpectSamePicture(profiled);
}

TEST_P(ProfileMeshPixels, TheStateAfterwardsIsThatOfImmediateMode)
{
    REQUIRE_CONTEXT(context);
    for (const DWORD colors : {0, 1, 2, 3})
    {
        for (const char* const profile : {"0,0", "chamfer 0.04", "0,0 0.2,-0.2"})
        {
            for (const char* const characters : {"Rag", "Rag ", " "})
            {
                SCOPED_TRACE(testing::Message() << colors << ' ' << profile << ' ' << characters);
                profiled.stringFlags = colors;
                profiled.SetProfile(ParseProfile(profile));
                profiled.SetTextString(characters);
                const auto stateAfter = [this](orvane::SolidDrawer* drawer) {
                    // No corner has this normal; a text without triangles leaves it.
                    glNormal3f(0, 0, 0.5f);
                    glColor3f(0, 0, 0);
                    Drawn(profiled, drawer);
                    return StateOfOpenGL();
                };
                EXPECT_EQ(stateAfter(&cache), stateAfter(nullptr));
            }
        }
    }
}

TEST_P(ProfileMeshPixels, EveryChangeIsSeenAtTheNextDraw)
{
    REQUIRE_CONTEXT(context);
    struct Change
    {
        const char* name;
        std::function<void(OrvProfileString&)> apply;
    };
    const Change changes[] = {
        {"profile", [](auto& t) { t.SetProfile(ParseProfile("0,0 0.02,-0.01 0.06,-0.09")); }},
        {"corners",
         [](auto& t) { t.SetProfile(ParseProfile("0,0 0.02,-0.01 0.06,-0.09 round-corners")); }},
        {"sides", [](auto& t) { t.SetBevelLocation(0); }},
        {"smooth angle", [](auto& t) { t.SetSmoothAngle(0); }},
        {"fusion", [](auto& t) { t.SetInterCharacterSpacing(-0.1f); }},
        {"fused", [](auto& t) { t.SetFusion(LetterFusion::Text); }},
        {"fused text", [](auto& t) { t.SetTextString("Rag\r\n&9i"); }},
        {"fused spacing", [](auto& t) { t.SetInterCharacterSpacing(-0.15f); }},
        {"apart", [](auto& t) { t.SetFusion(LetterFusion::Separate); }},
        {"text", [](auto& t) { t.SetTextString("Rug\r\n&9i"); }},
        {"text in place", [](auto& t) { *t.GetTextString() = "Rag\r\n&9i"; }},
        {"justification", [](auto& t) { t.SetJustification(0); }},
        {"scale", [](auto& t) { t.SetScale(DVector(0.7, 1.3, 0.4)); }},
        {"depth", [](auto& t) { t.SetScale(DVector(0.7, 1.3, 0.8)); }},
        {"scaled profile", [](auto& t) { t.SetScaleBevels(); }},
        {"face color", [](auto& t) { t.SetFaceColor(MaterialOf(0, 0.5f, 0.5f)); }},
        {"edge color", [](auto& t) { t.SetEdgeColor(MaterialOf(0.5f, 0.5f, 0)); }},
        {"bevel color off", [](auto& t) { t.stringFlags ^= OrvString::useBevelColorBit; }},
        {"font", [](auto& t) { t.AttachFont(orvane::ChooseFont("DejaVu Sans Mono")); }},
        {"no font", [](auto& t) { t.AttachFont(nullptr); }},
        {"font again", [](auto& t) { t.AttachFont(orvane::ChooseFont("DejaVu Sans")); }},
    };
    // Far away, so that no letter reaches beyond the picture.
    glMatrixMode(GL_PROJECTION);
    glTranslated(0, 0, -3);
    ExpectSamePicture(profiled);
    for (const Change& change : changes)
    {
        SCOPED_TRACE(change.name);
        const Picture before = Drawn(profiled, nullptr);
        change.apply(profiled);
        const Picture after = Drawn(profiled, nullptr);
        EXPECT_FALSE(PicturesMatch(before, after, "profile-unchanged")) << "changes nothing";
        EXPECT_TRUE(PicturesMatch(after, Drawn(profiled, &cache), "profile-changed"));
    }
}
}  // namespace
