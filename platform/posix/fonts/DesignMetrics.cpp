// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/DesignMetrics.h"

#include "platform/posix/TextConversion.h"

#include <algorithm>
#include <iterator>
#include FT_TRUETYPE_IDS_H

namespace posix
{
namespace
{

void ReadOs2(const TT_OS2& os2, DesignMetrics& design)
{
    if (os2.usWinAscent + os2.usWinDescent != 0)
    {
        design.ascent = os2.usWinAscent;
        design.descent = os2.usWinDescent;
    }
    design.averageWidth = os2.xAvgCharWidth;
    std::copy(std::begin(os2.panose), std::end(os2.panose), &design.panose.bFamilyType);
    design.selection = os2.fsSelection;
    design.embedding = os2.fsType;
    design.typographicAscent = os2.sTypoAscender;
    design.typographicDescent = os2.sTypoDescender;
    design.typographicLineGap = os2.sTypoLineGap;
    if (os2.version >= 2)
    {
        design.capHeight = os2.sCapHeight;
        design.xHeight = os2.sxHeight;
    }
    design.subscriptSize = {os2.ySubscriptXSize, os2.ySubscriptYSize};
    design.subscriptOffset = {os2.ySubscriptXOffset, os2.ySubscriptYOffset};
    design.superscriptSize = {os2.ySuperscriptXSize, os2.ySuperscriptYSize};
    design.superscriptOffset = {os2.ySuperscriptXOffset, os2.ySuperscriptYOffset};
    design.strikeoutSize = os2.yStrikeoutSize;
    design.strikeoutPosition = os2.yStrikeoutPosition;
    design.firstCharacter = os2.usFirstCharIndex;
    design.lastCharacter = os2.usLastCharIndex;
}

}  // namespace

DesignMetrics DesignFrom(const DesignTables& tables)
{
    DesignMetrics design;
    design.unitsPerEm = tables.unitsPerEm;
    design.ascent = tables.ascent;
    design.descent = tables.descent;
    design.averageWidth = tables.widestWidth;
    design.box = tables.box;
    design.bold = tables.bold;
    design.typographicAscent = tables.ascent;
    design.typographicDescent = -tables.descent;
    if (tables.os2 != nullptr)
    {
        ReadOs2(*tables.os2, design);
    }
    int headerHeight = tables.ascent + tables.descent;
    if (const TT_HoriHeader* const header = tables.header)
    {
        headerHeight = header->Ascender - header->Descender;
        design.lineGap = header->Line_Gap;
        design.slopeRise = header->caret_Slope_Rise;
        design.slopeRun = header->caret_Slope_Run;
    }
    design.externalLeading = std::max(0, design.lineGap - (design.Cell() - headerHeight));
    if (const TT_Postscript* const postScript = tables.postScript)
    {
        design.underlinePosition = postScript->underlinePosition;
        design.underlineSize = postScript->underlineThickness;
    }
    constexpr BYTE latinText = 2;
    constexpr BYTE monospaced = 9;
    design.fixedPitch = tables.fixedPitch || (design.panose.bFamilyType == latinText &&
                                              design.panose.bProportion == monospaced);
    design.unique = tables.unique;
    return design;
}

bool UniqueName::Wants(unsigned platform, unsigned language, unsigned id)
{
    constexpr unsigned english = 9;
    return id == TT_NAME_ID_UNIQUE_ID &&
           ((platform == TT_PLATFORM_MICROSOFT && (language & 0x3FF) == english) ||
            (platform == TT_PLATFORM_MACINTOSH && language == TT_MAC_LANGID_ENGLISH));
}

void UniqueName::Offer(unsigned platform, std::string_view bytes)
{
    found_ = platform == TT_PLATFORM_MICROSOFT;
    text_ = found_ ? Utf8FromUtf16(bytes) : std::string(bytes);
}

}  // namespace posix
