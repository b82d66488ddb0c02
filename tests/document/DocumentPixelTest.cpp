// SPDX-License-Identifier: MIT
// Pictures of documents, in files and in a host's own OpenGL context, and picking.

#include "orvane/orvane.h"
#include "platform/OpenGL.h"
#include "tests/support/BmpFile.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/HostWindow.h"
#include "tests/support/PictureFile.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>
#include <tuple>

namespace
{

using orvane::Document;
using orvane::Size;

constexpr Size size{240, 120};

/// A document with everything that pictures depend on.
Document SampleDocument()
{
    Document document;
    orvane::TextOptions look;
    look.edgeStyle = orvane::EdgeStyle::Round;
    document.AddText("Ad", look);
    look.faceColor = {1, 0, 0, 0.5f};
    document.AddText("See", look).MoveTo({0.3, -0.2, 0.6});
    document.Frame(size);
    return document;
}

orvane::PictureOptions OneSample()
{
    orvane::PictureOptions options;
    options.samples = 1;
    return options;
}

/// The pixels of the current context, the upper row first.
std::vector<Rgb> PixelsFromTop()
{
    std::vector<GLubyte> bytes(3 * static_cast<std::size_t>(size.width * size.height));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, size.width, size.height, GL_RGB, GL_UNSIGNED_BYTE, bytes.data());
    std::vector<Rgb> pixels;
    for (int y = size.height - 1; y >= 0; --y)
    {
        for (int x = 0; x < size.width; ++x)
        {
            const GLubyte* const pixel =
                bytes.data() + 3 * static_cast<std::size_t>(y * size.width + x);
            pixels.push_back({pixel[0], pixel[1], pixel[2]});
        }
    }
    return pixels;
}

TEST(DocumentPictures, TheToolDrawsADocumentToTheSamePicture)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    ToolFolder folder;
    Document document = SampleDocument();
    document.Save(folder.Path("a.orv"));
    for (const char* const format : {"a.png", "a.bmp"})
    {
        orvane::WritePicture(document, folder.Path(format));
        const std::string ours = folder.Read(format);
        ASSERT_EQ(folder.Run({"render", "--scene", "a.orv", "-o", format}).status, 0);
        EXPECT_EQ(folder.Read(format) == ours, true) << format;
    }
}

TEST(DocumentPictures, ADocumentThatWasNeverFramedIsSeenWhole)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    ToolFolder folder;
    Document document;
    document.AddText("Whole");
    orvane::PictureOptions options;
    options.size = size;
    orvane::WritePicture(document, folder.Path("a.png"), options);
    EXPECT_FALSE(document.FramedSize().has_value());
    const PixelBox box = BoxOfContent(DecodePng(folder.Read("a.png")));
    // 8 % of the width are free on each side, 19 pixels, and the text's box reaches that far.
    EXPECT_GE(box.left, 18);
    EXPECT_LE(box.right, size.width - 1 - 18);
    EXPECT_GT(box.Width(), size.width * 3 / 4);
}

