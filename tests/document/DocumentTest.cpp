// SPDX-License-Identifier: MIT
// Documents as a host uses them, without drawing.

#include "document/SceneFraming.h"
#include "extrude/OrvFont.h"
#include "host/CArchive.h"
#include "host/CFile.h"
#include "orvane/DocumentAccess.h"
#include "orvane/orvane.h"
#include "platform/Fonts.h"
#include "platform/Messages.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/FontFile.h"
#include "tests/support/Json.h"
#include "tests/support/PrivateFonts.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

namespace
{

using orvane::Document;
using orvane::Node;
using orvane::Size;
using orvane::Vector3;

/// Calls a function that must throw, and returns the error.
template <typename Failure = orvane::Error, typename Call>
Failure ErrorOf(Call call)
{
    try
    {
        call();
    }
    catch (const Failure& error)
    {
        return error;
    }
    ADD_FAILURE() << "nothing was thrown";
    return Failure("", "");
}

void ExpectNear(const Vector3& actual, const Vector3& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-5);
    EXPECT_NEAR(actual.y, expected.y, 1e-5);
    EXPECT_NEAR(actual.z, expected.z, 1e-5);
}

TEST(Document, ATextKnowsItsKindItsCharactersAndItsPlace)
{
    Document document;
    const Node text = document.AddText("First\r\nsecond\n\nlast");
    EXPECT_EQ(text.Kind(), orvane::NodeKind::Text);
    EXPECT_EQ(text.Text(), "First\nsecond\n\nlast");
    EXPECT_EQ(text.Path(), std::vector<int>{0});
    ASSERT_EQ(document.Nodes().size(), 1u);
    EXPECT_EQ(document.Nodes()[0], text);
    EXPECT_TRUE(text.Children().empty());
    const orvane::Box box = text.Bounds();
    EXPECT_LT(box.minimum.x, box.maximum.x);
    EXPECT_NEAR(box.minimum.x, -box.maximum.x, 1e-5);  // its lines are centred
    EXPECT_NEAR(box.minimum.z, -0.3, 1e-6);            // letters are 0.3 em deep
    EXPECT_NEAR(box.maximum.z, 0, 1e-6);
}

TEST(Document, TurningANodeKeepsItsMiddleInPlace)
{
    Document document;
    Node text = document.AddText("Turn");
    text.MoveTo({3, -2, 1});
    ExpectNear(text.Position(), {3, -2, 1});
    const orvane::Box before = text.Bounds();
    text.Turn(90, {0, 0, 2});
    ExpectNear(text.Position(), {3, -2, 1});
    const orvane::Box after = text.Bounds();
    // The text stands upright: what was its width is its height.
    EXPECT_NEAR(after.maximum.y - after.minimum.y, before.maximum.x - before.minimum.x, 1e-5);
    EXPECT_NEAR(after.maximum.x - after.minimum.x, before.maximum.y - before.minimum.y, 1e-5);
    text.Scale(2);
    ExpectNear(text.Position(), {3, -2, 1});
    EXPECT_NEAR(text.Bounds().maximum.y - text.Bounds().minimum.y,
                2 * (after.maximum.y - after.minimum.y), 1e-5);
    text.Move({-3, 2, -1});
    ExpectNear(text.Position(), {0, 0, 0});
}

TEST(Document, AHandleOfARemovedNodeOrAnEndedDocumentIsNotValid)
{
    Node text;
    EXPECT_FALSE(text.IsValid());
    {
        Document document;
        text = document.AddText("gone");
        const Node other = document.AddText("stays");
        text.Remove();
        EXPECT_FALSE(text.IsValid());
        EXPECT_EQ(ErrorOf([&] { text.Text(); }).Place(), "node");
        EXPECT_EQ(other.Path(), std::vector<int>{0});
        text = other;
        Document moved = std::move(document);
        EXPECT_EQ(text.Text(), "stays");
    }
    EXPECT_FALSE(text.IsValid());
    EXPECT_THROW(text.Bounds(), orvane::Error);
}

