// SPDX-License-Identifier: MIT
// SVG files as solids in documents.
#include "orvane/orvane.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>

namespace
{

using orvane::AddedOutlines;
using orvane::BackgroundOptions;
using orvane::Box;
using orvane::CameraOptions;
using orvane::Document;
using orvane::DrawingMode;
using orvane::Error;
using orvane::HitKind;
using orvane::LetterPart;
using orvane::Node;
using orvane::NodeKind;
using orvane::OutlineOptions;
using orvane::PictureOptions;
using orvane::Size;
using orvane::TextureOptions;
using orvane::Vector3;

constexpr Size size = {100, 100};

/// A red frame around a blue square; both fill the picture, 2 units high and 2 wide.
constexpr const char* frame =
    "<svg viewBox='0 0 2 2'>"
    "<path fill='red' fill-rule='evenodd' d='M0 0H2V2H0zM.5.5V1.5H1.5V.5z'/>"
    "<rect fill='blue' x='.5' y='.5' width='1' height='1'/></svg>";

std::string SvgFile(const std::string& content)
{
    const std::string path = TemporaryFolder() + "logo.svg";
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string BytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The document, seen straight from the front.
void FrameFromFront(Document& document)
{
    CameraOptions camera;
    camera.turn = {0, 0, 0};
    camera.orthographic = true;
    document.Frame(size, camera);
}

TEST(DocumentOutlines, TheNodeHasTheNameAndTheBoundsThatAreAskedFor)
{
    Document document;
    const std::string path = SvgFile(frame);
    OutlineOptions options;
    options.depth = 0.5;
    const AddedOutlines added = document.AddOutlines(path, options);
    EXPECT_TRUE(added.notices.empty());
    EXPECT_EQ(added.node.Kind(), NodeKind::Outlines);
    EXPECT_EQ(added.node.Name(), path);
    EXPECT_EQ(added.node.Text(), "");
    // The viewBox is 1 em high and the node is centred.
    Box box = added.node.Bounds();
    EXPECT_NEAR(box.minimum.x, -0.5, 1e-5);
    EXPECT_NEAR(box.maximum.y, 0.5, 1e-5);
    EXPECT_NEAR(box.minimum.z, -0.5, 1e-5);

    options.width = 3;
    options.at = Vector3{10, 20, 30};
    box = document.AddOutlines(path, options).node.Bounds();
    EXPECT_NEAR(box.minimum.x, 8.5, 1e-5);
    EXPECT_NEAR(box.maximum.x, 11.5, 1e-5);
    EXPECT_NEAR(box.maximum.y, 21.5, 1e-5);
    EXPECT_NEAR(box.maximum.z, 30.25, 1e-5);

    options.width.reset();
    options.at.reset();
    options.height = 2;
    box = document.AddOutlines(path, options).node.Bounds();
    EXPECT_NEAR(box.minimum.x, 11.5 + 0.5, 1e-5);  // half an em right of everything else
    EXPECT_NEAR(box.maximum.x - box.minimum.x, 2, 1e-5);
}

TEST(DocumentOutlines, EachColourIsDrawnWhereTheFileHasIt)
{
    Document document;
    BackgroundOptions background;
    background.color = orvane::Rgb(0x00FF00);
    document.SetBackground(background);
    static_cast<void>(document.AddOutlines(SvgFile(frame)));
    FrameFromFront(document);
    const std::string path = TemporaryFolder() + "logo.png";
    PictureOptions options;
    options.size = size;
    options.samples = 1;
    WritePicture(document, path, options);
    const DecodedPicture picture = DecodePng(BytesOf(path));
    // The scene fills 84 of the 100 pixels: the frame from 8 to 92, the square from 29 to 71.
    const auto isMostly = [&](int x, int y, int channel) {
        const Rgb color = picture.At(x, y);
        const int parts[] = {color.red, color.green, color.blue};
        return parts[channel] > 2 * (parts[0] + parts[1] + parts[2] - parts[channel]);
    };
    for (const int place : {10, 20, 27, 73, 90})
    {
        EXPECT_TRUE(isMostly(place, 50, 0)) << place;
        EXPECT_TRUE(isMostly(50, place, 0)) << place;
    }
    for (const int place : {31, 50, 69})
    {
        EXPECT_TRUE(isMostly(place, 50, 2)) << place;
        EXPECT_TRUE(isMostly(50, place, 2)) << place;
    }
    EXPECT_TRUE(isMostly(5, 50, 1));
    EXPECT_TRUE(isMostly(95, 95, 1));
}

TEST(DocumentOutlines, AreasAndTheirPartsArePicked)
{
    Document document;
    OutlineOptions options;
    options.profile = "chamfer -0.1";
    const Node node = document.AddOutlines(SvgFile(frame), options).node;
    FrameFromFront(document);
    const auto at = [&](int x) { return document.Pick(size, x, 50).at(0); };
    // An em takes 84 pixels, so a bevel takes 8. The frame's ring is 21 pixels wide.
    EXPECT_EQ(at(12).kind, HitKind::Area);
    EXPECT_EQ(at(12).node, node);
    EXPECT_EQ(at(12).index, 0);
    EXPECT_EQ(at(12).part, LetterPart::Bevel);
    EXPECT_EQ(at(18).part, LetterPart::Face);
    EXPECT_EQ(at(25).part, LetterPart::Bevel);
    EXPECT_EQ(at(25).index, 0);
    EXPECT_EQ(at(33).index, 1);
    EXPECT_EQ(at(33).part, LetterPart::Bevel);
    EXPECT_EQ(at(50).index, 1);
    EXPECT_EQ(at(50).part, LetterPart::Face);
    EXPECT_TRUE(document.Pick(size, 3, 50).empty());
    document.SetDrawingMode(DrawingMode::Outline);
    EXPECT_EQ(at(8).kind, HitKind::Area);
    EXPECT_EQ(at(8).part, LetterPart::Outline);
}

TEST(DocumentOutlines, ASavedDocumentNeedsNoFileAndDrawsTheSamePicture)
{
    Document document;
    const std::string svg = SvgFile(frame);
    OutlineOptions options;
    options.profile = "round";
    static_cast<void>(document.AddOutlines(svg, options));
    const std::string scene = TemporaryFolder() + "logo.orv";
    document.Save(scene);
    std::remove(svg.c_str());
    const Document again = Document::Open(scene);
    EXPECT_EQ(again.Nodes().at(0).Name(), svg);
    PictureOptions picture;
    picture.size = size;
    const std::string before = TemporaryFolder() + "before.png";
    const std::string after = TemporaryFolder() + "after.png";
    WritePicture(document, before, picture);
    WritePicture(again, after, picture);
    EXPECT_TRUE(BytesOf(before) == BytesOf(after));
}

TEST(DocumentOutlines, TransparentAreasLetTheBackgroundThrough)
{
    Document document;
    BackgroundOptions background;
    background.color = orvane::Rgb(0x00FF00);
    document.SetBackground(background);
    const AddedOutlines added = document.AddOutlines(
        SvgFile("<svg viewBox='0 0 2 2'><rect fill='red' fill-opacity='.25' width='2' "
                "height='2'/></svg>"));
    EXPECT_EQ(added.notices.size(), 1u);
    FrameFromFront(document);
    const std::string path = TemporaryFolder() + "glass.png";
    PictureOptions options;
    options.size = size;
    WritePicture(document, path, options);
    // Three quarters of the background's 255 at most, more than half of it at least.
    const int green = DecodePng(BytesOf(path)).At(50, 50).green;
    EXPECT_GT(green, 128);
    EXPECT_LT(green, 250);
}

TEST(DocumentOutlines, NoticesNameTheFileAndTheLine)
{
    Document document;
    const std::string path =
        SvgFile("<svg viewBox='0 0 2 2'>\n<text>a</text>\n<rect width='2' height='2'/></svg>");
    EXPECT_EQ(document.AddOutlines(path).notices,
              std::vector<std::string>{path + ": line 2: <text>: is not supported and left out"});
}

TEST(DocumentOutlines, AnAreaThatIsTooLargeForASolidIsTold)
{
    Document document;
    const std::string path =
        SvgFile("<svg viewBox='0 0 40000 1'><rect fill='red' width='40000' height='1'/></svg>");
    const std::vector<std::string> notices = document.AddOutlines(path).notices;
    ASSERT_EQ(notices.size(), 1u);
    const std::string beginning = path + ": the area of the colour #ff0000 is left out: ";
    EXPECT_EQ(notices[0].substr(0, beginning.size()), beginning);
    EXPECT_GT(notices[0].size(), beginning.size() + 10);  // the reason
    OutlineOptions options;
    options.width = 10;
    EXPECT_TRUE(document.AddOutlines(path, options).notices.empty());
}

TEST(DocumentOutlines, WrongFilesAndOptionsAddNothing)
{
    Document document;
    EXPECT_THROW(static_cast<void>(document.AddOutlines("missing.svg")), Error);
    EXPECT_THROW(static_cast<void>(document.AddOutlines(SvgFile("<svg/>"))), Error);
    EXPECT_THROW(static_cast<void>(document.AddOutlines(SvgFile("no picture"))), Error);
    const std::string path = SvgFile(frame);
    const auto refuses = [&](auto change) {
        OutlineOptions options;
        change(options);
        EXPECT_THROW(static_cast<void>(document.AddOutlines(path, options)), Error);
    };
    refuses([](OutlineOptions& o) { o.width = 0.0005; });
    refuses([](OutlineOptions& o) { o.width = 1001; });
    refuses([](OutlineOptions& o) { o.height = 0; });
    refuses([](OutlineOptions& o) { o.height = o.width = 1; });
    refuses([](OutlineOptions& o) { o.depth = 0; });
    refuses([](OutlineOptions& o) { o.depth = 101; });
    refuses([](OutlineOptions& o) { o.tolerance = 1; });
    refuses([](OutlineOptions& o) { o.profile = "bevelled"; });
    refuses([](OutlineOptions& o) {
        o.profile = "chamfer";
        o.profileWidth = 0;
    });
    refuses([](OutlineOptions& o) { o.texture = TextureOptions{"missing.bmp"}; });
    EXPECT_TRUE(document.Nodes().empty());
}

}  // namespace
