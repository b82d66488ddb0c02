// SPDX-License-Identifier: MIT
#include "profiles/EdgeProfile.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace orvane;

namespace
{

void ExpectSteps(const EdgeProfile& profile, const std::vector<ProfileStep>& expected)
{
    ASSERT_EQ(profile.steps.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_NEAR(profile.steps[i].offset, expected[i].offset, 1e-12) << "step " << i + 1;
        EXPECT_NEAR(profile.steps[i].height, expected[i].height, 1e-12) << "step " << i + 1;
    }
}

/// The message of the error that reading a text ends with.
std::string ErrorOf(const std::string& text)
{
    try
    {
        ParseProfile(text);
    }
    catch (const Error& error)
    {
        return error.what();
    }
    return "no error";
}

// The sine and the cosine of 45 degrees.
constexpr double half = 0.70710678118654752;

}  // namespace

TEST(NamedProfile, ChamferIsOnePlaneOutsideOrInsideOfTheOutline)
{
    ExpectSteps(NamedProfile("chamfer", 0.04), {{0, 0}, {0.04, -0.04}});
    ExpectSteps(NamedProfile("chamfer", -0.04), {{-0.04, 0}, {0, -0.04}});
}

TEST(NamedProfile, RoundLeavesTheFaceLevelAndComesToTheWallUpright)
{
    ExpectSteps(NamedProfile("round", 1, 2), {{0, 0}, {half, half - 1}, {1, -1}});
    ExpectSteps(NamedProfile("round", -1, 2), {{-1, 0}, {half - 1, half - 1}, {0, -1}});
}

TEST(NamedProfile, CoveIsHollow)
{
    ExpectSteps(NamedProfile("cove", 1, 2), {{0, 0}, {1 - half, -half}, {1, -1}});
}

TEST(NamedProfile, StepHasTwoStairs)
{
    ExpectSteps(NamedProfile("step", 0.04),
                {{0, 0}, {0, -0.02}, {0.02, -0.02}, {0.02, -0.04}, {0.04, -0.04}});
}

TEST(NamedProfile, OgeeIsARoundAndThenACove)
{
    ExpectSteps(NamedProfile("ogee", 1, 2), {{0, 0},
                                             {half / 2, (half - 1) / 2},
                                             {0.5, -0.5},
                                             {1 - half / 2, -0.5 - half / 2},
                                             {1, -1}});
}

TEST(NamedProfile, ChiselReachesTheMiddleAndIgnoresTheSignOfTheWidth)
{
    for (const double width : {0.05, -0.05})
    {
        const EdgeProfile profile = NamedProfile("chisel", width);
        EXPECT_TRUE(profile.reachesMiddle);
        ExpectSteps(profile, {{-1, 0}, {0, -0.05}});
    }
}

TEST(NamedProfile, ArcsHaveAsManyPlanesAsAskedFor)
{
    EXPECT_EQ(NamedProfile("round", 0.1).steps.size(), 7u);
    EXPECT_EQ(NamedProfile("round", 0.1, 16).steps.size(), 17u);
    EXPECT_EQ(NamedProfile("ogee", 0.1, 1).steps.size(), 3u);
    EXPECT_THROW(NamedProfile("round", 0.1, 0), Error);
    EXPECT_THROW(NamedProfile("round", 0.1, 17), Error);
}

TEST(NamedProfile, EveryNameMakesAProfileThatIsAccepted)
{
    for (const std::string& name : ProfileNames())
    {
        for (const double width : {0.001, 0.05, -0.001, -0.05, 10.0, -10.0})
        {
            EXPECT_NO_THROW(CheckProfile(NamedProfile(name, width, 16))) << name << ' ' << width;
        }
    }
}

TEST(NamedProfile, WidthsAreFiniteAndNotZero)
{
    for (const double width :
         {0.0, 10.5, -10.5, std::nan(""), std::numeric_limits<double>::infinity()})
    {
        EXPECT_THROW(NamedProfile("cove", width), Error) << width;
    }
}

TEST(ParseProfile, ReadsOffsetsAndHeights)
{
    const EdgeProfile profile = ParseProfile("0,0 0.02,-0.01  0.04,-0.04 ");
    EXPECT_EQ(profile.steps, (std::vector<ProfileStep>{{0, 0}, {0.02, -0.01}, {0.04, -0.04}}));
    EXPECT_EQ(profile.corners, ProfileCorners::Mitred);
    EXPECT_FALSE(profile.reachesMiddle);
}

