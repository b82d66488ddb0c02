// SPDX-License-Identifier: MIT
#include "shapedtext/GlyphCache.h"

#include "shapedtext/GlyphSlots.h"
#include "shapedtext/SharedShaping.h"
#include "shaping/FontQuery.h"

#include <gtest/gtest.h>

namespace
{
using orvane::GlyphCache;
using orvane::GlyphSlots;
using orvane::LetterShape;
using orvane::SharedShaping;

std::shared_ptr<const orvane::ShapingFace> Face(const char* name)
{
    orvane::FontQuery query;
    query.name = name;
    return orvane::OpenFont(query).face;
}

TEST(GlyphCache, AGlyphIsBuiltOnceForAllTexts)
{
    const std::shared_ptr<SharedShaping> shared = SharedShaping::Get();
    const auto face = Face("DejaVu Sans");
    GlyphSlots first(shared);
    GlyphSlots second(shared);
    const std::uint32_t h = face->GlyphOf('H');
    const OrvGlyph* const built = first.GlyphAt(first.SlotOf({face, h, 1, 0}));
    ASSERT_NE(built, nullptr);
    EXPECT_EQ(second.GlyphAt(second.SlotOf({face, h, 1.5, 0})), built);
    const std::size_t bytes = shared->glyphs.Bytes();
    EXPECT_GT(bytes, 0u);
    EXPECT_EQ(first.GlyphAt(first.SlotOf({face, h, 2, 7})), built);
    EXPECT_EQ(shared->glyphs.Bytes(), bytes);
}

TEST(GlyphCache, TheSameLetterHasTheSameSlot)
{
    const std::shared_ptr<SharedShaping> shared = SharedShaping::Get();
    const auto face = Face("DejaVu Sans");
    GlyphSlots slots(shared);
    const int first = slots.SlotOf({face, 43, 1, 0});
    EXPECT_EQ(slots.SlotOf({face, 43, 1, 0}), first);
    EXPECT_NE(slots.SlotOf({face, 43, 1, 1}), first);
    EXPECT_NE(slots.SlotOf({face, 43, 2, 0}), first);
    EXPECT_NE(slots.SlotOf({face, 44, 1, 0}), first);
    EXPECT_NE(slots.SlotOf({Face("DejaVu Serif"), 43, 1, 0}), first);
    EXPECT_EQ(slots.Count(), 5);
}

TEST(GlyphCache, NeverHoldsMoreThanItsLimitAndTakesGlyphsFromTheirSlots)
{
    constexpr std::size_t mostBytes = 200'000;
    const auto shared = std::make_shared<SharedShaping>(mostBytes);
    const auto face = Face("DejaVu Sans");
    GlyphSlots slots(shared);
    std::size_t largest = 0;
    for (std::uint32_t glyph = 36; glyph < 436; ++glyph)
    {
        ASSERT_NE(slots.GlyphAt(slots.SlotOf({face, glyph, 1, 0})), nullptr) << glyph;
        largest = std::max(largest, shared->glyphs.Bytes());
        ASSERT_LE(shared->glyphs.Bytes(), mostBytes);
    }
    EXPECT_GT(largest, mostBytes / 2);
    EXPECT_EQ(slots.glyphs.GetAt(0), nullptr);    // the first ones are gone
    EXPECT_NE(slots.glyphs.GetAt(399), nullptr);  // the last one is there
    EXPECT_NE(slots.GlyphAt(0), nullptr);         // and the first one is built again
    EXPECT_NE(slots.glyphs.GetAt(0), nullptr);
    EXPECT_LE(shared->glyphs.Bytes(), mostBytes);
}

TEST(GlyphCache, AGlyphThatIsUsedAgainStays)
{
    const auto shared = std::make_shared<SharedShaping>(100'000);
    const auto face = Face("DejaVu Sans");
    GlyphSlots slots(shared);
    const int kept = slots.SlotOf({face, 36, 1, 0});
    const OrvGlyph* const glyph = slots.GlyphAt(kept);
    for (std::uint32_t other = 37; other < 337; ++other)
    {
        slots.GlyphAt(slots.SlotOf({face, other, 1, 0}));
        ASSERT_EQ(slots.GlyphAt(kept), glyph);
    }
    EXPECT_EQ(slots.glyphs.GetAt(slots.SlotOf({face, 37, 1, 0})), nullptr);
}

TEST(GlyphCache, AGlyphLargerThanTheLimitIsKeptWhileItIsInUse)
{
    const auto shared = std::make_shared<SharedShaping>(1);
    const auto face = Face("DejaVu Sans");
    GlyphSlots slots(shared);
    EXPECT_NE(slots.GlyphAt(slots.SlotOf({face, 36, 1, 0})), nullptr);
    EXPECT_NE(slots.GlyphAt(slots.SlotOf({face, 37, 1, 0})), nullptr);
    EXPECT_EQ(slots.glyphs.GetAt(0), nullptr);
}

TEST(GlyphCache, SlotsThatEndAreForgotten)
{
    const auto shared = std::make_shared<SharedShaping>(50'000);
    const auto face = Face("DejaVu Sans");
    {
        GlyphSlots gone(shared);
        gone.GlyphAt(gone.SlotOf({face, 36, 1, 0}));
    }
    GlyphSlots slots(shared);
    for (std::uint32_t glyph = 37; glyph < 237; ++glyph)
    {
        EXPECT_NE(slots.GlyphAt(slots.SlotOf({face, glyph, 1, 0})), nullptr);
    }
}

TEST(GlyphCache, EveryObjectOfSlotsHasARecordOfItsOwn)
{
    const std::shared_ptr<SharedShaping> shared = SharedShaping::Get();
    const GlyphSlots first(shared);
    const GlyphSlots second(shared);
    EXPECT_NE(std::memcmp(first.GetEnumLogFont(), second.GetEnumLogFont(), sizeof(ENUMLOGFONTA)),
              0);
}

TEST(GlyphCache, IsSharedAsLongAsATextNeedsIt)
{
    std::weak_ptr<SharedShaping> watched;
    {
        const std::shared_ptr<SharedShaping> shared = SharedShaping::Get();
        watched = shared;
        EXPECT_EQ(SharedShaping::Get(), shared);
    }
    EXPECT_EQ(watched.lock(), nullptr);
}

}  // namespace
