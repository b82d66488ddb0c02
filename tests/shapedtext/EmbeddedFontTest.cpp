// SPDX-License-Identifier: MIT
// Fonts inside of documents.
#include "shapedtext/EmbeddedFont.h"

#include "host/CArchive.h"
#include "host/CFile.h"
#include "orvane/DocumentAccess.h"
#include "orvane/ShapedText.h"
#include "platform/Limits.h"
#include "shapedtext/OrvShapedString.h"
#include "tests/support/FontFile.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

namespace
{
using orvane::Document;
using orvane::EmbeddedFont;
using orvane::OrvShapedString;
using orvane::ShapedOptions;

constexpr int installable = 0;
constexpr int restricted = 2;
constexpr int previewAndPrint = 4;
constexpr int editable = 8;
constexpr int bitmapsOnly = 0x200;

FontFile FontWithBits(int bits)
{
    FontFile font = FontFile::EdgeTest();
    return font.Names("Embedded", "Regular", "Embedded", "Embedded").PutWord("OS/2", 8, bits);
}

std::string ContentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::size_t CountOf(const std::string& part, const std::string& whole)
{
    std::size_t count = 0;
    for (std::size_t at = whole.find(part); at != std::string::npos; at = whole.find(part, at + 1))
    {
        ++count;
    }
    return count;
}

class FontsInDocuments : public testing::Test
{
protected:
    void WriteFont(int bits) { FontWithBits(bits).Write(font); }

    OrvShapedString& Add(Document& document, const std::string& text)
    {
        ShapedOptions options;
        options.fonts.emplace_back().file = font;
        return dynamic_cast<OrvShapedString&>(
            ObjectOf(AddShapedText(document, text, options).node));
    }

    const TemporaryName fontName{"embedded.ttf"};
    const TemporaryName sceneName{"embedded.orv"};
    const std::string font = fontName.Path().Text();
    const std::string scene = sceneName.Path().Text();
};

TEST_F(FontsInDocuments, AreUsedWhereTheyAreNotInstalled)
{
    WriteFont(installable);
    const std::string fontBytes = ContentOf(font);
    double width = 0;
    {
        Document document;
        Add(document, "HO");
        width = Add(document, "OH").GetUnscaledDimensions().x;
        EXPECT_EQ(EmbedFonts(document), std::vector<std::string>());
        document.Save(scene);
    }
    EXPECT_EQ(CountOf(fontBytes, ContentOf(scene)), 1u);  // two texts share it
    std::filesystem::remove(font);
    Document opened = Document::Open(scene);
    EXPECT_TRUE(opened.MissingFonts().empty());
    ASSERT_EQ(opened.Nodes().size(), 2u);
    for (const orvane::Node& node : opened.Nodes())
    {
        auto& text = dynamic_cast<OrvShapedString&>(ObjectOf(node));
        EXPECT_EQ(text.GetLayout().faces.at(0)->FullName(), "Embedded");
        EXPECT_EQ(text.GetUnscaledDimensions().x, width);
        EXPECT_TRUE(text.GetFontNotices().empty());
        EXPECT_TRUE(text.UnreadLetters().empty());
    }
    // It stays in the document.
    opened.Save(scene);
    EXPECT_EQ(CountOf(fontBytes, ContentOf(scene)), 1u);
    EXPECT_TRUE(Document::Open(scene).MissingFonts().empty());
}

TEST_F(FontsInDocuments, FontsForSingleLettersAreThere)
{
    WriteFont(installable);
    Document document;
    OrvShapedString& text = Add(document, "Hx");  // the font has no x
    ASSERT_EQ(text.GetLayout().faces.size(), 2u);
    const std::string second = text.GetLayout().faces[1]->FullName();
    EXPECT_EQ(EmbedFonts(document), std::vector<std::string>());
    ASSERT_EQ(text.GetSettings().fonts.size(), 2u);
    EXPECT_EQ(text.GetSettings().fonts[1].face.fullName, second);
    EXPECT_NE(text.GetSettings().fonts[1].embedded, nullptr);
    EXPECT_EQ(text.GetLayout().faces[1]->FullName(), second);
    // A second time changes nothing.
    EXPECT_EQ(EmbedFonts(document), std::vector<std::string>());
    EXPECT_EQ(text.GetSettings().fonts.size(), 2u);
}

TEST_F(FontsInDocuments, TheirLicenceBitsMustAllowIt)
{
    const std::pair<int, bool> cases[] = {
        {installable, true},         {editable, true},
        {restricted, false},         {previewAndPrint, false},
        {previewAndPrint | 8, true}, {bitmapsOnly, false},
        {editable | 0x100, true},  // no parts of it: the whole font is in the document
    };
    for (const auto& [bits, isAllowed] : cases)
    {
        WriteFont(bits);
        Document document;
        OrvShapedString& text = Add(document, "H");
        const std::vector<std::string> notices = EmbedFonts(document);
        EXPECT_EQ(notices.empty(), isAllowed) << bits;
        EXPECT_EQ(text.GetSettings().fonts[0].embedded != nullptr, isAllowed) << bits;
        if (!isAllowed && !notices.empty())
        {
            EXPECT_EQ(notices[0],
                      "font \"Embedded\": its licence bits do not allow it to be in documents that "
                      "are changed");
        }
        std::filesystem::remove(font);  // so that the next one is another file
    }
}

TEST_F(FontsInDocuments, AFontThatIsMissingIsNotReplacedInTheDocument)
{
    WriteFont(installable);
    {
        Document document;
        Add(document, "H");
        document.Save(scene);
    }
    std::filesystem::remove(font);
    Document opened = Document::Open(scene);
    ASSERT_EQ(opened.MissingFonts().size(), 1u);
    const std::vector<std::string> notices = EmbedFonts(opened);
    ASSERT_FALSE(notices.empty());
    EXPECT_EQ(notices[0], "font \"" + font + "\" is not installed");
    auto& text = dynamic_cast<OrvShapedString&>(ObjectOf(opened.Nodes()[0]));
    EXPECT_EQ(text.GetSettings().fonts[0].embedded, nullptr);
    EXPECT_EQ(text.GetSettings().fonts.size(), 1u);
}

/// The stored reference to a font, or what reading one says.
std::string StoredOrProblem(const Bytes& bytes)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()), 0);
    CArchive archive(&file, CArchive::load);
    try
    {
        const std::shared_ptr<const EmbeddedFont> font = EmbeddedFont::Read(archive);
        return font == nullptr ? "none" : font->Bytes();
    }
    catch (const CArchiveException& error)
    {
        return error.what();
    }
}