TEST(DocumentPictures, AHostsContextShowsThePixelsOfThePictureFile)
{
    const HostWindow window(size.width, size.height);
    REQUIRE_CONTEXT(window);
    ToolFolder folder;
    const Document document = SampleDocument();
    orvane::WritePicture(document, folder.Path("a.png"), OneSample());
    window.MakeCurrent();
    // State that a host may have set must not show.
    glEnable(GL_FOG);
    glEnable(GL_BLEND);
    glDisable(GL_NORMALIZE);
    glDepthFunc(GL_GREATER);
    glFrontFace(GL_CW);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glScalef(0.5f, 2, 1);
    orvane::Draw(document);
    EXPECT_TRUE(PixelsFromTop() == DecodePng(folder.Read("a.png")).pixels);

    // And the state is the host's again.
    EXPECT_EQ(glIsEnabled(GL_FOG), GL_TRUE);
    EXPECT_EQ(glIsEnabled(GL_NORMALIZE), GL_FALSE);
    EXPECT_EQ(glIsEnabled(GL_SCISSOR_TEST), GL_FALSE);
    GLint value = 0;
    glGetIntegerv(GL_DEPTH_FUNC, &value);
    EXPECT_EQ(value, GL_GREATER);
    glGetIntegerv(GL_MATRIX_MODE, &value);
    EXPECT_EQ(value, GL_PROJECTION);
    GLfloat projection[16] = {};
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    EXPECT_EQ(projection[0], 0.5f);
    glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &value);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(DocumentPictures, OnlyTheViewportIsDrawnInto)
{
    const HostWindow window(size.width, size.height);
    REQUIRE_CONTEXT(window);
    window.MakeCurrent();
    glClearColor(0, 1, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glViewport(60, 30, 120, 60);
    orvane::Draw(SampleDocument());
    const std::vector<Rgb> pixels = PixelsFromTop();
    const Rgb green{0, 255, 0};
    for (int y = 0; y < size.height; ++y)
    {
        for (int x = 0; x < size.width; ++x)
        {
            const bool inside = x >= 60 && x < 180 && y >= 30 && y < 90;
            ASSERT_EQ(pixels[static_cast<std::size_t>(y * size.width + x)] == green, !inside)
                << x << "," << y;
        }
    }
}

TEST(DocumentPictures, ABackgroundPictureIsDrawnIntoAHostsContext)
{
    const HostWindow window(size.width, size.height);
    REQUIRE_CONTEXT(window);
    ToolFolder folder;
    folder.Write("two.bmp", AsText(BlueAndRed().File()));
    Document document;
    orvane::BackgroundOptions background;
    background.file = folder.Path("two.bmp");
    document.SetBackground(background);
    window.MakeCurrent();
    orvane::Draw(document);
    const std::vector<Rgb> pixels = PixelsFromTop();
    EXPECT_EQ(pixels.front(), (Rgb{0, 0, 255}));
    EXPECT_EQ(pixels.back(), (Rgb{255, 0, 0}));
}

TEST(DocumentPictures, DrawingWithoutAContextIsAnError)
{
    try
    {
        orvane::Draw(Document());
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const orvane::Error& error)
    {
        EXPECT_STREQ(error.what(), "OpenGL: no context is current on this thread");
    }
}

TEST(DocumentPictures, DrawingIntoACoreProfileIsAnError)
{
    const HostWindow window(size.width, size.height, HostWindow::Profile::Core);
    REQUIRE_CONTEXT(window);
    window.MakeCurrent();
    glClearColor(0, 1, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    try
    {
        orvane::Draw(SampleDocument());
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const orvane::Error& error)
    {
        EXPECT_EQ(error.Place(), "OpenGL");
        EXPECT_NE(error.Found().find("Core Profile"), std::string::npos) << error.what();
        EXPECT_NE(error.Expected().find("compatibility profile"), std::string::npos);
    }
    EXPECT_EQ(PixelsFromTop().front(), (Rgb{0, 255, 0}));  // nothing was drawn
}

TEST(DocumentPictures, OffScreenWorkLeavesTheHostsContextCurrent)
{
    const HostWindow window(size.width, size.height);
    REQUIRE_CONTEXT(window);
    ToolFolder folder;
    const Document document = SampleDocument();
    window.MakeCurrent();
    orvane::WritePicture(document, folder.Path("a.png"));
    EXPECT_TRUE(window.IsCurrent());
    document.Pick(size, 1, 1);
    EXPECT_TRUE(window.IsCurrent());
}

TEST(DocumentPictures, ACancelledPictureLeavesNoFile)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    ToolFolder folder;
    orvane::PictureOptions options;
    options.size = Size{3000, 1500};  // two columns and nine rows of bands
    orvane::Cancellation cancellation;
    options.cancellation = cancellation;
    double last = 0;
    options.progress = [&](double share) {
        EXPECT_GT(share, last);
        last = share;
        cancellation.Cancel();
    };
    EXPECT_THROW(orvane::WritePicture(SampleDocument(), folder.Path("a.png"), options),
                 orvane::Cancelled);
    EXPECT_GT(last, 0);
    EXPECT_LT(last, 0.2);
    EXPECT_TRUE(folder.Names().empty());
}

TEST(DocumentPictures, APictureOfMorePixelsThanAllowedIsRefused)
{
    ToolFolder folder;
    orvane::PictureOptions options;
    options.size = Size{100, 50};
    options.maxPixels = 4999;
    try
    {
        orvane::WritePicture(Document(), folder.Path("a.png"), options);
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const orvane::LimitExceeded& error)
    {
        EXPECT_EQ(error.Limit(), "maxPixels");
        EXPECT_EQ(error.Found(), "100 x 50 are 5000 pixels");
        EXPECT_EQ(error.Expected(), "4999");
    }
    options.maxPixels = 0;
    EXPECT_THROW(orvane::WritePicture(Document(), folder.Path("a.png"), options),
                 orvane::OptionError);
    EXPECT_TRUE(folder.Names().empty());
}

TEST(DocumentPictures, ADrawingStopsWhenItsTimeIsOverOrItsHostCancels)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    ToolFolder folder;
    orvane::PictureOptions options;
    options.size = Size{30000, 30000};
    options.maxSeconds = 0.05;
    try
    {
        orvane::WritePicture(SampleDocument(), folder.Path("a.png"), options);
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const orvane::LimitExceeded& error)
    {
        EXPECT_EQ(error.Limit(), "maxSeconds");
        EXPECT_EQ(error.Expected(), "0.05");
    }
    options.maxSeconds = 1000;
    orvane::Cancellation cancellation;
    options.cancellation = cancellation;
    options.progress = [&](double) { cancellation.Cancel(); };
    EXPECT_THROW(orvane::WritePicture(SampleDocument(), folder.Path("a.png"), options),
                 orvane::Cancelled);
    EXPECT_TRUE(folder.Names().empty());
}

