// SPDX-License-Identifier: MIT
#include "scene/OrvFontString.h"

#include "extrude/Library.h"
#include "extrude/OrvFontList.h"
#include "extrude/OrvGlyph.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/StubFont.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace
{
/// A text in StubFont, in which A is 0.5, B 0.25, C 0.75 em wide; A is 1 em high, B goes from -0.25
/// to 0.5.
class OrvFontStringTest : public testing::Test
{
protected:
    OrvFontStringTest()
    {
        string.AttachFont(&font);
        string.ClearAdjustSpacingForBevels();
    }

    void SetText(const char* text)
    {
        string.SetTextString(text);
        EXPECT_EQ(string.CalculateBounds(), 1);
    }

    StubFont font;
    OrvFontString string;
};

testing::AssertionResult Is(const DVector& vector, double x, double y, double z)
{
    if (vector.x == x && vector.y == y && vector.z == z)
    {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << "(" << vector.x << ", " << vector.y << ", " << vector.z << ")";
}

// Bounds.

TEST_F(OrvFontStringTest, MeasuringSetsTheDimensionsAndKeepsTheScale)
{
    EXPECT_EQ(string.GetFont(), &font);
    SetText("AB");
    EXPECT_TRUE(Is(string.GetUnscaledDimensions(), 0.75, 1.25, 1));
    EXPECT_TRUE(Is(string.GetScaledDimensions(), 0.75, 1.25, 0.2));
    EXPECT_TRUE(Is(string.GetScale(), 1, 1, 0.2));
    string.CalculateBounds();
    EXPECT_TRUE(Is(string.GetScale(), 1, 1, 0.2));
    EXPECT_TRUE(Is(string.GetScaledDimensions(), 0.75, 1.25, 0.2));
}

TEST_F(OrvFontStringTest, TheJustificationPutsTheBoxRightOfAcrossOrLeftOfTheOrigin)
{
    const float lefts[] = {0, -0.375f, -0.75f};
    for (const int justification : {0, 1, 2})
    {
        SCOPED_TRACE(justification);
        string.SetJustification(justification);
        SetText("AB");
        const float left = lefts[justification];
        EXPECT_TRUE(Is(string.GetBoundsLocalMinimum(), left, -0.625, -0.2f));
        EXPECT_TRUE(Is(string.GetBoundsLocalMaximum(), left + 0.75f, 0.625, 0));
        EXPECT_TRUE(string.GetBoundsLocalSphere().IsDefined());
    }
}

TEST_F(OrvFontStringTest, RightJustifiedTextLiesEntirelyAtOrLeftOfZero)
{
    string.SetJustification(2);
    SetText("ABC\rA");
    EXPECT_EQ(string.GetBoundsLocalMaximum().x, 0);
    EXPECT_LT(string.GetBoundsLocalMinimum().x, 0);
}

TEST_F(OrvFontStringTest, GlobalBoundsGoThroughTheTransform)
{
    string.Translate(DVector(10, 0, 0));
    SetText("AB");
    EXPECT_TRUE(Is(string.GetBoundsGlobalMinimum(), 10, -0.625, -0.2f));
    EXPECT_TRUE(Is(string.GetBoundsGlobalMaximum(), 10.75, 0.625, 0));
}

TEST_F(OrvFontStringTest, MeasuringComputesTheMaximumBevelDepth)
{
    string.SetScale(DVector(4, 4, 1));
    SetText("A");
    EXPECT_EQ(string.GetMaximumBevelDepth(), 0.5f);
}

TEST_F(OrvFontStringTest, WithoutAFontOnlyTheChildrenHaveBounds)
{
    string.AttachFont(nullptr);
    SetText("AB");
    EXPECT_FALSE(string.GetBoundsLocalSphere().IsDefined());
    EXPECT_TRUE(Is(string.GetUnscaledDimensions(), 0, 0, 0));

    auto* const child = new OrvFontString;
    child->AttachFont(&font);
    child->SetTextString("C");
    string.AddChild(child);
    EXPECT_EQ(string.CalculateBounds(), 1);
    EXPECT_EQ(string.GetBoundsLocalMaximum().x, 0.75f);
}

// Resizing. A is 0.5 wide and 1 high: local handle 2 is at (0.5, 0.5, 0), its anchor (handle 4) at
// (0, -0.5, -0.2).

class OrvFontStringResize : public OrvFontStringTest
{
protected:
    OrvFontStringResize()
    {
        SetText("A");
        string.CalculateSizingHandles();
    }
};

TEST_F(OrvFontStringResize, TheExtentsBecomeTheDimensionsAndTheScaleFollows)
{
    EXPECT_EQ(string.Resize(DVector(1, 1.5, 0), 2), 1);
    // 1 by 2 of 0.5 by 1.
    EXPECT_EQ(string.GetScale().x, 2);
    EXPECT_EQ(string.GetScale().y, 2);
    EXPECT_DOUBLE_EQ(string.GetScale().z, 0.2f);
    EXPECT_EQ(string.GetScaledDimensions().x, 1);
    EXPECT_EQ(string.GetScaledDimensions().y, 2);
    // The centre went from (0.25, 0) to (0.5, 0.5).
    EXPECT_TRUE(Is(string.GetTranslation(), 0.25, 0.5, 0));
    EXPECT_EQ(string.GetLocalSizingHandleCenter(2).x, 1);
}

TEST_F(OrvFontStringResize, AHandleDraggedPastItsAnchorMirrorsTheText)
{
    string.Resize(DVector(-1, 0.5, 0), 2);
    EXPECT_EQ(string.GetScale().x, -2);
    EXPECT_EQ(string.GetScale().y, 1);
    EXPECT_EQ(string.GetScaledDimensions().x, 1);
}

TEST_F(OrvFontStringResize, EveryHandleHasItsOwnSigns)
{
    // Each is dragged 0.5 outwards in x and 1 in y: from 0.5 by 1 to 1 by 2.
    const double xs[] = {-0.5, -0.5, 0.5, 0.5};
    const double ys[] = {-1, 1, 1, -1};
    for (int handle = 0; handle < 4; ++handle)
    {
        SCOPED_TRACE(handle);
        OrvFontString fresh(string);
        fresh.CalculateSizingHandles();
        const DVector from = fresh.GetLocalSizingHandleCenter(handle);
        fresh.Resize(from + DVector(xs[handle], ys[handle], 0), handle);
        EXPECT_EQ(fresh.GetScale().x, 2);
        EXPECT_EQ(fresh.GetScale().y, 2);
    }
}

TEST_F(OrvFontStringResize, TheMinimumSizeIsTakenOffTheExtents)
{
    string.minimumSize = DVector(0.25, 0.5, 0);
    OrvFontString mirrored(string);
    mirrored.CalculateSizingHandles();
    string.Resize(DVector(1, 1.5, 0), 2);
    EXPECT_EQ(string.GetScale().x, (1 - 0.25) / 0.5);
    EXPECT_EQ(string.GetScale().y, 2 - 0.5);
    mirrored.Resize(DVector(-1, -2.5, 0), 2);
    EXPECT_EQ(mirrored.GetScale().x, (-1 + 0.25) / 0.5);
    EXPECT_EQ(mirrored.GetScale().y, -2 + 0.5);
}

TEST_F(OrvFontStringResize, AnExtentMinusTheMinimumSizeIsNeverZero)
{
    OrvFontString limited(string);
    limited.CalculateSizingHandles();
    // Onto the anchor: 0 counts as the other side.
    string.Resize(DVector(0, 0.5, 0), 2);
    EXPECT_EQ(string.GetScale().x, -0.00001 / 0.5);
    EXPECT_EQ(string.GetScale().y, 1);
    // With a minimum the extent becomes the minimum, of which nothing is left.
    limited.minimumSize = DVector(0.25, 0, 0);
    limited.Resize(DVector(0, 0.5, 0), 2);
    EXPECT_EQ(limited.GetScale().x, 0.00001 / 0.5);
}

TEST_F(OrvFontStringResize, ADragBehindTheBackLeavesNoDepth)
{
    string.Resize(DVector(0.5, 0.5, -1), 2);
    EXPECT_EQ(string.GetScale().z, 0);
}

TEST_F(OrvFontStringResize, ATextThatScalesItsBevelsResizesLikeEveryNode)
{
    string.SetScaleBevels();
    string.minimumSize = DVector(0.25, 0.5, 0);
    string.Resize(DVector(1, 1.5, 0), 2);
    EXPECT_EQ(string.GetScale().x, 2);
    EXPECT_EQ(string.GetScale().y, 2);
}

TEST_F(OrvFontStringTest, ATextWithoutDimensionsKeepsItsScaleWhenResized)
{
    string.AttachFont(nullptr);
    string.CalculateSizingHandles();
    string.Resize(DVector(1, 1, 0), 2);
    EXPECT_TRUE(Is(string.GetScale(), 1, 1, 0.2));
}

TEST_F(OrvFontStringTest, ScalingToFitKeepsTheOldSize)
{
    // The line starts at 2 a = 0.25: A ends at 0.75, AC at 1.5.
    string.SetScale(DVector(1, 1, 1));
    string.SetBevelStyle(1);
    string.SetBevelLocation(0);
    string.SetBevelDepth(0.125f);
    SetText("A");
    OrvFontString scaling(string);
    scaling.SetScaleBevels();

    string.SetTextString("AC");
    EXPECT_EQ(string.ScaleToFitOldDimensions(), 1);
    EXPECT_TRUE(Is(string.GetScale(), 0.5, 1, 1));
    EXPECT_EQ(string.GetBevelDepth(), 0.0625f);
    // Measured again at the new scale and bevel: 0.125 + 0.5 · 1.25.
    EXPECT_TRUE(Is(string.GetScaledDimensions(), 0.75, 1, 1));

    scaling.SetTextString("AC");
    scaling.ScaleToFitOldDimensions();
    EXPECT_TRUE(Is(scaling.GetScale(), 0.5, 1, 1));
    EXPECT_EQ(scaling.GetBevelDepth(), 0.125f);
}

TEST_F(OrvFontStringTest, ScalingToFitTakesTheFactor1ForAnExtentOf0)
{
    // Never measured before.
    string.SetTextString("A");
    string.ScaleToFitOldDimensions();
    EXPECT_TRUE(Is(string.GetScale(), 1, 1, 0.2));
    // D has no height: from 0.5 by 1 to 1 by 0.
    string.SetTextString("D");
    string.ScaleToFitOldDimensions();
    EXPECT_TRUE(Is(string.GetScale(), 0.5, 1, 0.2));
}

// Copies and undo.

TEST_F(OrvFontStringTest, CopiesShareTheFont)
{
    string.SetTextString("A");
    const OrvFontString copy(string);
    OrvFontString assigned;
    assigned = string;
    EXPECT_EQ(copy.GetFont(), &font);
    EXPECT_EQ(assigned.GetFont(), &font);
    EXPECT_EQ(*assigned.GetTextString(), "A");
}

TEST_F(OrvFontStringTest, UndoRestoresTheTextAndTheFont)
{
    EXPECT_EQ(string.RestoreFromUndo(), 0);
    string.SetTextString("A");
    EXPECT_EQ(string.SaveToUndo(), 1);
    string.SetTextString("B");
    string.AttachFont(nullptr);
    string.SetEditable();
    string.SetShowExtentsBox();
    EXPECT_EQ(string.RestoreFromUndo(), 1);
    EXPECT_EQ(*string.GetTextString(), "A");
    EXPECT_EQ(string.GetFont(), &font);
    EXPECT_FALSE(string.IsEditable());
    EXPECT_TRUE(string.ShouldShowExtentsBox());
    EXPECT_FALSE(string.CanUndo());
}

// Records.

constexpr int recordVersion = 1;

/// What the text stores before its own part.
RecordBytes TextRecord()
{
    OrvString text;
    const Bytes bytes = Stored(text);
    return RecordBytes().Raw(bytes.data(), bytes.size());
}

/// A field of \p size bytes that begins with the text.
RecordBytes Field(const char* text, std::size_t size)
{
    Bytes bytes(size);
    std::memcpy(bytes.data(), text, std::strlen(text));
    return RecordBytes().Raw(bytes.data(), bytes.size());
}

/// The 156 bytes of a face's description.
RecordBytes Description(const char* face, LONG weight, const char* fullName, const char* style)
{
    return RecordBytes()
        .Long(-2048)
        .Long(7)
        .Long(0)
        .Long(0)
        .Long(weight)
        .Byte(0)
        .Byte(0)
        .Byte(0)
        .Byte(0)
        .Byte(3)
        .Byte(2)
        .Byte(1)
        .Byte(0x22)
        .Append(Field(face, 32))
        .Append(Field(fullName, 64))
        .Append(Field(style, 32));
}

void CopyTo(char* field, const char* text)
{
    std::copy_n(text, std::strlen(text) + 1, field);
}

TEST_F(OrvFontStringTest, StoresItsTextTheFontsNameAndItsDescription)
{
    OrvFontString stored;
    stored.AttachFont(&font);
    ENUMLOGFONTA& record = *font.GetEnumLogFont();
    record.elfLogFont.lfHeight = -2048;
    record.elfLogFont.lfWidth = 7;
    record.elfLogFont.lfWeight = 700;
    record.elfLogFont.lfOutPrecision = 3;
    record.elfLogFont.lfClipPrecision = 2;
    record.elfLogFont.lfQuality = 1;
    record.elfLogFont.lfPitchAndFamily = 0x22;
    CopyTo(record.elfLogFont.lfFaceName, "Face");
    CopyTo(reinterpret_cast<char*>(record.elfFullName), "Face Bold");
    CopyTo(reinterpret_cast<char*>(record.elfStyle), "Bold");
    const Bytes expected = TextRecord()
                               .Dword(recordVersion)
                               .String("Stub")
                               .Dword(156)
                               .Append(Description("Face", 700, "Face Bold", "Bold"));
    EXPECT_EQ(Stored(stored), expected);
}

TEST_F(OrvFontStringTest, WithoutAFontStoresAnEmptyNameAndZeroes)
{
    OrvFontString stored;
    const Bytes expected =
        TextRecord().Dword(recordVersion).String("").Dword(156).Append(Field("", 156));
    EXPECT_EQ(Stored(stored), expected);
}

/// The registry with stand-ins for installed fonts, known by their names alone.
class OrvFontStringLoading : public testing::Test
{
protected:
    void SetUp() override
    {
        GetFontList()->RemoveAll();
        for (const char* const name : {"A First Font", "DejaVu Sans", "DejaVu Sans Bold"})
        {
            GetFontList()->InsertSorted(new StubFont(name));
        }
    }
    void TearDown() override { GetFontList()->RemoveAll(); }

    /// The name of the font that a text has when it has loaded the record.
    static std::string LoadedFont(const RecordBytes& ownPart)
    {
        OrvFontString string;
        LoadRecord(string, TextRecord().Append(ownPart));
        return string.GetFont() != nullptr ? string.GetFont()->GetFullName().Text() : "none";
    }
    static RecordBytes WithDescription(const char* name, const RecordBytes& description)
    {
        return RecordBytes().Dword(recordVersion).String(name).Dword(156).Append(description);
    }
    static RecordBytes WithBlock(const char* name, DWORD length)
    {
        return RecordBytes().Dword(recordVersion).String(name).Dword(length);
    }
};

TEST_F(OrvFontStringLoading, TheDescriptionNamesTheFontNotTheStoredName)
{
    EXPECT_EQ(LoadedFont(WithDescription("A First Font", Description("DejaVu Sans", 700, "", ""))),
              "DejaVu Sans Bold");
    EXPECT_EQ(LoadedFont(WithDescription("A First Font", Description("DejaVu Sans", 400, "", ""))),
              "DejaVu Sans");
}

TEST_F(OrvFontStringLoading, AFontThatIsNotRegisteredIsReplacedByTheFirst)
{
    const POSITION bold = GetFontList()->FindName("DejaVu Sans Bold");
    const std::unique_ptr<OrvFont> removed(GetFontList()->GetAt(bold));
    GetFontList()->RemoveAt(bold);
    EXPECT_EQ(LoadedFont(WithDescription("", Description("DejaVu Sans", 700, "", ""))),
              "A First Font");
    EXPECT_EQ(LoadedFont(WithBlock("No Such Font", 0)), "A First Font");
}

TEST_F(OrvFontStringLoading, WithAnEmptyRegistryThereIsNoFont)
{
    GetFontList()->RemoveAll();
    EXPECT_EQ(LoadedFont(WithDescription("", Description("DejaVu Sans", 400, "", ""))), "none");
}

TEST_F(OrvFontStringLoading, ABlockOfAnotherLengthIsSkippedAndTheStoredNameIsUsed)
{
    EXPECT_EQ(LoadedFont(WithBlock("DejaVu Sans", 0)), "DejaVu Sans");

    // The byte behind a block of 10,000 is where the archive goes on.
    const Bytes block(10000, 0xCC);
    const Bytes record = TextRecord()
                             .Append(WithBlock("DejaVu Sans Bold", 10000))
                             .Raw(block.data(), block.size())
                             .Byte(42);
    CMemFile file(record.data(), static_cast<UINT>(record.size()));
    CArchive archive(&file, CArchive::load);
    OrvFontString string;
    string.Serialize(archive);
    EXPECT_EQ(string.GetFont()->GetFullName(), "DejaVu Sans Bold");
    BYTE behind = 0;
    archive >> behind;
    EXPECT_EQ(behind, 42);
}

TEST_F(OrvFontStringLoading, ABlockLongerThanTheFileRaisesEndOfFile)
{
    for (const DWORD length : {1u, 155u, 156u, 157u, 0xFFFFFFFFu})
    {
        OrvFontString string;
        const RecordBytes record = TextRecord().Append(WithBlock("DejaVu Sans", length));
        EXPECT_EQ(LoadCause(string, record), CArchiveException::endOfFile) << length;
    }
}

TEST_F(OrvFontStringLoading, ATextStoredWithoutAFontLoadsWithOne)
{
    OrvFontString stored;
    OrvFontString loaded;
    LoadRecord(loaded, Stored(stored));
    EXPECT_NE(loaded.GetFont(), nullptr);
}

TEST_F(OrvFontStringLoading, ADescriptionOfAnyBytesIsSafe)
{
    const Bytes noise(156, 0xFF);
    EXPECT_NE(LoadedFont(WithDescription("", RecordBytes().Raw(noise.data(), noise.size()))),
              "none");
}

TEST_F(OrvFontStringLoading, AnUnknownVersionIsRefused)
{
    for (const DWORD version : {0u, 2u})
    {
        OrvFontString string;
        const RecordBytes record = TextRecord().Dword(version).String("").Dword(0);
        EXPECT_EQ(LoadCause(string, record), CArchiveException::badSchema) << version;
    }
}

TEST_F(OrvFontStringLoading, ALoadedTextStoresWhatItLoaded)
{
    StubFont first("A First Font");
    OrvFontString string;
    string.SetTextString("A\r\nB");
    string.SetJustification(1);
    string.AttachFont(GetFontList()->GetHead());
    const Bytes bytes = Stored(string);
    OrvFontString loaded;
    LoadRecord(loaded, bytes);
    EXPECT_EQ(*loaded.GetTextString(), "A\r\nB");
    EXPECT_EQ(loaded.GetJustification(), 1);
}

TEST(OrvFontStringClass, IsCreatedByItsClassName)
{
    EXPECT_EQ(CRuntimeClass::FromName("OrvFontString"), RUNTIME_CLASS(OrvFontString));
    EXPECT_EQ(RUNTIME_CLASS(OrvFontString)->m_wSchema, 1u | VERSIONABLE_SCHEMA);
    EXPECT_TRUE(RUNTIME_CLASS(OrvFontString)->IsDerivedFrom(RUNTIME_CLASS(OrvString)));
}
}  // namespace
