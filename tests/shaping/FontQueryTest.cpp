// SPDX-License-Identifier: MIT
#include "shaping/FontQuery.h"

#include "orvane/Error.h"
#include "tests/support/FontFile.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace
{

using namespace orvane;

FontQuery ByName(const std::string& name)
{
    FontQuery query;
    query.name = name;
    return query;
}

std::string ProblemOf(const FontQuery& query)
{
    try
    {
        OpenFont(query);
    }
    catch (const Error& error)
    {
        return error.what();
    }
    return {};
}

FontLooks LooksOf(const std::string& words)
{
    FontLooks looks;
    EXPECT_TRUE(ReadStyleWords(words, &looks)) << words;
    return looks;
}

TEST(FontQuery, StyleWordsAreWeightsWidthsAndSlants)
{
    EXPECT_EQ(LooksOf("Bold").weight, 700);
    EXPECT_EQ(LooksOf("Semi Bold Italic").weight, 600);
    EXPECT_TRUE(LooksOf("Semi Bold Italic").isItalic);
    EXPECT_EQ(LooksOf("semi-bold").weight, 600);
    EXPECT_EQ(LooksOf("ExtraLight").weight, 200);
    EXPECT_EQ(LooksOf("condensed black").width, 75);
    EXPECT_EQ(LooksOf("condensed black").weight, 900);
    EXPECT_EQ(LooksOf("Semi Condensed").width, 87);

    FontLooks looks;
    EXPECT_FALSE(ReadStyleWords("Bold Sans", &looks));
    EXPECT_EQ(looks.weight, 400);
    EXPECT_FALSE(ReadStyleWords(" - ", &looks));
    EXPECT_FALSE(ReadStyleWords("semi", &looks));
}

TEST(FontQuery, AFamilyIsFoundWithWordsOfItsStyle)
{
    EXPECT_EQ(OpenFont(ByName("DejaVu Sans")).face->FullName(), "DejaVu Sans");
    EXPECT_EQ(OpenFont(ByName("dejavu sans bold")).face->FullName(), "DejaVu Sans Bold");
    EXPECT_EQ(OpenFont(ByName("Liberation Serif Bold Italic")).face->FullName(),
              "Liberation Serif Bold Italic");
    EXPECT_TRUE(OpenFont(ByName("Liberation Serif Bold Italic")).face->IsItalic());
    EXPECT_EQ(OpenFont(ByName("Liberation Serif Bold Italic")).face->Weight(), 700);
    // A PostScript name.
    EXPECT_EQ(OpenFont(ByName("LiberationMono-Italic")).face->FullName(), "Liberation Mono Italic");
}

TEST(FontQuery, LooksCountMoreThanWordsOfTheStyle)
{
    FontQuery query = ByName("Liberation Sans Bold");
    query.weight = 400;
    query.isItalic = true;

    EXPECT_EQ(OpenFont(query).face->FullName(), "Liberation Sans Italic");
}

TEST(FontQuery, LooksThatAFamilyLacksAreTold)
{
    const ChosenFont font = OpenFont(ByName("Liberation Sans Light"));

    EXPECT_EQ(font.face->FullName(), "Liberation Sans");
    ASSERT_EQ(font.notices.size(), 1U);
    EXPECT_EQ(font.notices[0],
              "font \"Liberation Sans Light\": the nearest that is installed is "
              "\"Liberation Sans Regular\"");
    EXPECT_TRUE(OpenFont(ByName("Liberation Sans Bold")).notices.empty());
}

TEST(FontQuery, AnUnknownNameIsAnError)
{
    const std::string problem = ProblemOf(ByName("DejaVu Sans Bolt"));
    EXPECT_TRUE(problem.starts_with(
        "font \"DejaVu Sans Bolt\": not installed; near names: \"DejaVu Sans Bold\", \""))
        << problem;
    EXPECT_EQ(ProblemOf({}), "name: exactly one of name, pattern and file, found 0 of them");
    FontQuery query = ByName("DejaVu Sans");
    query.weight = 1001;
    EXPECT_EQ(ProblemOf(query), "weight: 1 to 1000, found 1001");
    query = ByName("DejaVu Sans");
    query.axes = {{"weight", 1}};
    EXPECT_EQ(ProblemOf(query), "axes: tags of four letters, found \"weight\"");
}

TEST(FontQuery, APatternOfTheFontConfigurationChoosesAFont)
{
    FontQuery query;
    query.pattern = "DejaVu Sans Mono:bold";
    EXPECT_EQ(OpenFont(query).face->FullName(), "DejaVu Sans Mono Bold");
}

TEST(FontQuery, AFileIsOpenedByItsFaceNumber)
{
    const std::string folder = std::filesystem::temp_directory_path() / "orvane-font-query";
    std::filesystem::create_directories(folder);
    const std::string path = folder + "/two.ttc";
    FontFile::WriteCollection(
        {FontFile::EdgeTest(),
         FontFile::EdgeTest().Names("Second", "Regular", "Second Face", "Second-Face")},
        path);
    FontQuery query;
    query.file = path;
    query.index = 1;

    EXPECT_EQ(ShapingFace::CountFaces(path), 2);
    EXPECT_EQ(OpenFont(query).face->FullName(), "Second Face");
    query.index = 2;
    EXPECT_EQ(ProblemOf(query), path + ", face 2: has fewer faces");
    query.index = 0;
    query.instance = "Bold";
    EXPECT_EQ(ProblemOf(query), "instance: the font has no named instances, found Bold");
    query.instance.clear();
    query.axes = {{"wght", 650}};
    EXPECT_EQ(OpenFont(query).notices, std::vector<std::string>{path + ": has no axis wght"});
    query.axes.clear();

    std::ofstream(path) << "no font";
    EXPECT_EQ(ProblemOf(query), path + ": no OpenType font file");
    std::filesystem::remove_all(folder);
    EXPECT_EQ(ProblemOf(query), path + ": cannot be read");
    EXPECT_EQ(ShapingFace::CountFaces(path), 0);
}

}  // namespace
