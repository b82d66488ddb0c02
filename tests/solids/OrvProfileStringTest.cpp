// SPDX-License-Identifier: MIT
#include "solids/OrvProfileString.h"

#include "extrude/OrvGlyph.h"
#include "geometry/SurfaceRecorder.h"
#include "orvane/Error.h"
#include "solids/MeshBuilder.h"
#include "solids/MeshMeasures.h"
#include "tests/support/Allocations.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/StubFont.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>

namespace
{
using orvane::BevelSides;
using orvane::LetterFusion;
using orvane::MeshMeasures;
using orvane::OrvProfileString;
using orvane::ParseProfile;
using Place = std::array<float, 3>;

/// The letter A of the font is a square of 1 em, and its advance is half an em.
class OrvProfileStringTest : public testing::Test
{
protected:
    OrvProfileStringTest()
    {
        text.AttachFont(&font);
        text.SetTextString("A");
        text.SetScale(DVector(1, 1, 0.5));
        text.SetBevelLocation(static_cast<int>(BevelSides::Both));
        text.ClearAdjustSpacingForBevels();
    }

    MeshMeasures Measured()
    {
        text.CalculateBounds();
        return MeasureMesh(orvane::BuildMesh(text)).all;
    }

    StubFont font;
    OrvProfileString text;
};

TEST_F(OrvProfileStringTest, ChamfersGrowOutOfASquareLetter)
{
    text.SetProfile(ParseProfile("0,0 0.125,-0.125"));
    const MeshMeasures measures = Measured();
    EXPECT_TRUE(measures.isClosed);
    // The wall has sides of 1.25 and a depth of 0.25. Each chamfer is a frustum from sides of 1 to
    // sides of 1.25 over a depth of 0.125: the integral of (1 + 2 t) squared.
    const double wall = 1.25 * 1.25 * 0.25;
    const double chamfer = (1.25 * 1.25 * 1.25 - 1) / 6;
    EXPECT_NEAR(measures.volume, wall + 2 * chamfer, 1e-4);
    EXPECT_NEAR(measures.bounds.maximum[0] - measures.bounds.minimum[0], 1.25, 1e-5);
    EXPECT_FLOAT_EQ(measures.bounds.minimum[2], -0.5f);
    EXPECT_FLOAT_EQ(measures.bounds.maximum[2], 0);
}

TEST_F(OrvProfileStringTest, AProfileKeepsItsSizeUnlessItIsScaledWithTheText)
{
    text.SetProfile(ParseProfile("0,0 0.125,-0.125"));
    text.SetScale(DVector(2, 1, 0.5));
    MeshMeasures measures = Measured();
    EXPECT_NEAR(measures.bounds.maximum[0] - measures.bounds.minimum[0], 2.25, 1e-5);
    EXPECT_NEAR(measures.bounds.maximum[1] - measures.bounds.minimum[1], 1.25, 1e-5);
    text.SetScaleBevels();
    measures = Measured();
    EXPECT_NEAR(measures.bounds.maximum[0] - measures.bounds.minimum[0], 2.5, 1e-5);
    EXPECT_NEAR(measures.bounds.maximum[1] - measures.bounds.minimum[1], 1.25, 1e-5);
    EXPECT_TRUE(measures.isClosed);
}

TEST_F(OrvProfileStringTest, AMirroredTextIsStillASolidThatFacesOutward)
{
    text.SetProfile(ParseProfile("0,0 0.125,-0.125"));
    const double volume = Measured().volume;
    text.SetScale(DVector(-1, 1, 0.5));
    EXPECT_NEAR(Measured().volume, volume, 1e-6);
    text.SetScale(DVector(-1, 1, -0.5));
    EXPECT_NEAR(Measured().volume, volume, 1e-6);
}

TEST_F(OrvProfileStringTest, AProfileThatIsTooDeepIsMadeSmaller)
{
    text.SetProfile(ParseProfile("0,0 1,-1"));
    // A quarter of the profile is left on each face, and no wall between.
    const MeshMeasures measures = Measured();
    EXPECT_NEAR(measures.bounds.maximum[0] - measures.bounds.minimum[0], 1.5, 1e-5);
    EXPECT_NEAR(measures.volume, 2 * (1.5 * 1.5 * 1.5 - 1) / 6, 1e-4);
    EXPECT_TRUE(measures.isClosed);
}

TEST_F(OrvProfileStringTest, TheProfileIsOnTheChosenFaces)
{
    text.SetProfile(ParseProfile("0,0 -0.125,-0.125"));
    // A profile that leads inward makes the wall smaller than the face: 1 at the face, 0.75 at the
    // wall.
    const double frustum = (1 - 0.75 * 0.75 * 0.75) / 6;
    text.SetBevelLocation(static_cast<int>(BevelSides::Front));
    EXPECT_NEAR(Measured().volume, frustum + 0.75 * 0.75 * 0.375, 1e-4);
    text.SetBevelLocation(static_cast<int>(BevelSides::Back));
    EXPECT_NEAR(Measured().volume, frustum + 0.75 * 0.75 * 0.375, 1e-4);
    text.SetBevelLocation(static_cast<int>(BevelSides::Both));
    EXPECT_NEAR(Measured().volume, 2 * frustum + 0.75 * 0.75 * 0.25, 1e-4);
}

TEST_F(OrvProfileStringTest, LettersThatOverlapAreJoinedWhenTheyAreFused)
{
    text.SetProfile(ParseProfile("0,0"));
    text.SetTextString("AA");
    // Each letter is a square of 1 em; the second begins half an em after the first.
    EXPECT_NEAR(Measured().volume, 2 * 0.5, 1e-4);
    text.SetFusion(LetterFusion::Line);
    MeshMeasures measures = Measured();
    EXPECT_NEAR(measures.volume, 1.5 * 0.5, 1e-4);
    EXPECT_TRUE(measures.isClosed);

    text.SetTextString("AA\r\nA");
    text.SetInterLineSpacing(-0.5f);  // lines overlap by half an em
    EXPECT_NEAR(Measured().volume, (1.5 + 1) * 0.5, 1e-4);
    text.SetFusion(LetterFusion::Text);
    measures = Measured();
    EXPECT_NEAR(measures.volume, (1.5 + 1 - 0.5) * 0.5, 1e-4);
    EXPECT_TRUE(measures.isClosed);
}

TEST_F(OrvProfileStringTest, SolidsFollowEveryChange)
{
    text.SetProfile(ParseProfile("0,0"));
    EXPECT_NEAR(Measured().volume, 0.5, 1e-4);
    text.SetTextString("D");  // has no outline
    EXPECT_EQ(Measured().triangles, 0u);
    text.SetTextString("A");
    text.SetScale(DVector(1, 1, 0.25));
    EXPECT_NEAR(Measured().volume, 0.25, 1e-4);
    text.SetProfile(ParseProfile("0,0 0.125,0"));
    EXPECT_NEAR(Measured().volume, 1.25 * 1.25 * 0.25, 1e-4);
}

TEST_F(OrvProfileStringTest, TheBoundsHoldWhatReachesOutOfTheOutline)
{
    // The letter is 0.5 deep, so bevels on both faces are at most 0.25 wide, but a ledge in the
    // plane of the face is as wide as it likes.
    text.SetProfile(ParseProfile("0,0 0.75,0 0.75,-0.125"));
    const MeshMeasures measures = Measured();
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        const Vector minimum = text.bounds.GetLocalMinimum();
        const Vector maximum = text.bounds.GetLocalMaximum();
        EXPECT_LE((&minimum.x)[axis], measures.bounds.minimum[axis] + 1e-5);
        EXPECT_GE((&maximum.x)[axis] + (axis == 0 ? 0.5f : 0), measures.bounds.maximum[axis] - 1e-5)
            << "The advance of A is half an em less than the letter is wide.";
    }
}