TEST(EmbeddedFont, ItsRecordIsTheNumberOfBytesAndTheBytes)
{
    const auto record = [](DWORD version, DWORD size, const char* bytes) {
        RecordBytes made;
        made.NewClass("EmbeddedFont", 1).Dword(version).Dword(size);
        return made.Raw(bytes, std::strlen(bytes)).Get();
    };
    EXPECT_EQ(StoredOrProblem(record(1, 4, "abcd")), "abcd");
    EXPECT_NE(StoredOrProblem(record(2, 4, "abcd")).find("version 2"), std::string::npos);
    EXPECT_NE(StoredOrProblem(record(1, 5, "abcd")), "abcd");
    const auto limit = static_cast<DWORD>(orvane::limits::maxEmbeddedFontBytes);
    EXPECT_NE(StoredOrProblem(record(1, limit + 1, "abcd"))
                  .find("a font of 33554433 bytes, expected at most 33554432"),
              std::string::npos);
    EXPECT_EQ(StoredOrProblem(record(1, limit, "abcd")).find("expected at most"),
              std::string::npos);  // but the bytes are not there
    EXPECT_EQ(StoredOrProblem(RecordBytes().Word(0).Get()), "none");
}

TEST(EmbeddedFont, FilesAreTakenUpToTheLimit)
{
    const TemporaryName name("large.ttf");
    const std::string path = name.Path().Text();
    std::ofstream(path) << "font";
    std::filesystem::resize_file(path, orvane::limits::maxEmbeddedFontBytes);
    const std::shared_ptr<const EmbeddedFont> font = EmbeddedFont::OfFile(path);
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->Bytes().size(), orvane::limits::maxEmbeddedFontBytes);
    EXPECT_EQ(EmbeddedFont::OfFile(path), font);
    std::filesystem::resize_file(path, orvane::limits::maxEmbeddedFontBytes + 1);
    EXPECT_EQ(EmbeddedFont::OfFile(path), nullptr);
    EXPECT_EQ(EmbeddedFont::OfFile("/nowhere/at/all"), nullptr);
}

TEST(EmbeddedFont, BytesThatAreNoFontHaveNoFaces)
{
    const TemporaryName name("no-font.ttf");
    std::ofstream(name.Path().Text()) << "no font at all";
    const std::shared_ptr<const EmbeddedFont> font = EmbeddedFont::OfFile(name.Path().Text());
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->Open({}), nullptr);
}

}  // namespace