TEST(Document, TheToolOpensADocumentOfTheLibrary)
{
    ToolFolder folder;
    Document document;
    document.AddText("Héllo");
    document.Frame(Size{320, 200});
    document.SaveView("front");
    document.Save(folder.Path("a.orv"));
    EXPECT_EQ(document.Path(), folder.Path("a.orv"));
    const ToolResult info = folder.Run({"info", "a.orv", "--json"});
    ASSERT_EQ(info.status, 0) << info.err;
    const Json json = Json::parse(info.out);
    EXPECT_EQ(json.at("scene").at("children").at(0).at("text").get<std::string>(), "Héllo");
    EXPECT_EQ(json.at("savedViews").size(), 1u);

    // And it is the file that the tool itself makes of the same text.
    ASSERT_EQ(
        folder.Run({"render", "Héllo", "--plain", "--size", "320x200", "--save", "b.orv"}).status,
        0);
    document.DeleteView("front");
    document.Save(folder.Path("a.orv"));
    EXPECT_EQ(folder.Read("a.orv"), folder.Read("b.orv"));
}

class DocumentOfTheTool : public testing::TestWithParam<std::vector<std::string>>
{};

TEST_P(DocumentOfTheTool, OpensAndIsSavedUnchanged)
{
    ToolFolder folder;
    std::vector<std::string> arguments = {"render",  "Привет", "мир",  "--size",
                                          "500x300", "--save", "a.orv"};
    arguments.insert(arguments.end(), GetParam().begin(), GetParam().end());
    ASSERT_EQ(folder.Run(arguments).status, 0);
    const UINT codePage = GetACP();
    Document document = Document::Open(folder.Path("a.orv"));
    ASSERT_EQ(document.Nodes().size(), 1u);
    EXPECT_EQ(document.Nodes()[0].Text(), "Привет\nмир");
    ASSERT_TRUE(document.FramedSize().has_value());
    EXPECT_EQ(document.FramedSize()->width, 500);
    EXPECT_EQ(document.FramedSize()->height, 300);
    EXPECT_EQ(GetACP(), codePage);  // the host's code page is as it was
    document.Save(folder.Path("b.orv"));
    EXPECT_EQ(folder.Read("a.orv"), folder.Read("b.orv"));
}

INSTANTIATE_TEST_SUITE_P(Texts, DocumentOfTheTool,
                         testing::Values(std::vector<std::string>(),
                                         std::vector<std::string>{"--plain"}),
                         [](const testing::TestParamInfo<std::vector<std::string>>& info) {
                             return info.param.empty() ? "OfAnyLanguage" : "Plain";
                         });

TEST(Document, DocumentsOfDifferentCodePagesLiveSideBySide)
{
    Document western;
    Document greek;
    const Node one = western.AddText("Müller");
    const Node two = greek.AddText("Λόγος");
    const Node three = western.AddText("straße");
    EXPECT_EQ(one.Text(), "Müller");
    EXPECT_EQ(two.Text(), "Λόγος");
    EXPECT_EQ(three.Text(), "straße");
    EXPECT_EQ(CodePageOf(western), 1252u);
    EXPECT_EQ(CodePageOf(greek), 1253u);
}

TEST(Document, ATextThatFitsNoCommonCodePageLeavesTheDocumentAsItWas)
{
    Document document;
    const Node latin = document.AddText("Łódź");
    EXPECT_EQ(CodePageOf(document), 1250u);
    const orvane::Error error = ErrorOf([&] { document.AddText("Жук"); });
    EXPECT_EQ(error.Place(), "text, line 1");
    EXPECT_NE(error.Problem().find("\"Ж\" (U+0416)"), std::string::npos) << error.Problem();
    EXPECT_EQ(document.Nodes().size(), 1u);
    EXPECT_EQ(latin.Text(), "Łódź");
    // ASCII fits into every code page, so a document changes to the one of a new text.
    Document ascii;
    const Node plain = ascii.AddText("plain");
    ascii.SaveView("größe");
    ascii.AddText("Жук");
    EXPECT_EQ(CodePageOf(ascii), 1251u);
    EXPECT_EQ(plain.Text(), "plain");
}