TEST_F(OrvProfileStringTest, ASizeThatIsNoNumberGivesNoSolid)
{
    text.SetProfile(ParseProfile("0,0 0.125,-0.125"));
    text.CalculateBounds();
    text.SetScale(DVector(std::numeric_limits<double>::quiet_NaN(), 1, 0.5));
    EXPECT_EQ(orvane::BuildMesh(text).TriangleCount(), 0u);
    text.SetScale(DVector(1, 1, 0));
    EXPECT_EQ(orvane::BuildMesh(text).TriangleCount(), 0u);
}

TEST_F(OrvProfileStringTest, EachSolidWithoutTheProfileIsListedOnceItIsBuilt)
{
    text.SetTextString("DBAA");
    text.SetScale(DVector(1, 1, 0.5));
    Measured();
    EXPECT_TRUE(text.UncutSolids().empty());
    // A region may reach 16,000 em from the origin. B is 0.75 em high and reaches to 0.5, A to 1.
    text.SetScale(DVector(1, 20000, 0.5));
    EXPECT_TRUE(text.UncutSolids().empty()) << "Nothing has been built at this size.";
    Measured();
    const std::vector<orvane::UncutSolid> uncut = text.UncutSolids();
    ASSERT_EQ(uncut.size(), 1u);
    EXPECT_EQ(uncut[0].index, 2u);
    EXPECT_EQ(uncut[0].line, 0);
    EXPECT_TRUE(uncut[0].isLeftOut);
    EXPECT_NE(uncut[0].problem.find("20000"), std::string::npos) << uncut[0].problem;
    EXPECT_NE(uncut[0].problem.find("16000"), std::string::npos) << uncut[0].problem;

    text.SetFusion(LetterFusion::Line);
    text.SetTextString("D\r\nDA");
    text.SetScale(DVector(1, 40000, 0.5));
    Measured();
    const std::vector<orvane::UncutSolid> lines = text.UncutSolids();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].index, 3u);
    EXPECT_EQ(lines[0].line, 1);
}