TEST(DocumentPictures, ATextureThatCannotBeReadWhenItIsDrawnIsAnErrorUntilItCan)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    ToolFolder folder;
    const PictureFile picture("lost", 2, 2, [](int, int) { return Rgb{10, 200, 30}; });
    const std::string texture = folder.Path("t.bmp");
    std::filesystem::copy_file(picture.Path(), texture);
    Document document;
    orvane::TextOptions look;
    look.texture.emplace();
    look.texture->file = texture;
    document.AddText("I", look);
    std::filesystem::remove(texture);
    orvane::PictureOptions options;
    options.size = Size{16, 9};
    for (int attempt = 0; attempt < 2; ++attempt)
    {
        try
        {
            orvane::WritePicture(document, folder.Path("a.png"), options);
            ADD_FAILURE() << "nothing was thrown";
        }
        catch (const orvane::Error& error)
        {
            EXPECT_EQ(error.Place(), texture);
        }
        EXPECT_TRUE(folder.Names().empty());
    }
    std::filesystem::copy_file(picture.Path(), texture);
    orvane::WritePicture(document, folder.Path("a.png"), options);
    EXPECT_TRUE(folder.Has("a.png"));
}

/// A document with a text and a background picture, which are both of one colour.
class LostPictures : public testing::Test
{
protected:
    LostPictures()
    {
        for (const std::string& name : {texture, background})
        {
            std::filesystem::copy_file(picture.Path(), name);
        }
        orvane::TextOptions look;
        look.texture.emplace();
        look.texture->file = texture;
        document.AddText("I", look);
        orvane::BackgroundOptions behind;
        behind.file = background;
        document.SetBackground(behind);
        options.size = size;
        options.samples = 1;
    }

    const HeadlessContext context{size.width, size.height};
    ToolFolder folder;
    const PictureFile picture{"one-colour", 2, 2, [](int, int) { return Rgb{10, 200, 30}; }};
    const std::string texture = folder.Path("t.bmp");
    const std::string background = folder.Path("b.bmp");
    Document document;
    orvane::PictureOptions options;
    std::vector<std::string> lost;
    const orvane::MissingPictureFunction note = [this](const orvane::MissingPicture& missing) {
        EXPECT_EQ(missing.reason, orvane::MissingPicture::Reason::Unreadable);
        lost.push_back(missing.file);
    };
};