TEST(Document, ErrorsNamePlaceFoundAndExpected)
{
    ToolFolder folder;
    folder.Write("text.orv", "This is no scene.");
    const orvane::Error scene = ErrorOf([&] { Document::Open(folder.Path("text.orv")); });
    EXPECT_EQ(scene.Place(), folder.Path("text.orv") + ": byte 0");
    EXPECT_EQ(scene.Problem(), "found 54 68, expected FF FF, with which scene files begin");

    Document document;
    orvane::TextOptions options;
    options.depth = -1;
    const auto depth = ErrorOf<orvane::OptionError>([&] { document.AddText("x", options); });
    EXPECT_STREQ(depth.what(), "depth: 0 to 100, found -1");
    EXPECT_EQ(depth.Place(), "depth");
    EXPECT_EQ(depth.Found(), "-1");
    EXPECT_EQ(depth.Expected(), "0 to 100");

    orvane::PictureOptions picture;
    picture.samples = 9;
    const auto samples = ErrorOf<orvane::OptionError>(
        [&] { orvane::WritePicture(document, folder.Path("x.png"), picture); });
    EXPECT_STREQ(samples.what(), "samples: 0 to 4, found 9");
    EXPECT_FALSE(folder.Has("x.png"));
    EXPECT_THROW(document.AddMesh(folder.Path("none.3ds")), orvane::Error);
    EXPECT_THROW(document.RestoreView("none"), orvane::Error);
    EXPECT_THROW(document.Frame(Size{0, 5}), orvane::OptionError);
    EXPECT_THROW(orvane::ParseColor("blurple"), orvane::OptionError);
    EXPECT_THROW(orvane::FindFont("No Such Font"), orvane::Error);
    EXPECT_TRUE(document.Nodes().empty());
}

TEST(Document, LettersWithoutAReadableOutlineAreToldOnceForEachFont)
{
    PrivateFonts installed({});
    OrvFont fonts[2];
    for (const int n : {0, 1})
    {
        const std::string name = n == 0 ? "First" : "Second";
        const std::string file = installed.Folder() + "/" + name + ".ttf";
        // The outline of A, at byte 26 of its table, claims more contours than it has.
        FontFile::EdgeTest()
            .Names(name, "Regular", name, name)
            .PutWord("glyf", 26, 0x7FFF)
            .Write(file);
        installed.Install(file);
        const std::vector<EnumeratedFont> found = EnumerateFonts(name.c_str());
        ASSERT_EQ(found.size(), 1u);
        ASSERT_EQ(fonts[n].Create(&found[0].record, &found[0].metrics), 1);
    }
    const MessageBoxHandler before =
        SetMessageBoxHandler([](HWND, LPCSTR, LPCSTR, UINT) { return IDOK; });
    Document document;
    EXPECT_TRUE(document.MissingLetters().empty());
    const std::pair<const char*, OrvFont*> texts[] = {{"BAB\r\nA", &fonts[0]},
                                                      {"B ", &fonts[1]},
                                                      {"A", &fonts[0]},
                                                      {"HA", &fonts[1]},
                                                      {"A", nullptr}};
    for (const auto& [text, font] : texts)
    {
        auto node = std::make_unique<OrvFontString>();
        node->SetTextString(text);
        node->AttachFont(font);
        orvane::AddNode(orvane::SceneOf(document), std::move(node));
    }
    const std::vector<orvane::MissingLetter> missing = document.MissingLetters();
    SetMessageBoxHandler(before);
    ASSERT_EQ(missing.size(), 2u);
    EXPECT_EQ(missing[0].font, "First");
    EXPECT_EQ(missing[0].letter, "A");
    EXPECT_EQ(missing[1].font, "Second");
    EXPECT_EQ(missing[1].letter, "A");
}

