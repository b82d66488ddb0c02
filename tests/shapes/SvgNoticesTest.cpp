// SPDX-License-Identifier: MIT
// What a reader is told of things in a file that are left out or changed.
#include "tests/shapes/SvgReading.h"

namespace
{

/// The notices about elements as text, as in "1 text: is not supported and left out".
std::vector<std::string> NoticesOf(const std::string& elements)
{
    std::vector<std::string> texts;
    for (const orvane::SvgNotice& notice : ReadElements(elements).notices)
    {
        texts.push_back(std::to_string(notice.line) + " " + notice.element + ": " + notice.problem);
    }
    return texts;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(SvgNotices, UnsupportedElementsAreToldOnceWithTheirFirstLine)
{
    EXPECT_EQ(
        NoticesOf("<g>\n<text>a</text>\n<text>b</text><image href='x.png'/></g>"),
        (Texts{"2 text: is not supported and left out", "3 image: is not supported and left out"}));
}

TEST(SvgNotices, WhatDrawsNothingIsNotTold)
{
    EXPECT_EQ(NoticesOf("<title>a</title><desc/><metadata/><defs><text/></defs><!-- text -->"
                        "<g display='none'><text/></g><sodipodi:namedview/><text "
                        "display='none'/><rect mask='none' filter='none' width='1' height='1'/>"),
              Texts{});
}

TEST(SvgNotices, GradientsPatternsMasksAndFiltersAreTold)
{
    EXPECT_EQ(NoticesOf("<linearGradient id='a'><stop/></linearGradient><pattern id='p'/>"
                        "<rect fill='url(#a)' stroke='url(#p)' mask='url(#m)' style='filter:x' "
                        "width='1' height='1'/>"),
              (Texts{"1 rect: mask is not supported and left out",
                     "1 rect: filter is not supported and left out",
                     "1 linearGradient: is not supported; its first stop's color is taken",
                     "1 pattern: is not supported as a paint and left out"}));
}

TEST(SvgNotices, TransparencyIsTold)
{
    EXPECT_EQ(NoticesOf("<rect fill-opacity='.5' width='1' height='1'/>"),
              (Texts{"1 rect: is partly transparent; what it covers is cut away all the same"}));
}

TEST(SvgNotices, PropertiesThatMakeNoSenseAreIgnoredAndTold)
{
    EXPECT_EQ(
        NoticesOf("<rect fill='reddish' stroke-width='-1' stroke-linejoin='arcs' width='1' "
                  "height='1'/>"),
        (Texts{"1 rect: fill is ignored: found \"reddish\", expected a color",
               "1 rect: stroke-width is ignored: found \"-1\", expected a length that is not "
               "negative",
               "1 rect: stroke-linejoin is ignored: found \"arcs\", expected miter or round or "
               "bevel"}));
}

TEST(SvgNotices, SelectorsOfOtherKindsAreTold)
{
    EXPECT_EQ(NoticesOf("<style>@import 'x.css'; g > rect {fill:red} rect:hover {fill:red}"
                        "</style><rect width='1' height='1'/>"),
              (Texts{"1 style: \"@import 'x.css'\" is not supported and left out",
                     "1 style: \"g > rect\" is not supported and left out",
                     "1 style: \"rect:hover\" is not supported and left out"}));
}

TEST(SvgNotices, ReferencesThatLeadOutOfTheFileAreNotFollowed)
{
    EXPECT_EQ(
        NoticesOf("<use href='other.svg#a'/><use href='#nobody'/>"
                  "<rect fill='url(other.svg#a)' stroke='url(#nobody)' clip-path='url(#nobody)' "
                  "width='1' height='1'/>"),
        (Texts{"1 use: a reference to something outside of the file is not followed",
               "1 use: refers to an element that is not in the file",
               "1 rect: fill is ignored: found \"url(other.svg#a)\", expected a reference such "
               "as url(#id) into this file",
               "1 rect: refers to a clipPath that is not in the file",
               "1 rect: refers to a paint that is not in the file"}));
}
