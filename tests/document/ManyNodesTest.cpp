// SPDX-License-Identifier: MIT
// A small file can have many nodes, or a text whose letters all lie at one place. What is done with
// each of them must not cost more because there are many.

#include "document/SceneNames.h"
#include "orvane/DocumentAccess.h"
#include "orvane/orvane.h"
#include "scene/DrawingObject.h"
#include "scene/OrvString.h"
#include "scene/SceneObject.h"
#include "tests/support/Instructions.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace
{

using orvane::Document;
using orvane::Node;

/// How many instructions a call takes in a document of that many empty nodes.
std::optional<long> InstructionsIn(int nodes, const std::function<void(const Document&)>& call)
{
    Document document;
    for (int i = 0; i < nodes; ++i)
    {
        orvane::SceneOf(document).AddChild(new DrawingObject);
    }
    call(document);  // what is made only once is made now
    return CountInstructions([&] { call(document); });
}

/// Four times as many nodes may take at most six times as many instructions. A walk that looks for
/// each node from the start of the list takes nearly sixteen times as many.
void ExpectLinear(const std::function<void(const Document&)>& call)
{
    const std::optional<long> few = InstructionsIn(50, call);
    const std::optional<long> many = InstructionsIn(200, call);
    if (!few || !many)
    {
        GTEST_SKIP() << "the operating system lets no process trace its children";
    }
    EXPECT_LT(*many, 6 * *few);
}

TEST(ManyNodes, AreListedInTimeThatGrowsWithTheirNumber)
{
    ExpectLinear([](const Document& document) { static_cast<void>(document.Nodes()); });
}

TEST(ManyNodes, AreSearchedForMissingLettersInTimeThatGrowsWithTheirNumber)
{
    ExpectLinear([](const Document& document) { static_cast<void>(document.MissingLetters()); });
}

TEST(ManyNodes, HandlesOfOneNodeAreEqualAndAreForgottenWithIt)
{
    Document document;
    SceneObject& scene = orvane::SceneOf(document);
    auto* const parent = new DrawingObject;
    auto* const child = new DrawingObject;
    scene.AddChild(parent);
    parent->AddChild(child);
    scene.AddChild(new DrawingObject);
    const std::vector<Node> nodes = document.Nodes();
    ASSERT_EQ(nodes.size(), 2u);
    EXPECT_EQ(document.Nodes(), nodes);
    const std::vector<Node> children = nodes[0].Children();
    ASSERT_EQ(children.size(), 1u);
    EXPECT_EQ(&orvane::ObjectOf(children[0]), child);
    Node removed = nodes[0];
    removed.Remove();
    EXPECT_FALSE(nodes[0].IsValid());
    EXPECT_FALSE(children[0].IsValid());
    EXPECT_TRUE(nodes[1].IsValid());
    EXPECT_EQ(document.Nodes(), std::vector<Node>{nodes[1]});
}

TEST(ManyNodes, FinderTakesPathsOverSeveralLevels)
{
    DrawingObject root;
    auto* const second = new DrawingObject;
    auto* const deepest = new DrawingObject;
    root.AddChild(new DrawingObject);
    root.AddChild(second);
    second->AddChild(new DrawingObject);
    second->AddChild(new DrawingObject);
    second->AddChild(deepest);
    orvane::NodeFinder finder(root);
    EXPECT_EQ(&finder.NodeAt({}), &root);
    EXPECT_EQ(&finder.NodeAt({1}), second);
    EXPECT_EQ(&finder.NodeAt({1, 2}), deepest);
    EXPECT_EQ(&finder.ChildAt(*second, 2), deepest);
}

constexpr orvane::Size picture{64, 64};

/// A document in which all letters are drawn at nearly the same place: the spacing is minus the
/// width of a letter.
Document DocumentOfPiledLetters(int letters)
{
    Document document;
    const Node node = document.AddText(std::string(static_cast<std::size_t>(letters), 'I'));
    auto& text = dynamic_cast<OrvString&>(orvane::ObjectOf(node));
    text.CalculateBounds();
    text.SetInterCharacterSpacing(-static_cast<float>(text.GetScaledDimensions().x / letters));
    text.CalculateBounds();
    document.Frame(picture);
    return document;
}

TEST(ManyLetters, AtOnePlaceAreAllPicked)
{
    // A search that halves the text would draw it thousands of times.
    constexpr int letters = 2000;
    const Document document = DocumentOfPiledLetters(letters);
    std::vector<bool> isPicked(letters);
    for (int y = 2; y < 64; y += 4)
    {
        for (const orvane::Hit& hit : document.Pick(picture, 32, y))
        {
            EXPECT_EQ(hit.kind, orvane::HitKind::Letter);
            isPicked.at(static_cast<std::size_t>(hit.index)) = true;
        }
    }
    EXPECT_EQ(std::count(isPicked.begin(), isPicked.end(), true), letters);
}

TEST(ManyLetters, TheToolListsTheNearestThousandParts)
{
    ToolFolder folder;
    Document document = DocumentOfPiledLetters(2000);
    const std::size_t parts = document.Pick(picture, 32, 32).size();
    ASSERT_GT(parts, 1000u);
    document.Save(folder.Path("piled.orv"));
    const ToolResult result = folder.Run({"pick", "piled.orv", "32,32", "--size", "64x64"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1000);
    EXPECT_EQ(result.err, "orvane: piled.orv: the nearest 1000 of " + std::to_string(parts) +
                              " parts under the pixel are listed\n");
}

}  // namespace
