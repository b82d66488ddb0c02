// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The measures of a face in font units, and their calculation from the tables of the face's file.

#include "platform/Fonts.h"

#include <ft2build.h>

#include <string>
#include <string_view>
#include FT_TRUETYPE_TABLES_H

namespace posix
{

/// The measures of a face, in font units.
struct DesignMetrics
{
    int unitsPerEm = 0;
    int ascent = 0;   ///< the cell's height above the base line
    int descent = 0;  ///< the cell's depth below the base line, positive
    int externalLeading = 0;
    int averageWidth = 0;
    RECT box = {};  ///< around all glyphs; the top is the larger y
    bool bold = false;
    bool fixedPitch = false;
    PANOSE panose = {};
    UINT selection = 0;
    UINT embedding = 0;
    int slopeRise = 1;
    int slopeRun = 0;
    int typographicAscent = 0;
    int typographicDescent = 0;
    int typographicLineGap = 0;
    int lineGap = 0;  ///< of the horizontal header
    int capHeight = 0;
    int xHeight = 0;
    POINT subscriptSize = {};
    POINT subscriptOffset = {};
    POINT superscriptSize = {};
    POINT superscriptOffset = {};
    int strikeoutSize = 0;
    int strikeoutPosition = 0;
    int underlineSize = 0;
    int underlinePosition = 0;
    UINT firstCharacter = 32;
    UINT lastCharacter = 255;
    std::string unique;  ///< name id 3, in UTF-8

    int Cell() const { return ascent + descent; }
};

/// The tables of a face, read by FreeType or by ReadDesignTables. Tables that the face lacks are
/// null.
struct DesignTables
{
    int unitsPerEm = 0;
    int ascent = 0;       ///< of the face; used where an OS/2 table does not give it
    int descent = 0;      ///< used like ascent; positive
    int widestWidth = 0;  ///< the largest advance; used like ascent
    RECT box = {};        ///< the top is the larger y
    bool bold = false;
    bool fixedPitch = false;
    const TT_OS2* os2 = nullptr;
    const TT_HoriHeader* header = nullptr;
    const TT_Postscript* postScript = nullptr;
    std::string unique;
};

DesignMetrics DesignFrom(const DesignTables& tables);

/// Chooses the unique name (name id 3) among a face's names: the English one for Windows or,
/// without one, the last English one for the Macintosh.
class UniqueName
{
public:
    /// Whether a name may be chosen. Only then its text needs to be read.
    static bool Wants(unsigned platform, unsigned language, unsigned id);

    /// Offers a name that is wanted.
    /// \param bytes its text as the file stores it
    void Offer(unsigned platform, std::string_view bytes);

    /// Whether the best name has been found, so that no other name needs to be offered.
    bool IsFound() const { return found_; }
    const std::string& Text() const { return text_; }

private:
    bool found_ = false;
    std::string text_;
};

}  // namespace posix
