// SPDX-License-Identifier: MIT
// Texts of any language in documents: adding, saving, opening, picking and exporting them.
#include "orvane/DocumentAccess.h"
#include "orvane/ShapedText.h"
#include "shapedtext/OrvShapedString.h"
#include "tests/support/FontFile.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace
{
using orvane::AddedText;
using orvane::Document;
using orvane::Hit;
using orvane::HitKind;
using orvane::OrvShapedString;
using orvane::ShapedOptions;

const std::string greeting = "Hall\u00F6 \u0633\u0644\u0627\u0645";

ShapedOptions InDejaVu()
{
    ShapedOptions options;
    options.look.font = "DejaVu Sans";
    return options;
}

OrvShapedString& Shaped(const orvane::Node& node)
{
    return dynamic_cast<OrvShapedString&>(ObjectOf(node));
}

std::string ContentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(ShapedTextDocument, HasTextsOfSeveralScripts)
{
    Document document;
    const AddedText added = AddShapedText(document, greeting, InDejaVu());
    EXPECT_EQ(added.notices, std::vector<std::string>());
    EXPECT_EQ(added.node.Kind(), orvane::NodeKind::Text);
    EXPECT_EQ(added.node.Text(), greeting);
    EXPECT_EQ(document.Nodes().size(), 1u);
    // A text of a code page beside it is not disturbed, and does not disturb it.
    document.AddText("\u0394", {});
    EXPECT_EQ(added.node.Text(), greeting);
    EXPECT_EQ(document.Nodes()[1].Text(), "\u0394");
}

TEST(ShapedTextDocument, IsSavedAndOpened)
{
    const TemporaryName name("shaped.orv");
    const std::string path = name.Path().Text();
    orvane::Box bounds;
    {
        Document document;
        ShapedOptions options = InDejaVu();
        options.width = 2;
        options.look.profile = "chamfer -0.01";
        bounds = AddShapedText(document, greeting, options).node.Bounds();
        document.Save(path);
    }
    const Document opened = Document::Open(path);
    ASSERT_EQ(opened.Nodes().size(), 1u);
    EXPECT_EQ(opened.Nodes()[0].Text(), greeting);
    EXPECT_TRUE(opened.MissingFonts().empty());
    const orvane::Box again = opened.Nodes()[0].Bounds();
    EXPECT_EQ(again.minimum.x, bounds.minimum.x);
    EXPECT_EQ(again.maximum.y, bounds.maximum.y);
    EXPECT_TRUE(Shaped(opened.Nodes()[0]).HasProfile());
    EXPECT_EQ(Shaped(opened.Nodes()[0]).GetSettings().width, 2);
}

TEST(ShapedTextDocument, TellsFontsThatAreMissingWhenItIsOpened)
{
    const TemporaryName name("shaped.orv");
    const std::string path = name.Path().Text();
    {
        Document document;
        AddedText added = AddShapedText(document, "H", InDejaVu());
        document.Save(path);
    }
    // The file names a font that no machine has.
    std::string content = ContentOf(path);
    for (std::size_t at = content.find("DejaVu Sans"); at != std::string::npos;
         at = content.find("DejaVu Sans", at))
    {
        content.replace(at, 11, "Nowhere One");
    }
    std::ofstream(path, std::ios::binary) << content;
    Document opened = Document::Open(path);
    ASSERT_EQ(opened.MissingFonts().size(), 1u);
    EXPECT_EQ(opened.MissingFonts()[0].name, "Nowhere One");
    EXPECT_EQ(opened.MissingFonts()[0].used,
              Shaped(opened.Nodes()[0]).GetSubstitutedFonts()[0].used);
    opened.Save(path);
    const Document again = Document::Open(path);
    ASSERT_EQ(again.MissingFonts().size(), 1u);
    EXPECT_EQ(again.MissingFonts()[0].name, "Nowhere One");
    EXPECT_EQ(Shaped(again.Nodes()[0]).GetSettings().fonts[0].face.fullName, "Nowhere One");
}

TEST(ShapedTextDocument, FindsTheLetterUnderAPixel)
{
    Document document;
    // Two letters of which the first has two bytes and a mark of two bytes.
    AddedText added = AddShapedText(document, "\u00D0\u0304H", InDejaVu());
    orvane::CameraOptions camera;
    camera.turn = {0, 0, 0};
    document.Frame({400, 300}, camera);
    const auto letterAt = [&](int first, int step) {
        for (int x = first; x >= 0 && x < 400; x += step)
        {
            for (const Hit& hit : document.Pick({400, 300}, x, 160))
            {
                return hit;
            }
        }
        return Hit();
    };
    const Hit left = letterAt(0, 2);
    EXPECT_EQ(left.kind, HitKind::Letter);
    EXPECT_EQ(left.letter, "\u00D0\u0304");
    EXPECT_EQ(left.index, 0);
    EXPECT_TRUE(left.node == added.node);
    const Hit right = letterAt(399, -2);
    EXPECT_EQ(right.kind, HitKind::Letter);
    EXPECT_EQ(right.letter, "H");
    EXPECT_EQ(right.index, 2);  // after the letter and its mark
}

TEST(ShapedTextDocument, IsExportedWithItsName)
{
    const TemporaryName name("shaped.glb");
    const std::string path = name.Path().Text();
    Document document;
    AddedText added = AddShapedText(document, greeting, InDejaVu());
    WriteMesh(document, path);
    const std::string content = ContentOf(path);
    EXPECT_EQ(content.substr(0, 4), "glTF");
    EXPECT_NE(content.find('"' + greeting + '"'), std::string::npos);
}

TEST(ShapedTextDocument, ReadsMarkup)
{
    Document document;
    ShapedOptions options = InDejaVu();
    options.isMarkup = true;
    const AddedText added = AddShapedText(
        document, "A<b>B</b><span color=\"#ff0000\" size=\"2\" features=\"kern=0\">C</span>",
        options);
    EXPECT_EQ(added.node.Text(), "ABC");
    OrvShapedString& text = Shaped(added.node);
    ASSERT_EQ(text.GetLayout().glyphs.size(), 3u);
    const auto faceOf = [&](std::size_t glyph) {
        return text.GetLayout().faces[text.GetLayout().glyphs[glyph].face]->FullName();
    };
    EXPECT_EQ(faceOf(0), "DejaVu Sans");
    EXPECT_EQ(faceOf(1), "DejaVu Sans Bold");
    EXPECT_EQ(faceOf(2), "DejaVu Sans");
    EXPECT_EQ(text.GetLayout().glyphs[2].size, 2);
    EXPECT_TRUE(text.HasLetterColors());
    EXPECT_THROW(static_cast<void>(AddShapedText(document, "<b>", options)), orvane::Error);
    EXPECT_EQ(document.Nodes().size(), 1u);
}

TEST(ShapedTextDocument, NamesCharactersThatNoFontHas)
{
    Document document;
    ShapedOptions options = InDejaVu();
    options.usesInstalledFonts = false;
    const AddedText added = AddShapedText(document, "A\u4E2D", options);
    ASSERT_EQ(added.notices.size(), 1u);
    EXPECT_EQ(added.notices[0],
              "no font has the character \"\u4E2D\" (U+4E2D) at byte 1 of the text");
    options.isStrict = true;
    EXPECT_THROW(static_cast<void>(AddShapedText(document, "A\u4E2D", options)), orvane::Error);
    EXPECT_EQ(document.Nodes().size(), 1u);
}

TEST(ShapedTextDocument, TellsLettersWithoutAReadableOutlineOnceForEachFont)
{
    const TemporaryName name("Broken.ttf");
    // The outline of A, at byte 26 of its table, claims more contours than it has.
    FontFile::EdgeTest()
        .Names("Broken", "Regular", "Broken", "Broken")
        .PutWord("glyf", 26, 0x7FFF)
        .Write(name.Path().Text());
    Document document;
    ShapedOptions options;
    options.fonts.emplace_back().file = name.Path().Text();
    options.usesInstalledFonts = false;
    const AddedText added = AddShapedText(document, "BAB\nA", options);
    EXPECT_EQ(added.notices,
              std::vector<std::string>{"the letter \"A\" is left out: the font \"Broken\" has no "
                                       "readable outline of it"});
    AddedText other = AddShapedText(document, "AB", options);
    other = AddShapedText(document, "A", InDejaVu());
    const std::vector<orvane::MissingLetter> missing = document.MissingLetters();
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_EQ(missing[0].font, "Broken");
    EXPECT_EQ(missing[0].letter, "A");
}

TEST(ShapedTextDocument, HasTheDefaultFontWithoutAnother)
{
    Document document;
    const AddedText added = AddShapedText(document, "H");
    EXPECT_EQ(Shaped(added.node).GetLayout().faces.at(0)->FullName(), orvane::DefaultFont().name);
}

TEST(ShapedTextDocument, TellsTheFieldOfAnOptionThatMakesNoSense)
{
    Document document;
    ShapedOptions options = InDejaVu();
    options.size = 0;
    try
    {
        static_cast<void>(AddShapedText(document, "H", options));
        ADD_FAILURE() << "no error";
    }
    catch (const orvane::OptionError& error)
    {
        EXPECT_EQ(error.Place(), "size");
    }
    EXPECT_TRUE(document.Nodes().empty());
}

}  // namespace
