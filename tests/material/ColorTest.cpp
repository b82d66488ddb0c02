// SPDX-License-Identifier: MIT
#include "material/Color.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

TEST(Color, StartsMediumGray)
{
    const Color color;
    EXPECT_RGBA(color.GetAmbientColor(), 0.5f, 0.5f, 0.5f, 1.0f);
    EXPECT_RGBA(color.GetDiffuseColor(), 0.5f, 0.5f, 0.5f, 1.0f);
    EXPECT_RGBA(color.GetEmissionColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_RGBA(color.GetSpecularColor(), 0.5f, 0.5f, 0.5f, 1.0f);
    EXPECT_EQ(color.GetShininess(), 64.0f);
}

static Color Numbered()
{
    Color color;
    color.SetAmbientColor(ColorVector(1, 2, 3, 4));
    color.SetDiffuseColor(ColorVector(5, 6, 7, 8));
    color.SetEmissionColor(ColorVector(9, 10, 11, 12));
    color.SetSpecularColor(ColorVector(13, 14, 15, 16));
    color.SetShininess(17);
    return color;
}

static Bytes NumberedRecord()
{
    return RecordBytes()
        .Dword(1)
        .Floats({1, 2, 3, 4})
        .Floats({5, 6, 7, 8})
        .Floats({9, 10, 11, 12})
        .Floats({13, 14, 15, 16})
        .Float(17);
}

TEST(Color, EachPartIsSetAlone)
{
    const Color color = Numbered();
    EXPECT_RGBA(color.GetAmbientColor(), 1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_RGBA(color.GetDiffuseColor(), 5.0f, 6.0f, 7.0f, 8.0f);
    EXPECT_RGBA(color.GetEmissionColor(), 9.0f, 10.0f, 11.0f, 12.0f);
    EXPECT_RGBA(color.GetSpecularColor(), 13.0f, 14.0f, 15.0f, 16.0f);
    EXPECT_EQ(color.GetShininess(), 17.0f);
}

TEST(Color, ResetMakesItMediumGrayAgain)
{
    Color color = Numbered();
    color.Reset();
    Color gray;
    EXPECT_EQ(Stored(color), Stored(gray));
}

TEST(Color, IsTransparentOnlyBelowADiffuseAlphaOfOne)
{
    Color color;
    EXPECT_EQ(color.IsTransparent(), 0);
    color.SetDiffuseColor(ColorVector(1, 1, 1, 0.999f));
    EXPECT_EQ(color.IsTransparent(), 1);
    color.SetDiffuseColor(ColorVector(1, 1, 1, 1.0f));
    EXPECT_EQ(color.IsTransparent(), 0);
    color.SetDiffuseColor(ColorVector(1, 1, 1, 1.5f));
    EXPECT_EQ(color.IsTransparent(), 0);
    color.SetAmbientColor(ColorVector(1, 1, 1, 0.0f));
    EXPECT_EQ(color.IsTransparent(), 0);
}

TEST(Color, CopiesCarryEverything)
{
    const Color color = Numbered();
    Color copy(color);
    EXPECT_EQ(Stored(copy), NumberedRecord());
    Color assigned;
    assigned = color;
    EXPECT_EQ(Stored(assigned), NumberedRecord());
}

TEST(Color, RecordIsVersionColoursAndShininess)
{
    Color loaded;
    LoadRecord(loaded, NumberedRecord());
    EXPECT_RGBA(loaded.GetEmissionColor(), 9.0f, 10.0f, 11.0f, 12.0f);
    EXPECT_EQ(Stored(loaded), NumberedRecord());
}

TEST(Color, RefusesRecordsOfOtherVersions)
{
    Bytes record = NumberedRecord();
    record[0] = 2;
    Color color;
    EXPECT_EQ(LoadCause(color, record), CArchiveException::badSchema);
}

TEST(Color, ARecordThatEndsKeepsWhatWasRead)
{
    Color color;
    EXPECT_EQ(LoadCause(color, RecordBytes().Dword(1).Floats({1, 2, 3, 4, 5})),
              CArchiveException::endOfFile);
    EXPECT_RGBA(color.GetAmbientColor(), 1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_EQ(color.GetShininess(), 64.0f);
}