TEST(Document, ASceneObjectAloneOpensWithAViewThatIsFramedForIt)
{
    ToolFolder folder;
    {
        CFile file(folder.Path("scene.orv").c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive archive(&file, CArchive::store);
        Document document;
        document.AddText("alone");
        archive.WriteObject(&SceneOf(document));
        archive.Close();
    }
    Document opened = Document::Open(folder.Path("scene.orv"));
    EXPECT_EQ(opened.Nodes().at(0).Text(), "alone");
    ASSERT_TRUE(opened.FramedSize().has_value());
    EXPECT_EQ(opened.FramedSize()->width, orvane::defaultPictureSize.width);
    EXPECT_EQ(folder.Run({"info", "scene.orv"}).status, 0);
}

TEST(Document, ASceneWithoutItsClassIsRefusedWithAHint)
{
    ToolFolder folder;
    {
        CFile file(folder.Path("scene.orv").c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive archive(&file, CArchive::store);
        SceneObject scene;
        scene.Serialize(archive);
        archive.Close();
    }
    const orvane::Error error = ErrorOf([&] { Document::Open(folder.Path("scene.orv")); });
    EXPECT_NE(error.Problem().find("CArchive::WriteObject"), std::string::npos) << error.Problem();
}

TEST(Document, ViewsAreKeptByTheirNames)
{
    Document document;
    document.AddText("x");
    document.Frame(Size{100, 100});
    document.SaveView("a");
    document.SaveView("ä");
    document.SaveView("a");
    EXPECT_EQ(document.ViewNames(), (std::vector<std::string>{"a", "ä"}));
    document.RestoreView("ä");
    document.DeleteView("a");
    EXPECT_EQ(document.ViewNames(), std::vector<std::string>{"ä"});
}

TEST(Document, LightsAndDrawingModeFollowTheOptions)
{
    Document document;
    orvane::LightOptions lights;
    lights.follow = orvane::LightsFollow::Scene;
    lights.changes = {{1, false, {}}, {3, true, orvane::Rgb(0xFF0000)}};
    document.ChangeLights(lights);
    const SceneObject& scene = SceneOf(document);
    EXPECT_NE(scene.ShouldRotateLightsWithScene(), 0);
    EXPECT_EQ(scene.GetLightByIndex(1)->IsInUse(), 0);
    EXPECT_NE(scene.GetLightByIndex(3)->IsInUse(), 0);
    EXPECT_EQ(scene.GetLightByIndex(3)->GetColors().GetDiffuseColor().red, 1.0f);
    lights.changes = {{8, true, {}}};
    EXPECT_EQ(ErrorOf([&] { document.ChangeLights(lights); }).Place(), "light 8");
    document.SetDrawingMode(orvane::DrawingMode::Outline);
    EXPECT_EQ(document.GetDrawingMode(), orvane::DrawingMode::Outline);
    EXPECT_EQ(ViewOf(document).GetDrawingMode(), 2u);
}

TEST(Document, ColorsAreReadAndWrittenAsText)
{
    EXPECT_EQ(orvane::ColorText(orvane::ParseColor("Navy")), "#10204a");
    EXPECT_EQ(orvane::ColorText(orvane::ParseColor("#fa0")), "#ffaa00");
    EXPECT_EQ(orvane::ColorText(orvane::ParseColor("#12345678")), "#12345678");
    EXPECT_EQ(orvane::ColorText(orvane::Rgb(0x010203)), "#010203");
}

TEST(Document, FontsAreFoundByTheirFullNames)
{
    const std::vector<orvane::FontInfo> fonts = orvane::Fonts();
    ASSERT_FALSE(fonts.empty());
    const orvane::FontInfo found = orvane::FindFont("dejavu SANS bold");
    EXPECT_EQ(found.name, "DejaVu Sans Bold");
    EXPECT_EQ(found.family, "DejaVu Sans");
    EXPECT_EQ(found.weight, 700);
    EXPECT_FALSE(found.italic);
    EXPECT_EQ(orvane::DefaultFont().name, "DejaVu Sans Bold");
}

}  // namespace