TEST_F(OrvProfileStringTest, ASolidForWhichThereIsTooLittleMemoryIsMadeLater)
{
    static int granted;
    text.SetProfile(ParseProfile("0,0 0.125,-0.125"));
    text.CalculateBounds();
    const std::size_t whole = orvane::BuildMesh(text).indices.size();
    int refusals = 0;
    for (int requests = 0; requests < 60; ++requests)
    {
        OrvProfileString copy = text;
        copy.PlaceSolids([](const orvane::PlacedLetter&) {});
        orvane::SurfaceRecorder recorder;
        granted = requests;
        SetMemoryJudge([](const void*) { return granted-- <= 0; });
        try
        {
            copy.RecordSolid(StubFont::IndexOf('A'), recorder);
        }
        catch (const std::bad_alloc&)
        {
            ++refusals;
        }
        SetMemoryJudge(nullptr);
        recorder.Clear();
        copy.RecordSolid(StubFont::IndexOf('A'), recorder);
        EXPECT_EQ(recorder.Indices().size(), whole) << requests;
    }
    EXPECT_GT(refusals, 10);
}

TEST_F(OrvProfileStringTest, WithoutAFontThereIsNoSolid)
{
    text.AttachFont(nullptr);
    EXPECT_EQ(Measured().triangles, 0u);
}

TEST_F(OrvProfileStringTest, APoorProfileIsRefusedAndChangesNothing)
{
    const orvane::EdgeProfile before = text.GetProfile();
    EXPECT_THROW(text.SetProfile({}), orvane::Error);
    EXPECT_EQ(text.GetProfile(), before);
}

TEST_F(OrvProfileStringTest, UndoBringsBackProfileAndFusion)
{
    const orvane::EdgeProfile before = text.GetProfile();
    ASSERT_EQ(text.SaveToUndo(), 1);
    text.SetProfile(ParseProfile("0,0 0.25,-0.25"));
    text.SetFusion(LetterFusion::Line);
    ASSERT_EQ(text.RestoreFromUndo(), 1);
    EXPECT_EQ(text.GetProfile(), before);
    EXPECT_EQ(text.GetFusion(), LetterFusion::Separate);
}

// Records.

RecordBytes OwnPart(DWORD version, const char* profile, LONG fusion, double smoothAngle)
{
    return RecordBytes().Dword(version).String(profile).Long(fusion).Double(smoothAngle);
}

class OrvProfileStringRecord : public testing::Test
{
protected:
    OrvProfileStringRecord()
    {
        text.SetProfile(ParseProfile("0,0 0.25,-0.5"));
        text.SetFusion(LetterFusion::Line);
        text.SetSmoothAngle(45);
    }
    /// The record of the base class, then \p own.
    Bytes WithOwnPart(const RecordBytes& own)
    {
        OrvFontString base = text;
        RecordBytes record;
        const Bytes ofBase = Stored(base);
        return record.Raw(ofBase.data(), ofBase.size()).Append(own);
    }

    OrvProfileString text;
};

TEST_F(OrvProfileStringRecord, IsThatOfAFontStringThenTheProfile)
{
    EXPECT_EQ(Stored(text), WithOwnPart(OwnPart(1, "0,0 0.25,-0.5", 1, 45)));
}

TEST_F(OrvProfileStringRecord, IsReadBack)
{
    OrvProfileString read;
    LoadRecord(read, WithOwnPart(OwnPart(1, "0,0 0.125,-0.25 0.25,-0.5", 2, 60)));
    EXPECT_EQ(read.GetProfile(), ParseProfile("0,0 0.125,-0.25 0.25,-0.5"));
    EXPECT_EQ(read.GetFusion(), LetterFusion::Text);
    EXPECT_EQ(read.GetSmoothAngle(), 60);
}

TEST_F(OrvProfileStringRecord, WithBadValuesIsRefused)
{
    OrvProfileString read;
    EXPECT_EQ(LoadCause(read, WithOwnPart(OwnPart(2, "0,0", 0, 30))), CArchiveException::badSchema);
    for (const RecordBytes& own :
         {OwnPart(1, "0,0 x", 0, 30), OwnPart(1, "", 0, 30), OwnPart(1, "0,0", 3, 30),
          OwnPart(1, "0,0", -1, 30), OwnPart(1, "0,0", 0, 181),
          OwnPart(1, "0,0", 0, std::numeric_limits<double>::quiet_NaN())})
    {
        EXPECT_EQ(LoadCause(read, WithOwnPart(own)), CArchiveException::generic);
    }
}
}  // namespace
