// SPDX-License-Identifier: MIT
#include "shaping/RunCache.h"

#include "tests/shaping/ShapedTexts.h"

#include <gtest/gtest.h>

namespace
{

using namespace orvane;

ShapingRun RunOfText(const std::u32string& text, std::size_t begin, std::size_t end)
{
    ShapingRun run;
    run.text = text.data();
    run.textSize = text.size();
    run.begin = begin;
    run.end = end;
    run.script = MakeScriptTag("Latn");
    return run;
}

TEST(RunCache, ARunIsKeptWhereverItStands)
{
    const auto face = InstalledFace("DejaVu Sans");
    RunCache cache(1 << 20);
    const std::u32string text = U"-----word-----abcde-----word-----";
    const RunGlyphs first = cache.Shape(*face, RunOfText(text, 5, 9));

    EXPECT_EQ(cache.Shape(*face, RunOfText(text, 24, 28)), first);
    ASSERT_EQ(first->size(), 4U);
    EXPECT_EQ(first->back().cluster, 3U);
}

TEST(RunCache, WhatChangesGlyphsMakesAnotherRun)
{
    const auto face = InstalledFace("DejaVu Sans");
    RunCache cache(1 << 20);
    const std::u32string text = U"word and word";
    const RunGlyphs first = cache.Shape(*face, RunOfText(text, 0, 4));
    EXPECT_NE(cache.Shape(*face, RunOfText(text, 9, 13)), first);  // other letters beside it
    ShapingRun run = RunOfText(text, 0, 4);
    run.features = {{"kern", 0}};
    EXPECT_NE(cache.Shape(*face, run), first);
    run = RunOfText(text, 0, 4);
    run.language = "tr";
    EXPECT_NE(cache.Shape(*face, run), first);
    run = RunOfText(text, 0, 4);
    run.isRightToLeft = true;
    EXPECT_NE(cache.Shape(*face, run), first);
    EXPECT_NE(cache.Shape(*InstalledFace("DejaVu Sans Bold"), RunOfText(text, 0, 4)), first);
    EXPECT_EQ(cache.Shape(*face, RunOfText(text, 0, 4)), first);
}

TEST(RunCache, TheMemoryIsBounded)
{
    const auto face = InstalledFace("DejaVu Sans");
    constexpr std::size_t most = 10'000;
    RunCache cache(most);
    for (char32_t letter = U'a'; letter <= U'z'; ++letter)
    {
        const std::u32string text(20, letter);
        cache.Shape(*face, RunOfText(text, 0, text.size()));
        EXPECT_GT(cache.Bytes(), 0U);
        EXPECT_LE(cache.Bytes(), most);
    }
    // The latest is there, the first is not any more.
    const std::u32string last(20, U'z');
    EXPECT_EQ(cache.Shape(*face, RunOfText(last, 0, 20)),
              cache.Shape(*face, RunOfText(last, 0, 20)));
    const std::size_t before = cache.Bytes();
    const std::u32string longText(10'000, U'a');
    EXPECT_EQ(cache.Shape(*face, RunOfText(longText, 0, 10'000))->size(), 10'000U);
    EXPECT_EQ(cache.Bytes(), before);
    cache.Clear();
    EXPECT_EQ(cache.Bytes(), 0U);
}

}  // namespace