TEST_F(LostPictures, ABackgroundThatCannotBeReadWhenItIsDrawnIsAnErrorUnlessTheHostIsTold)
{
    REQUIRE_CONTEXT(context);
    std::filesystem::remove(background);
    for (const char* const name : {"a.png", "a.bmp"})
    {
        options.bits = std::string(name) == "a.bmp" ? 8 : 24;  // 8 through a dithered image
        try
        {
            orvane::WritePicture(document, folder.Path(name), options);
            ADD_FAILURE() << "nothing was thrown";
        }
        catch (const orvane::Error& error)
        {
            EXPECT_EQ(error.Place(), background);
        }
        EXPECT_FALSE(folder.Has(name));
        options.warn = note;
        orvane::WritePicture(document, folder.Path(name), options);
        EXPECT_TRUE(folder.Has(name));
        EXPECT_EQ(lost, std::vector<std::string>{background});
        options.warn = nullptr;
        lost.clear();
    }
}

TEST_F(LostPictures, AreToldOnceEachByALargePictureAndByADrawing)
{
    REQUIRE_CONTEXT(context);
    std::filesystem::remove(texture);
    options.size = Size{3000, 2000};
    options.warn = note;
    // The background picture is cut off after the first band.
    options.progress = [this](double) { std::filesystem::resize_file(background, 60); };
    orvane::WritePicture(document, folder.Path("a.png"), options);
    EXPECT_EQ(lost, (std::vector<std::string>{texture, background}));

    lost.clear();
    orvane::DrawOptions draw;
    EXPECT_THROW(orvane::Draw(document, draw), orvane::Error);
    draw.warn = note;
    orvane::Draw(document, draw);
    EXPECT_EQ(lost, (std::vector<std::string>{texture, background}));
}

TEST(DocumentPicking, AHitNamesNodeLetterAndPart)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    Document document;
    const orvane::Node text = document.AddText("\nÄI\n");
    orvane::CameraOptions camera;
    camera.turn = {0, 0, 0};
    document.Frame(size, camera);
    std::vector<std::string> letters;
    for (int x = 0; x < size.width; x += 6)
    {
        for (const orvane::Hit& hit : document.Pick(size, x, size.height / 2))
        {
            EXPECT_EQ(hit.kind, orvane::HitKind::Letter);
            EXPECT_EQ(hit.node, text);
            // Of the text "\nÄI\n": the line break is its first character.
            EXPECT_EQ(hit.index, hit.letter == "Ä" ? 1 : 2);
            EXPECT_GT(hit.depth, 0);
            EXPECT_LT(hit.depth, 1);
            if (letters.empty() || letters.back() != hit.letter)
            {
                letters.push_back(hit.letter);
            }
        }
    }
    EXPECT_EQ(letters, (std::vector<std::string>{"Ä", "I"}));
    EXPECT_TRUE(document.Pick(size, 0, 0).empty());
    EXPECT_THROW(document.Pick(size, size.width, 0), orvane::OptionError);
}

TEST(DocumentPicking, APickDoesNotDependOnPicksBeforeItOrOnTheThread)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    Document solid = SampleDocument();
    Document wires = SampleDocument();
    wires.SetDrawingMode(orvane::DrawingMode::Outline);
    const auto pickRow = [](const Document& document) {
        std::vector<std::tuple<std::string, orvane::LetterPart, double>> row;
        for (int x = 0; x < size.width; x += 20)
        {
            for (const orvane::Hit& hit : document.Pick(size, x, size.height / 2))
            {
                row.emplace_back(hit.letter, hit.part, hit.depth);
            }
        }
        return row;
    };
    const auto row = pickRow(solid);
    EXPECT_FALSE(row.empty());
    EXPECT_NE(pickRow(wires), row);
    EXPECT_EQ(pickRow(solid), row);
    // A thread that has not picked before has a context of its own.
    std::thread([&] { EXPECT_EQ(pickRow(solid), row); }).join();
}

TEST(DocumentPicking, TheToolFindsTheSameUnderEachPixel)
{
    const HeadlessContext context(1, 1);
    REQUIRE_CONTEXT(context);
    ToolFolder folder;
    Document document = SampleDocument();
    document.Save(folder.Path("a.orv"));
    for (const int x : {60, 110, 130, 180})
    {
        const std::vector<orvane::Hit> hits = document.Pick(size, x, 60);
        const std::string told =
            folder.Run({"pick", "a.orv", std::to_string(x) + ",60", "--size", "240x120"}).out;
        const std::string first =
            hits.empty() ? "nothing but the background" : "\"" + hits.front().letter + "\"";
        EXPECT_NE(told.substr(0, told.find('\n')).find(first), std::string::npos) << told;
    }
}

}  // namespace
