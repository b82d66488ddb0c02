// SPDX-License-Identifier: MIT
// Profiled solids of letters that are built as texts build them.

#include "extrude/OrvGlyph.h"
#include "outline/TTGlyph.h"
#include "profiles/ProfileSolid.h"
#include "tests/support/ClosedSurface.h"
#include "tests/support/FontFigures.h"
#include "tests/support/PrivateFonts.h"
#include "tests/support/SlicedVolume.h"
#include "tests/support/TriangleCrossings.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace
{

PlaneRegion Letter(const SelectedFont& font, UINT character)
{
    std::vector<BYTE> bytes = font.Outline(character);
    TTGlyph outline;
    outline.FromGlyphOutline(bytes.data(), bytes.size());
    OrvGlyph glyph(bytes.size(), GLYPHMETRICS{});
    EXPECT_EQ(glyph.ConstructGlyph(outline, 2048), 1);
    return RegionOf(glyph);
}

class ProfileLetters : public testing::TestWithParam<const char*>
{
protected:
    ProfileLetters() : fonts_(FontFiles()), font_(GetParam(), -2048) {}

    PrivateFonts fonts_;
    SelectedFont font_;
};

}  // namespace

TEST_P(ProfileLetters, AllAreClosedWithEveryProfileInwardAndOutward)
{
    for (UINT character = '!'; character <= '~'; ++character)
    {
        const PlaneRegion region = Letter(font_, character);
        for (const std::string& name : ProfileNames())
        {
            for (const double width : {0.03, -0.03})
            {
                const ProfileSolid solid = BuildProfileSolid(region, NamedProfile(name, width));
                EXPECT_EQ(WhyNotClosed(solid), "")
                    << static_cast<char>(character) << ' ' << name << ' ' << width;
                EXPECT_GT(VolumeOf(solid), 0);
            }
        }
    }
}

TEST_P(ProfileLetters, VolumesAgreeWithThoseOfSlices)
{
    for (const UINT character : {'O', 'g', '&', 'W', 'i', 'k'})
    {
        const PlaneRegion region = Letter(font_, character);
        for (const std::string& name : ProfileNames())
        {
            for (const double width : {0.04, -0.04})
            {
                for (const ProfileCorners corners : {ProfileCorners::Mitred, ProfileCorners::Round})
                {
                    EdgeProfile profile = NamedProfile(name, width);
                    profile.corners = corners;
                    ProfileSolidOptions options;
                    options.sides = ProfileSides::Both;
                    const int slices = 2 + 24 / static_cast<int>(profile.steps.size());
                    const double sliced = SlicedVolume(region, profile, options, slices);
                    EXPECT_NEAR(VolumeOf(BuildProfileSolid(region, profile, options)), sliced,
                                0.005 * sliced)
                        << static_cast<char>(character) << ' ' << ProfileText(profile);
                }
            }
        }
    }
}

TEST_P(ProfileLetters, NoTriangleCrossesAnother)
{
    for (const UINT character : {'8', 'R', 'g', '&', 'W', 'k', '@', '%'})
    {
        const PlaneRegion region = Letter(font_, character);
        for (const std::string& name : ProfileNames())
        {
            for (const double width : {0.08, -0.08, 0.01, -0.02})
            {
                const ProfileSolid solid = BuildProfileSolid(region, NamedProfile(name, width));
                EXPECT_EQ(FindCrossings(solid).crossings, 0)
                    << static_cast<char>(character) << ' ' << name << ' ' << width;
            }
        }
    }
}

TEST_P(ProfileLetters, ALineOfTouchingLettersIsOneSolid)
{
    std::vector<PlaneRegion> letters;
    std::vector<PlacedRegion> placed;
    letters.reserve(26);
    for (UINT character = 'A'; character <= 'Z'; ++character)
    {
        letters.push_back(Letter(font_, character));
        // Half an em apart, all letters but I overlap.
        placed.push_back({&letters.back(), {0.5 * (character - 'A'), 0}});
    }
    const PlaneRegion line = JoinRegions(placed);
    for (const char* profile : {"chamfer 0.03", "round -0.03", "chisel 0.05"})
    {
        const ProfileSolid solid = BuildProfileSolid(line, ParseProfile(profile));
        EXPECT_EQ(WhyNotClosed(solid), "") << profile;
        EXPECT_GT(VolumeOf(solid), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Faces, ProfileLetters,
                         testing::Values("DejaVu Sans", "DejaVu Serif", "Liberation Serif"),
                         [](const testing::TestParamInfo<const char*>& info) {
                             std::string name = info.param;
                             std::erase(name, ' ');
                             return name;
                         });
