// SPDX-License-Identifier: MIT
// The record of shaped texts.
#include "extrude/OrvFont.h"
#include "platform/Limits.h"
#include "scene/FontObserver.h"
#include "scene/TextureFinder.h"
#include "shapedtext/OrvShapedString.h"
#include "tests/shapedtext/ShapedSettings.h"
#include "tests/support/NodeRecords.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>

namespace
{
using namespace orvane;

const char* const fontFile = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

/// The fields of the class's own part, which can be replaced.
struct OwnPart
{
    DWORD version = 2;
    DWORD hasProfile = 1;
    DWORD fontCount = 1;
    const char* name = "DejaVu Sans";
    const char* pattern = "";
    const char* file = "";
    LONG index = 0;
    DWORD looks = 0;
    LONG weight = 0;
    DWORD isItalic = 0;
    DWORD axisCount = 0;
    const char* family = "DejaVu Sans";
    const char* style = "Book";
    const char* fullName = "DejaVu Sans";
    DWORD checksum = ChecksumOf(fontFile);
    DWORD fontOfStyle = 0;
    DWORD fontsOfStyle = 1;
    DWORD usesInstalledFonts = 0;
    double size = 1;
    DWORD featureCount = 1;
    const char* feature = "kern=0";
    DWORD spanCount = 1;
    DWORD spanBegin = 1;
    DWORD spanEnd = 3;
    DWORD spanColors = 1;
    LONG direction = 2;
    double width = 12;
    DWORD breaksWords = 1;
    DWORD isJustified = 1;
    DWORD hasLineHeight = 1;
    double lineHeight = 1.25;
    DWORD tabStopCount = 2;
    double tabStop = 1.5;
    double tabInterval = 3;
    // Since version 2:
    DWORD usesColorGlyphs = 1;
    DWORD hasFit = 0;
    double fitWidth = 1;
    double fitHeight = 1;
    DWORD breaksLines = 0;
    DWORD hasPath = 0;
    double radius = 0;
    const char* pathData = "";
    double unit = 1;
    DWORD hasStart = 0;
    double start = 0;
    LONG side = 0;

    RecordBytes Get() const
    {
        RecordBytes record;
        record.Dword(version).String("0,0 -0.25,-0.5").Long(1).Double(45).Dword(hasProfile);
        record.Dword(fontCount).String(name).String(pattern).String(file).Long(index);
        record.Dword(looks).Long(weight).Double(0).Dword(isItalic).String("").Dword(axisCount);
        record.String(family).String(style).String(fullName).String("DejaVuSans.ttf");
        record.Long(0).Dword(checksum).Dword(0);
        record.Dword(fontsOfStyle).Dword(fontOfStyle).Dword(usesInstalledFonts);
        record.Double(size).Double(0).String("sr-Latn").String("Latn");
        record.Dword(featureCount).String(feature).Dword(0);
        record.Dword(spanCount).Dword(spanBegin).Dword(spanEnd);
        record.Dword(0).Dword(1).Double(1.5).Double(0.25).String("").String("").Dword(0);
        record.Dword(spanColors).Append(NamedColorRecord("#ff0000"));
        record.Long(direction).Double(width).Dword(breaksWords).Dword(isJustified);
        record.Dword(hasLineHeight).Double(lineHeight);
        record.Dword(tabStopCount).Double(tabStop).Double(2.5).Double(tabInterval);
        if (version == 1)
        {
            return record;
        }
        record.Dword(usesColorGlyphs);
        record.Dword(hasFit).Double(fitWidth).Double(fitHeight).Dword(breaksLines);
        record.Dword(hasPath).Double(radius).String(pathData).Double(unit);
        record.Dword(hasStart).Double(start).Long(side);
        return record.Word(0);  // no font in the record
    }
};

/// The class's own part with another value of a field.
template <typename Field, typename Value>
OwnPart With(Field OwnPart::*field, Value value)
{
    OwnPart own;
    own.*field = static_cast<Field>(value);
    return own;
}

class OrvShapedStringRecord : public testing::Test
{
protected:
    OrvShapedStringRecord()
    {
        settings.style.language = "sr-Latn";
        settings.style.script = "Latn";
        settings.style.features = {"kern=0"};
        ShapedSpan& span = settings.spans.emplace_back();
        span.begin = 1;
        span.end = 3;
        span.style.size = 1.5;
        span.style.rise = 0.25;
        span.style.face = NamedColor("#ff0000");
        settings.direction = TextDirection::RightToLeft;
        settings.width = 12;
        settings.breaksWords = true;
        settings.isJustified = true;
        settings.lineHeight = 1.25;
        settings.tabStops = {1.5, 2.5};
        settings.tabInterval = 3;
        settings.usesColorGlyphs = true;
        text.SetHasProfile(true);
        text.SetProfile(ParseProfile("0,0 -0.25,-0.5"));
        text.SetFusion(LetterFusion::Line);
        text.SetSmoothAngle(45);
        text.SetText("A\u00E9b", settings);
    }

