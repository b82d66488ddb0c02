// SPDX-License-Identifier: MIT
#include "scene/OrvString.h"

#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

namespace
{
NamedColor Material(float grey, float alpha, const char* name = "Grey")
{
    NamedColor color(name);
    color.SetDiffuseColor(ColorVector(grey, grey, grey, alpha));
    return color;
}

float Grey(const NamedColor& color)
{
    return color.GetDiffuseColor().red;
}

TEST(OrvString, ANewTextIsAFifthAsDeepAsHigh)
{
    const OrvString string;
    EXPECT_EQ(string.GetScale().x, 1);
    EXPECT_EQ(string.GetScale().y, 1);
    EXPECT_EQ(string.GetScale().z, 0.2);
    EXPECT_EQ(string.GetMaximumBevelDepth(), 0.1f);
}

TEST(OrvString, ANewTextHasItsDefaults)
{
    const OrvString string;
    for (const NamedColor& color :
         {string.GetBevelColor(), string.GetEdgeColor(), string.GetFaceColor()})
    {
        EXPECT_STREQ(color.GetName(), "Default Material");
        EXPECT_EQ(Grey(color), 0.5f);
    }
    EXPECT_EQ(string.GetBevelDepth(), 0);
    EXPECT_EQ(string.GetBevelLocation(), 2);
    EXPECT_EQ(string.GetBevelStyle(), 0);
    EXPECT_EQ(string.GetFirstLineOffset(), 0);
    EXPECT_EQ(string.ShouldUseBevelColor(), 1);
    EXPECT_EQ(string.ShouldUseEdgeColor(), 2);
    EXPECT_EQ(string.ShouldAdjustSpacingForBevels(), 4);
    EXPECT_EQ(string.ShouldScaleBevels(), 0);
    EXPECT_EQ(string.GetInterCharacterSpacing(), 0);
    EXPECT_EQ(string.GetInterLineSpacing(), 0);
    EXPECT_EQ(string.GetJustification(), 0);
    EXPECT_EQ(*string.GetTextString(), "");
}

TEST(OrvString, OptionTestsGiveTheBitAndChangeNoOther)
{
    OrvString string;
    string.SetScaleBevels();
    EXPECT_EQ(string.ShouldScaleBevels(), 8);
    string.ClearUseBevelColor();
    EXPECT_EQ(string.ShouldUseBevelColor(), 0);
    string.ClearAdjustSpacingForBevels();
    EXPECT_EQ(string.ShouldAdjustSpacingForBevels(), 0);
    string.ClearUseEdgeColor();
    EXPECT_EQ(string.ShouldUseEdgeColor(), 0);
    string.SetUseBevelColor();
    string.SetAdjustSpacingForBevels();
    string.SetUseEdgeColor();
    EXPECT_EQ(string.ShouldUseBevelColor(), 1);
    EXPECT_EQ(string.ShouldAdjustSpacingForBevels(), 4);
    EXPECT_EQ(string.ShouldUseEdgeColor(), 2);
    string.ClearScaleBevels();
    EXPECT_EQ(string.ShouldScaleBevels(), 0);
}

TEST(OrvString, StyleLocationAndJustificationTestsGive1Or0)
{
    OrvString string;
    for (int value = 0; value < 3; ++value)
    {
        string.SetBevelLocation(value);
        EXPECT_EQ(string.IsFrontFaceOnly(), value == 0 ? 1 : 0);
        EXPECT_EQ(string.IsBackFaceOnly(), value == 1 ? 1 : 0);
        EXPECT_EQ(string.IsBothFaces(), value == 2 ? 1 : 0);
        string.SetBevelStyle(value);
        EXPECT_EQ(string.ShouldSquareEdges(), value == 0 ? 1 : 0);
        EXPECT_EQ(string.ShouldBevelEdges(), value == 1 ? 1 : 0);
        EXPECT_EQ(string.ShouldRoundEdges(), value == 2 ? 1 : 0);
        string.SetJustification(value);
        EXPECT_EQ(string.ShouldLeftJustify(), value == 0 ? 1 : 0);
        EXPECT_EQ(string.ShouldCenterJustify(), value == 1 ? 1 : 0);
        EXPECT_EQ(string.ShouldRightJustify(), value == 2 ? 1 : 0);
    }
}

TEST(OrvString, SpacesAndLineEndsCountAsEmptyAndATabDoesNot)
{
    OrvString string;
    EXPECT_TRUE(string.IsStringEmpty());
    string.SetTextString("  \r\n");
    EXPECT_TRUE(string.IsStringEmpty());
    string.SetTextString("\t");
    EXPECT_FALSE(string.IsStringEmpty());
    string.SetTextString(" \r\na");
    EXPECT_FALSE(string.IsStringEmpty());
}

// Bevels.

TEST(OrvString, TheMaximumBevelDepthIsHalfTheSmallestScale)
{
    OrvString string;
    string.SetScale(DVector(3, 2, 4));
    EXPECT_EQ(string.GetMaximumBevelDepth(), 0.1f);
    EXPECT_EQ(string.CalculateMaximumBevelDepth(), 1);
    EXPECT_EQ(string.GetMaximumBevelDepth(), 1.0f);
    string.SetScale(DVector(0.5, 2, 4));
    string.CalculateMaximumBevelDepth();
    EXPECT_EQ(string.GetMaximumBevelDepth(), 0.25f);
}

TEST(OrvString, SquareEdgesAllowNoBevelWhateverTheDepth)
{
    OrvString string;
    string.SetBevelDepth(0.5f);
    for (const int style : {0, -1, 3})
    {
        string.SetBevelStyle(style);
        EXPECT_EQ(string.GetAllowableBevelDepth(), 0) << style;
    }
}

TEST(OrvString, TheTextsDepthLimitsTheBevelAndHalfOfItWhenBothFacesHaveOne)
{
    OrvString string;
    string.SetBevelDepth(0.5f);
    for (const int style : {1, 2})
    {
        string.SetBevelStyle(style);
        string.SetBevelLocation(2);
        EXPECT_EQ(string.GetAllowableBevelDepth(), 0.1f);
        string.SetBevelLocation(0);
        EXPECT_EQ(string.GetAllowableBevelDepth(), 0.2f);
        string.SetBevelLocation(1);
        EXPECT_EQ(string.GetAllowableBevelDepth(), 0.2f);
    }
    string.SetBevelDepth(0.05f);
    EXPECT_EQ(string.GetAllowableBevelDepth(), 0.05f);
}

TEST(OrvString, ExtrusionDataHasTheScaleTheAllowableBevelAndItsRings)
{
    OrvString string;
    string.SetScale(DVector(2, 3, 1));
    string.SetBevelStyle(1);
    string.SetBevelDepth(0.25f);
    ExtrusionData extrusion = string.GetExtrusionData();
    EXPECT_EQ(extrusion.scale.x, 2);
    EXPECT_EQ(extrusion.scale.y, 3);
    EXPECT_EQ(extrusion.scale.z, 1);
    EXPECT_EQ(extrusion.bevelDepth, 0.25f);
    EXPECT_EQ(extrusion.backZ, -1);
    EXPECT_EQ(extrusion.backBevelZ, -0.75f);
    EXPECT_EQ(extrusion.frontBevelZ, -0.25f);
    EXPECT_EQ(extrusion.flags, 0u);
    EXPECT_EQ(extrusion.textureRepeat, 1);
    string.SetScaleBevels();
    EXPECT_EQ(string.GetExtrusionData().flags, 0x1u);
}

TEST(OrvString, ExtrusionDataIsTexturedWhenTheTextureIsValidAndTextured)
{
    OrvString string;
    string.GetTexture()->SetRepeatRate(2.5);
    const DWORD expected[] = {0, 0, 0, 2, 4, 4, 4, 6};
    for (DWORD flags = 0; flags < 8; ++flags)
    {
        string.GetTexture()->textureFlags = flags;
        EXPECT_EQ(string.GetExtrusionData().flags, expected[flags]) << flags;
    }
    EXPECT_EQ(string.GetExtrusionData().textureRepeat, 2.5f);
}

// Materials.

TEST(OrvString, SurfaceColoursAreFaceEdgeAndBevel)
{
    OrvString string;
    string.SetSurfaceColor(Material(0.25f, 1), 0);
    string.SetSurfaceColor(Material(0.75f, 1), 1);
    string.SetSurfaceColor(Material(1.0f, 1), 2);
    EXPECT_EQ(Grey(string.GetFaceColor()), 0.25f);
    EXPECT_EQ(Grey(string.GetEdgeColor()), 0.75f);
    EXPECT_EQ(Grey(string.GetBevelColor()), 1.0f);
}

TEST(OrvString, AnUnknownSurfaceChangesNothingNotEvenTheTransparentBit)
{
    OrvString string;
    string.SetTransparent();
    string.SetSurfaceColor(Material(0.25f, 1), 3);
    string.SetSurfaceColor(Material(0.25f, 1), -1);
    EXPECT_TRUE(string.IsTransparent());
    EXPECT_EQ(Grey(string.GetFaceColor()), 0.5f);
    EXPECT_EQ(Grey(string.GetEdgeColor()), 0.5f);
    EXPECT_EQ(Grey(string.GetBevelColor()), 0.5f);
    string.SetSurfaceColor(Material(0.25f, 1), 0);
    EXPECT_FALSE(string.IsTransparent());
}

TEST(OrvString, ATextIsTransparentWhenAMaterialInUseIs)
{
    OrvString string;
    string.SetFaceColor(Material(0.5f, 0.99f));
    EXPECT_TRUE(string.IsTransparent());
    string.SetFaceColor(Material(0.5f, 1));
    EXPECT_FALSE(string.IsTransparent());

    string.SetBevelColor(Material(0.5f, 0.5f));
    EXPECT_TRUE(string.IsTransparent());
    string.ClearUseBevelColor();
    string.SetTransparency();
    EXPECT_FALSE(string.IsTransparent());

    string.SetEdgeColor(Material(0.5f, 0.5f));
    EXPECT_TRUE(string.IsTransparent());
    string.ClearUseEdgeColor();
    string.SetTransparency();
    EXPECT_FALSE(string.IsTransparent());
}

// Copies and records.

/// Every field away from its default.
void Fill(OrvString& string)
{
    string.SetBevelColor(Material(0.25f, 1, "Bevel"));
    string.SetBevelDepth(0.5f);
    string.SetBevelLocation(1);
    string.SetBevelStyle(2);
    string.SetEdgeColor(Material(0.75f, 1, "Edge"));
    string.SetFaceColor(Material(1.0f, 1, "Face"));
    string.SetFirstLineOffset(0.125f);
    string.SetScaleBevels();
    string.ClearAdjustSpacingForBevels();
    string.SetInterCharacterSpacing(0.375f);
    string.SetInterLineSpacing(0.625f);
    string.SetJustification(2);
    string.SetTextString("Hi\r\n");
}

RecordBytes MaterialRecord(float grey, const char* name)
{
    return RecordBytes()
        .Dword(1)
        .Floats({0.5f, 0.5f, 0.5f, 1})
        .Floats({grey, grey, grey, 1})
        .Floats({0, 0, 0, 1})
        .Floats({0.5f, 0.5f, 0.5f, 1})
        .Float(64)
        .Dword(1)
        .Dword(0)
        .String(name);
}

/// What a node with the scale of a new text stores.
RecordBytes NodeRecord()
{
    DrawingObject node;
    node.SetScale(DVector(1, 1, 0.2));
    const Bytes bytes = Stored(node);
    return RecordBytes().Raw(bytes.data(), bytes.size());
}

/// The record of a filled text up to its characters, with these flags.
RecordBytes FilledRecord(DWORD version, DWORD flags)
{
    return NodeRecord()
        .Dword(version)
        .Append(MaterialRecord(0.25f, "Bevel"))
        .Float(0.5f)
        .Long(1)
        .Long(2)
        .Append(MaterialRecord(0.75f, "Edge"))
        .Append(MaterialRecord(1.0f, "Face"))
        .Float(0.125f)
        .Dword(flags)
        .Long(2)
        .Float(0.1f)
        .String("Hi\r\n");
}

/// Whether the fields are those of a filled text, except for the spacings.
void ExpectFilled(const OrvString& string)
{
    EXPECT_EQ(Grey(string.GetBevelColor()), 0.25f);
    EXPECT_STREQ(string.GetBevelColor().GetName(), "Bevel");
    EXPECT_EQ(string.GetBevelDepth(), 0.5f);
    EXPECT_EQ(string.GetBevelLocation(), 1);
    EXPECT_EQ(string.GetBevelStyle(), 2);
    EXPECT_EQ(Grey(string.GetEdgeColor()), 0.75f);
    EXPECT_EQ(Grey(string.GetFaceColor()), 1.0f);
    EXPECT_EQ(string.GetFirstLineOffset(), 0.125f);
    EXPECT_EQ(string.GetJustification(), 2);
    EXPECT_EQ(string.GetMaximumBevelDepth(), 0.1f);
    EXPECT_EQ(*string.GetTextString(), "Hi\r\n");
    EXPECT_EQ(string.GetScale().z, 0.2);
}

/// The option bits.
int Flags(const OrvString& string)
{
    return string.ShouldUseBevelColor() | string.ShouldUseEdgeColor() |
           string.ShouldAdjustSpacingForBevels() | string.ShouldScaleBevels();
}

TEST(OrvString, CopiesHaveEveryField)
{
    OrvString string;
    Fill(string);
    string.SetTransparent();
    const OrvString copy(string);
    OrvString assigned;
    assigned = string;
    assigned = *&assigned;
    for (const OrvString* const other : {&copy, static_cast<const OrvString*>(&assigned)})
    {
        ExpectFilled(*other);
        EXPECT_EQ(Flags(*other), 0xB);
        EXPECT_EQ(other->GetInterCharacterSpacing(), 0.375f);
        EXPECT_EQ(other->GetInterLineSpacing(), 0.625f);
        EXPECT_TRUE(other->IsTransparent());
    }
}

TEST(OrvString, StoresItsNodeThenItsFieldsInOrder)
{
    OrvString string;
    Fill(string);
    const Bytes expected = FilledRecord(2, 0xB).Float(0.375f).Float(0.625f);
    EXPECT_EQ(Stored(string), expected);
}

TEST(OrvString, LoadsWhatItStored)
{
    OrvString string;
    LoadRecord(string, FilledRecord(2, 0xB).Float(0.375f).Float(0.625f));
    ExpectFilled(string);
    EXPECT_EQ(Flags(string), 0xB);
    EXPECT_EQ(string.GetInterCharacterSpacing(), 0.375f);
    EXPECT_EQ(string.GetInterLineSpacing(), 0.625f);
}

TEST(OrvString, Version1HasNoSpacings)
{
    OrvString string;
    Fill(string);
    LoadRecord(string, FilledRecord(1, 0xF));
    ExpectFilled(string);
    EXPECT_EQ(Flags(string), 0xF);
    EXPECT_EQ(string.GetInterCharacterSpacing(), 0);
    EXPECT_EQ(string.GetInterLineSpacing(), 0);
}

TEST(OrvString, AStoredTextLoadsWithBothMaterialsInUse)
{
    OrvString string;
    LoadRecord(string, FilledRecord(2, 0).Float(0).Float(0));
    EXPECT_EQ(Flags(string), 3);
    LoadRecord(string, FilledRecord(1, 0));
    EXPECT_EQ(Flags(string), 3);
}

TEST(OrvString, AnUnknownVersionIsRefused)
{
    OrvString string;
    for (const DWORD version : {0u, 3u, 0x80000002u})
    {
        EXPECT_EQ(LoadCause(string, FilledRecord(version, 7).Float(0).Float(0)),
                  CArchiveException::badSchema)
            << version;
    }
}

TEST(OrvString, ARecordCutShortRaisesEndOfFile)
{
    const Bytes whole = FilledRecord(2, 7).Float(0).Float(0);
    const Bytes node = NodeRecord();
    for (std::size_t length = node.size(); length < whole.size(); ++length)
    {
        OrvString string;
        EXPECT_EQ(LoadCause(string, Bytes(whole.begin(), whole.begin() + length)),
                  CArchiveException::endOfFile)
            << length;
    }
}

TEST(OrvString, IsCreatedByItsClassName)
{
    EXPECT_EQ(CRuntimeClass::FromName("OrvString"), RUNTIME_CLASS(OrvString));
    EXPECT_EQ(RUNTIME_CLASS(OrvString)->m_wSchema, 2u | VERSIONABLE_SCHEMA);
    EXPECT_TRUE(RUNTIME_CLASS(OrvString)->IsDerivedFrom(RUNTIME_CLASS(DrawingObject)));
}
}  // namespace
