// SPDX-License-Identifier: MIT
// Texts of closed solids in documents.
#include "orvane/orvane.h"

#include <gtest/gtest.h>

namespace
{

using orvane::Document;
using orvane::Hit;
using orvane::LetterFusion;
using orvane::TextOptions;

constexpr orvane::Size size = {200, 100};

TextOptions Profiled(const std::string& profile, LetterFusion fusion)
{
    TextOptions options;
    options.profile = profile;
    options.fusion = fusion;
    return options;
}

/// The first letter under a pixel.
Hit LetterAt(const Document& document, int x, int y)
{
    const std::vector<Hit> hits = document.Pick(size, x, y);
    return hits.empty() ? Hit() : hits.front();
}

Document Framed(LetterFusion fusion)
{
    Document document;
    document.AddText("IH", Profiled("round", fusion));
    orvane::CameraOptions camera;
    camera.turn = {0, 0, 0};
    document.Frame(size, camera);
    return document;
}

TEST(DocumentProfile, EachLetterIsPicked)
{
    const Document document = Framed(LetterFusion::Separate);
    // The text is centred: I lies left of the middle, the left stem of H right of it.
    for (int x = 0; x < size.width; ++x)
    {
        const Hit hit = LetterAt(document, x, 50);
        if (hit.kind == orvane::HitKind::Letter)
        {
            EXPECT_EQ(hit.letter, hit.index == 0 ? "I" : "H") << x;
            EXPECT_EQ(hit.index, x < 80 ? 0 : 1) << x;
        }
    }
    EXPECT_EQ(document.Nodes().at(0).Text(), "IH");
}

TEST(DocumentProfile, AJoinedLineIsPickedAsItsFirstLetter)
{
    const Document document = Framed(LetterFusion::Line);
    int found = 0;
    for (int x = 0; x < size.width; x += 4)
    {
        const Hit hit = LetterAt(document, x, 50);
        if (hit.kind == orvane::HitKind::Letter)
        {
            EXPECT_EQ(hit.index, 0);
            ++found;
        }
    }
    EXPECT_GT(found, 4);
}

TEST(DocumentProfile, APoorProfileIsAnErrorAndAddsNothing)
{
    Document document;
    EXPECT_THROW(document.AddText("x", Profiled("0,0 0.1", LetterFusion::Separate)), orvane::Error);
    EXPECT_THROW(document.AddText("x", Profiled("bevelled", LetterFusion::Separate)),
                 orvane::Error);
    EXPECT_TRUE(document.Nodes().empty());
}

}  // namespace