TEST(ParseProfile, ReadsANameWithItsWidthAndTheCorners)
{
    EXPECT_EQ(ParseProfile("cove"), NamedProfile("cove", 0.03));
    EXPECT_EQ(ParseProfile("cove", 0.5), NamedProfile("cove", 0.5));
    EXPECT_EQ(ParseProfile("cove -0.02", 0.5), NamedProfile("cove", -0.02));
    EdgeProfile rounded = NamedProfile("step", 0.01);
    rounded.corners = ProfileCorners::Round;
    EXPECT_EQ(ParseProfile("step 0.01 round-corners"), rounded);
    EXPECT_EQ(ParseProfile("0,0 0.1,-0.1 round-corners").corners, ProfileCorners::Round);
}

TEST(ParseProfile, TextOfAProfileMakesTheSameProfile)
{
    for (const std::string& name : ProfileNames())
    {
        for (const double width : {0.03, -0.1 / 3})
        {
            EdgeProfile profile = NamedProfile(name, width);
            EXPECT_EQ(ParseProfile(ProfileText(profile)), profile) << ProfileText(profile);
            profile.corners = ProfileCorners::Round;
            EXPECT_EQ(ParseProfile(ProfileText(profile)), profile) << ProfileText(profile);
        }
    }
    EXPECT_EQ(ProfileText(ParseProfile("0,0 0.02,-0.01 0.04,-0.04")), "0,0 0.02,-0.01 0.04,-0.04");
    EXPECT_EQ(ProfileText(NamedProfile("chisel", 0.05)), "chisel 0.05");
}

TEST(ParseProfile, WrongTextsAreToldWithTheirStep)
{
    EXPECT_EQ(ErrorOf("0,0 0.02;-0.01"),
              "profile, step 2: found \"0.02;-0.01\", expected an offset and a height, such as "
              "0.02,-0.01");
    EXPECT_EQ(ErrorOf("bevel"),
              "profile, step 1: found \"bevel\", expected an offset and a height, such as "
              "0.02,-0.01, or one of chamfer, round, cove, step, ogee, chisel");
    EXPECT_EQ(ErrorOf("cove wide"), "profile cove: found \"wide\", expected a width in ems");
    EXPECT_EQ(ErrorOf("cove 1 2"), "profile cove: found \"2\", expected nothing after the width");
    for (const char* text : {"0,0 1,2,3", "0,0 1,", "0,0 ,1", "0,0 1", "0,0 0x1,0", "0,0 +1,0",
                             "0,0 1e999,0", "0,0 1,-1a", "0,0\t1,-1"})
    {
        EXPECT_NE(ErrorOf(text), "no error") << text;
    }
}

TEST(ParseProfile, NumbersAreFiniteAndWithinReach)
{
    EXPECT_EQ(ErrorOf("0,0 nan,-1"),
              "profile, step 2: found nan,-1, expected numbers from -10 to 10");
    EXPECT_EQ(ErrorOf("0,0 1,-inf"),
              "profile, step 2: found 1,-inf, expected numbers from -10 to 10");
    EXPECT_EQ(ErrorOf("-10,0 10,-10"), "no error");
    EXPECT_EQ(ErrorOf("-10.001,0 10,-10"),
              "profile, step 1: found -10.001,0, expected numbers from -10 to 10");
}

TEST(ParseProfile, ProfilesThatFoldBackAreRefused)
{
    EXPECT_EQ(ErrorOf("0,-0.1 0.1,-0.2"),
              "profile, step 1: found height -0.1, expected height 0, the plane of the face");
    EXPECT_EQ(ErrorOf("0,0 0.1,-0.2 0.2,-0.1"),
              "profile, step 3: found height -0.1, expected at most -0.2, the height of the step "
              "before");
    EXPECT_EQ(ErrorOf("0,0 0.1,0 0.05,0"),
              "profile, step 3: found 0.05,0, expected an offset beyond 0.1, or a height below 0");
    EXPECT_EQ(ErrorOf("0,0 0,0"),
              "profile, step 2: found 0,0, expected another place than the step before");
    // An undercut and a ledge that looks back are no folds.
    EXPECT_EQ(ErrorOf("0,0 0.1,0 0.1,-0.1 0.05,-0.1 0.05,-0.2"), "no error");
}

TEST(ParseProfile, AProfileHas1To64Steps)
{
    EXPECT_EQ(ErrorOf(""), "profile: found 0 steps, expected 1 to 64");
    EXPECT_EQ(ErrorOf("round-corners"), "profile: found 0 steps, expected 1 to 64");
    std::string text;
    for (std::size_t i = 0; i < limits::maxProfileSteps; ++i)
    {
        text += "0,-" + std::to_string(static_cast<double>(i) / 16) + ' ';
    }
    EXPECT_EQ(ParseProfile(text).steps.size(), 64u);
    EXPECT_EQ(ErrorOf(text + "0,-9"), "profile: found 65 steps, expected at most 64");
    EdgeProfile tooLong = ParseProfile(text);
    tooLong.steps.push_back({0, -9});
    EXPECT_THROW(CheckProfile(tooLong), Error);
}
