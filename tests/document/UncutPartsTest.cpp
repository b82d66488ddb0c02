// SPDX-License-Identifier: MIT
#include "document/meshes/UncutParts.h"

#include "document/SceneDocument.h"
#include "document/meshes/SolidNotes.h"
#include "orvane/Error.h"
#include "scene/SceneObject.h"
#include "solids/MeshBuilder.h"
#include "solids/OrvOutlineShape.h"
#include "solids/OrvProfileString.h"
#include "tests/support/StubFont.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{
using namespace orvane;
using Sentences = std::vector<std::string>;

/// A region may reach 16,000 em from the origin; the letter A of the font is a square of 1 em.
constexpr double tooHigh = 20000;

/// Expects sentences with these beginnings, followed by what is wrong with a region.
void ExpectTooFar(const std::vector<std::string>& sentences,
                  const std::vector<std::string>& beginnings)
{
    ASSERT_EQ(sentences.size(), beginnings.size());
    for (std::size_t i = 0; i < sentences.size(); ++i)
    {
        const std::string expected = beginnings[i] + " left out: region: found 20000.";
        EXPECT_EQ(sentences[i].substr(0, expected.size()), expected);
        EXPECT_NE(sentences[i].find(" em from the origin, expected at most 16000."),
                  std::string::npos)
            << sentences[i];
    }
}

/// A scene with texts of a font that has no platform font.
class UncutParts : public testing::Test
{
protected:
    template <typename Node>
    Node& Add(double height)
    {
        auto node = std::make_unique<Node>();
        node->SetScale(DVector(1, height, 0.5));
        Node& added = *node;
        document.scene->AddChild(node.release());
        return added;
    }
    template <typename Text>
    Text& AddText(const char* letters, double height = tooHigh)
    {
        Text& text = Add<Text>(height);
        text.AttachFont(&font);
        text.SetTextString(letters);
        return text;
    }
    SolidMesh Build(bool closed = false)
    {
        MeshBuildOptions options;
        options.closedTexts = closed;
        return BuildMesh(*document.scene, options);
    }

    static constexpr const char* letterA = "the letter \"A\" of the font \"Stub\" is";
    StubFont font;
    SceneDocument document;
};

TEST_F(UncutParts, LettersAreToldOnceWithTheirFont)
{
    AddText<OrvProfileString>("BAA");
    AddText<OrvProfileString>("AB");
    AddText<OrvFontString>("A");
    EXPECT_TRUE(UncutTextsOf(document).empty()) << "Nothing has been built.";
    Build();
    ExpectTooFar(UncutTextsOf(document), {letterA});
    EXPECT_TRUE(UncutOutlinesOf(document).empty());
}

TEST_F(UncutParts, JoinedLettersAreToldByTheirLineOrTheirText)
{
    AddText<OrvProfileString>("B\r\nAB").SetFusion(LetterFusion::Line);
    AddText<OrvProfileString>("ABBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBB\r\nB")
        .SetFusion(LetterFusion::Text);
    Build();
    ExpectTooFar(UncutTextsOf(document),
                 {"parts of line 2 of the text \"B\" are",
                  "parts of the text \"A" + std::string(39, 'B') + "\"... are"});
}

TEST_F(UncutParts, ATextWithoutASizeIsToldAsAWholeUnlessItIsEmpty)
{
    AddText<OrvProfileString>("A", 0);
    AddText<OrvProfileString>(" \r\n", 0);
    EXPECT_EQ(UncutTextsOf(document),
              Sentences({"the text \"A\" is left out: solids need a width, a height and a depth"}));
}

TEST_F(UncutParts, AreasAreToldByTheirColours)
{
    NamedColor red("#ff0000");
    OrvOutlineShape& shape = Add<OrvOutlineShape>(tooHigh);
    shape.SetAreas({{{{{{0, 0}, {1, 0}, {1, 4}, {0, 4}}}}, red}});
    EXPECT_TRUE(UncutOutlinesOf(document).empty()) << "Nothing has been built.";
    Build();
    const Sentences told = UncutOutlinesOf(document);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].rfind("the area of the colour #ff0000 is left out: region: found ", 0), 0u)
        << told[0];
    EXPECT_TRUE(UncutTextsOf(document).empty());
}

TEST_F(UncutParts, LettersThatSolidReplacedAreToldOrAnError)
{
    AddText<OrvFontString>("ABA");
    const SolidMesh mesh = Build(true);
    ExpectTooFar(UncutLettersOf(mesh), {letterA});

    MeshFileOptions options;
    Sentences told;
    options.solid = true;
    options.warn = [&told](const std::string& problem) { told.push_back(problem); };
    TellSolidNotes(mesh, options, "a.stl");
    ExpectTooFar(told, {letterA});
    options.warn = nullptr;
    EXPECT_THROW(TellSolidNotes(mesh, options, "a.stl"), Error);
    options.solid = false;
    EXPECT_NO_THROW(TellSolidNotes(mesh, options, "a.stl"));
}

}  // namespace