    /// The record of an OrvString with the same text, then the class's own part.
    Bytes Record(const RecordBytes& own)
    {
        OrvString base = text;
        RecordBytes record;
        const Bytes ofBase = Stored(base);
        return record.Raw(ofBase.data(), ofBase.size()).Append(own);
    }
    Bytes Record(const OwnPart& own) { return Record(own.Get()); }
    int CauseOf(const OwnPart& own)
    {
        OrvShapedString read;
        return LoadCause(read, Record(own));
    }
    OrvShapedString Read(const OwnPart& own)
    {
        OrvShapedString read;
        LoadRecord(read, Record(own));
        return read;
    }

    ShapedTextSettings settings = InFont("DejaVu Sans");
    OrvShapedString text;
};

TEST_F(OrvShapedStringRecord, IsThatOfATextThenTheSettings)
{
    EXPECT_EQ(Stored(text), Record(OwnPart()));
}

TEST_F(OrvShapedStringRecord, IsReadBack)
{
    OrvShapedString read = Read(OwnPart());
    EXPECT_EQ(read.GetText(), "A\u00E9b");
    EXPECT_TRUE(read.HasProfile());
    EXPECT_EQ(read.GetProfile(), ParseProfile("0,0 -0.25,-0.5"));
    EXPECT_EQ(read.GetFusion(), LetterFusion::Line);
    const ShapedTextSettings& found = read.GetSettings();
    ASSERT_EQ(found.fonts.size(), 1u);
    EXPECT_EQ(found.fonts[0].query.name, "DejaVu Sans");
    EXPECT_EQ(found.fonts[0].face.style, "Book");
    EXPECT_EQ(found.style.script, "Latn");
    EXPECT_EQ(found.style.features, std::vector<std::string>{"kern=0"});
    ASSERT_EQ(found.spans.size(), 1u);
    EXPECT_EQ(found.spans[0].end, 3u);
    EXPECT_EQ(found.spans[0].style.size, 1.5);
    EXPECT_STREQ(found.spans[0].style.face.value().GetName(), "#ff0000");
    EXPECT_EQ(found.direction, TextDirection::RightToLeft);
    EXPECT_EQ(found.lineHeight, 1.25);
    EXPECT_EQ(found.tabStops, (std::vector<double>{1.5, 2.5}));
    EXPECT_TRUE(read.GetSubstitutedFonts().empty());
    EXPECT_TRUE(read.GetFontNotices().empty());
    EXPECT_EQ(Stored(read), Stored(text));
}

TEST_F(OrvShapedStringRecord, OfVersion1IsReadWithoutTheLaterFields)
{
    OrvShapedString read = Read(With(&OwnPart::version, 1));
    EXPECT_FALSE(read.GetSettings().usesColorGlyphs);
    EXPECT_FALSE(read.GetSettings().fit.has_value());
    EXPECT_FALSE(read.GetSettings().path.has_value());
    EXPECT_EQ(read.GetSettings().tabInterval, 3);
    EXPECT_EQ(Stored(read), Record(With(&OwnPart::usesColorGlyphs, 0)));
}

TEST_F(OrvShapedStringRecord, HasTheBoxOfAText)
{
    OwnPart own;
    own.isJustified = 0;
    own.hasFit = 1;
    own.fitWidth = 4;
    own.fitHeight = 2.5;
    OrvShapedString read = Read(own);
    ASSERT_TRUE(read.GetSettings().fit.has_value());
    EXPECT_EQ(read.GetSettings().fit->width, 4);
    EXPECT_EQ(read.GetSettings().fit->height, 2.5);
    EXPECT_FALSE(read.GetSettings().fit->breaksLines);
    EXPECT_EQ(Stored(read), Record(own));
    own.breaksLines = 1;  // beside a width
    EXPECT_EQ(CauseOf(own), CArchiveException::generic);
    own.width = 0;
    EXPECT_TRUE(Read(own).GetSettings().fit->breaksLines);
}

TEST_F(OrvShapedStringRecord, HasThePathOfAText)
{
    OwnPart own;
    own.isJustified = 0;
    own.width = 0;
    own.hasPath = 1;
    own.pathData = "M0 0L3 0";
    own.unit = 0.5;
    own.hasStart = 1;
    own.start = 0.25;
    own.side = 1;
    OrvShapedString read = Read(own);
    ASSERT_TRUE(read.GetSettings().path.has_value());
    const TextPath& path = *read.GetSettings().path;
    EXPECT_EQ(path.data, "M0 0L3 0");
    EXPECT_EQ(path.unit, 0.5);
    EXPECT_EQ(path.start, 0.25);
    EXPECT_EQ(path.side, PathSide::Right);
    EXPECT_EQ(Stored(read), Record(own));
    own.radius = 2;  // beside path data
    EXPECT_EQ(CauseOf(own), CArchiveException::generic);
    own.pathData = "";
    EXPECT_EQ(Read(own).GetSettings().path->radius, 2);
    own.radius = 0;
    EXPECT_EQ(CauseOf(own), CArchiveException::generic);
}

TEST_F(OrvShapedStringRecord, OfATextThatTheBaseClassHasChangedCanBeRead)
{
    text.SetTextString("\xFFy");
    const Bytes stored = Stored(text);
    OrvShapedString read;
    LoadRecord(read, stored);
    EXPECT_EQ(read.GetText(), "\uFFFDy");
    EXPECT_TRUE(read.GetSettings().spans.empty());  // they belonged to another text
}

TEST_F(OrvShapedStringRecord, OfATextWithoutAProfileKeepsItsBevels)
{
    text.SetHasProfile(false);
    text.SetBevelStyle(static_cast<int>(EdgeStyle::Round));
    text.SetBevelDepth(0.125f);
    OrvShapedString read;
    LoadRecord(read, Stored(text));
    EXPECT_FALSE(read.HasProfile());
    EXPECT_EQ(read.GetBevelStyle(), static_cast<int>(EdgeStyle::Round));
    EXPECT_EQ(read.GetBevelDepth(), 0.125f);
}

TEST_F(OrvShapedStringRecord, HoldsAllThatAFontQueryAsksFor)
{
    settings = InFont("DejaVu Sans");
    FontQuery& query = settings.fonts[0].query;
    query.name.clear();
    query.file = fontFile;
    query.weight = 700;
    query.width = 75;
    query.isItalic = true;
    query.axes = {{"wght", 650}};
    text.SetText("A", settings);
    OrvShapedString read;
    LoadRecord(read, Stored(text));
    const FontQuery& found = read.GetSettings().fonts[0].query;
    EXPECT_EQ(found.file, fontFile);
    EXPECT_EQ(found.weight, 700);
    EXPECT_EQ(found.width, 75);
    EXPECT_EQ(found.isItalic, true);
    ASSERT_EQ(found.axes.size(), 1u);
    EXPECT_EQ(found.axes[0].tag, "wght");
    EXPECT_EQ(found.axes[0].value, 650);
}

TEST_F(OrvShapedStringRecord, OfAnotherVersionIsRefused)
{
    OwnPart own;
    own.version = 3;
    EXPECT_EQ(CauseOf(own), CArchiveException::badSchema);
}

TEST_F(OrvShapedStringRecord, WithBadValuesIsRefused)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    OwnPart tooBold = With(&OwnPart::looks, 1);
    tooBold.weight = 1001;
    const OwnPart wrong[] = {
        With(&OwnPart::hasProfile, 2),
        With(&OwnPart::fontCount, 65),
        With(&OwnPart::fontCount, 0xFFFFFFFF),
        With(&OwnPart::name, ""),
        With(&OwnPart::pattern, "serif"),  // beside a name
        With(&OwnPart::index, -1),
        With(&OwnPart::looks, 8),
        tooBold,
        With(&OwnPart::isItalic, 2),
        With(&OwnPart::axisCount, 65),
        With(&OwnPart::fontsOfStyle, 65),
        With(&OwnPart::fontOfStyle, 1),
        With(&OwnPart::usesInstalledFonts, 2),
        With(&OwnPart::size, 0),
        With(&OwnPart::size, nan),
        With(&OwnPart::featureCount, 65),
        With(&OwnPart::feature, "kern[1:2]"),
        With(&OwnPart::spanCount, 10'001),
        With(&OwnPart::spanBegin, 2),  // inside of a character
        With(&OwnPart::spanEnd, 1),
        With(&OwnPart::spanEnd, 5),
        With(&OwnPart::spanColors, 8),
        With(&OwnPart::direction, 3),
        With(&OwnPart::direction, -1),
        With(&OwnPart::width, -1),
        With(&OwnPart::width, 0),  // of a justified text
        With(&OwnPart::breaksWords, 2),
        With(&OwnPart::hasLineHeight, 2),
        With(&OwnPart::lineHeight, 101),
        With(&OwnPart::tabStopCount, 1'001),
        With(&OwnPart::tabStop, 2.5),
        With(&OwnPart::tabInterval, 0),
        With(&OwnPart::usesColorGlyphs, 2),
        With(&OwnPart::hasFit, 2),
        With(&OwnPart::breaksLines, 2),
        With(&OwnPart::hasPath, 2),
        With(&OwnPart::hasPath, 1),  // of a text with a width
        With(&OwnPart::hasStart, 2),
        With(&OwnPart::side, 2),
        With(&OwnPart::side, -1),
    };
    for (const OwnPart& own : wrong)
    {
        EXPECT_EQ(CauseOf(own), CArchiveException::generic) << &own - wrong;
    }
}

TEST_F(OrvShapedStringRecord, ErrorsNameThePlaceAndTheLimit)
{
    OwnPart own;
    own.spanCount = 10'001;
    OrvShapedString read;
    try
    {
        LoadRecord(read, Record(own));
        ADD_FAILURE() << "no exception";
    }
    catch (const CArchiveException& error)
    {
        EXPECT_NE(std::string(error.what())
                      .find("the spans of a text: found 10001, expected at most 10000"),
                  std::string::npos)
            << error.what();
    }
}

TEST_F(OrvShapedStringRecord, ThatEndsEarlyIsRefused)
{
    const Bytes whole = Record(OwnPart());
    const std::size_t own = OwnPart().Get().Get().size();
    for (std::size_t size = whole.size() - own; size < whole.size(); ++size)
    {
        OrvShapedString read;
        ASSERT_EQ(LoadCause(read, Bytes(whole.begin(), whole.begin() + static_cast<long>(size))),
                  CArchiveException::endOfFile)
            << size;
    }
}

TEST_F(OrvShapedStringRecord, OfATextThatIsNotUtf8IsRefused)
{
    OwnPart own;
    text.SetTextString("A\xC3\x41");
    EXPECT_EQ(CauseOf(own), CArchiveException::generic);
}

class FontWatch : public FontObserver
{
public:
    void Loaded(const OrvFontString& text, const FontRecord& record) override
    {
        found.push_back(record.name.Text() + " -> " + text.GetFont()->GetFullName().Text());
    }
    std::vector<std::string> found;
};

TEST_F(OrvShapedStringRecord, AFontThatIsNotInstalledIsReplacedAndTold)
{
    OwnPart own;
    own.name = "Nowhere Sans";
    own.family = "Nowhere Sans";
    own.fullName = "Nowhere Sans Book";
    own.checksum = 0x12345678;
    FontWatch watch;
    OrvShapedString read = Read(own);
    ASSERT_EQ(read.GetSubstitutedFonts().size(), 1u);
    EXPECT_EQ(read.GetSubstitutedFonts()[0].name, "Nowhere Sans");
    const std::string used = read.GetSubstitutedFonts()[0].used;
    EXPECT_FALSE(used.empty());
    EXPECT_EQ(watch.found, std::vector<std::string>{"Nowhere Sans -> " + used});
    ASSERT_EQ(read.GetFontNotices().size(), 1u);
    EXPECT_EQ(read.GetFontNotices()[0],
              "font \"Nowhere Sans\" is not installed; \"" + used + "\" is used instead");
    EXPECT_FALSE(read.GetLayout().glyphs.empty());
    // The record is stored as its author made it.
    EXPECT_EQ(Stored(read), Record(own));
}

TEST_F(OrvShapedStringRecord, AFileThatIsGoneIsLookedForByItsNames)
{
    OwnPart own;
    own.name = "";
    own.file = "/nowhere/DejaVuSans.ttf";
    OrvShapedString read = Read(own);
    EXPECT_TRUE(read.GetSubstitutedFonts().empty());
    EXPECT_EQ(read.GetLayout().faces[0]->FullName(), "DejaVu Sans");
    EXPECT_EQ(Stored(read), Record(own));
}

TEST_F(OrvShapedStringRecord, AnotherVersionOfAFontIsTold)
{
    OwnPart own;
    own.checksum ^= 1;
    OrvShapedString read = Read(own);
    EXPECT_TRUE(read.GetSubstitutedFonts().empty());
    EXPECT_EQ(read.GetFontNotices(),
              std::vector<std::string>{"font \"DejaVu Sans\" is another version than the one the "
                                       "text was made with"});
}

/// Allows no file.
class NoFiles : public TextureFinder
{
public:
    void Find(TextureMap&) override {}
};

TEST_F(OrvShapedStringRecord, AFileThatTheDocumentDoesNotAllowIsNotRead)
{
    OwnPart own;
    own.name = "";
    own.file = fontFile;
    own.family = "Elsewhere";
    own.fullName = "Elsewhere";
    {
        NoFiles finder;
        OrvShapedString read;
        LoadRecord(read, Record(own));
        EXPECT_EQ(read.GetSubstitutedFonts().size(), 1u);
    }
    own.family = "DejaVu Sans";
    OrvShapedString read = Read(own);
    EXPECT_TRUE(read.GetSubstitutedFonts().empty());
}

TEST(FontChecksum, IsTheCrc32OfTheFile)
{
    // The check value of CRC-32, as catalogues of CRCs give it.
    const TemporaryName name("checksum");
    const std::string path = name.Path().Text();
    std::ofstream(path) << "123456789";
    EXPECT_EQ(ChecksumOf(path), 0xCBF43926u);
    std::ofstream(path) << "";
    EXPECT_EQ(ChecksumOf(path), 0u);
    EXPECT_EQ(ChecksumOf("/nowhere/at/all"), 0u);
    // More files than are remembered.
    for (std::size_t i = 0; i <= limits::maxTextFonts; ++i)
    {
        const TemporaryName other("checksum" + std::to_string(i));
        std::ofstream(other.Path().Text()) << "123456789";
        ASSERT_EQ(ChecksumOf(other.Path().Text()), 0xCBF43926u);
    }
}

}  // namespace
