// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Installed fonts: enumeration, metrics and glyph outlines. Names and texts are in the process's
/// code page.

#include "platform/DeviceContexts.h"
#include "platform/Export.h"
#include "platform/Types.h"

#if !defined(_WIN32)

constexpr int LF_FACESIZE = 32;
constexpr int LF_FULLFACESIZE = 64;
constexpr DWORD RASTER_FONTTYPE = 1;
constexpr DWORD DEVICE_FONTTYPE = 2;
constexpr DWORD TRUETYPE_FONTTYPE = 4;
constexpr UINT GGO_METRICS = 0;
constexpr UINT GGO_NATIVE = 2;
constexpr DWORD GDI_ERROR = 0xFFFFFFFF;
constexpr DWORD GGI_MARK_NONEXISTING_GLYPHS = 1;
constexpr WORD TT_PRIM_LINE = 1;
constexpr WORD TT_PRIM_QSPLINE = 2;
constexpr DWORD TT_POLYGON_TYPE = 24;
constexpr BYTE ANSI_CHARSET = 0;
constexpr BYTE DEFAULT_CHARSET = 1;
constexpr LONG FW_NORMAL = 400;
constexpr LONG FW_BOLD = 700;
constexpr DWORD NTM_ITALIC = 0x01;
constexpr DWORD NTM_BOLD = 0x20;
constexpr DWORD NTM_REGULAR = 0x40;

struct LOGFONTA
{
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    char lfFaceName[LF_FACESIZE];
};
static_assert(sizeof(LOGFONTA) == 60);

struct ENUMLOGFONTA
{
    LOGFONTA elfLogFont;
    BYTE elfFullName[LF_FULLFACESIZE];
    BYTE elfStyle[LF_FACESIZE];
};
static_assert(sizeof(ENUMLOGFONTA) == 156);

struct TEXTMETRICA
{
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    BYTE tmFirstChar;
    BYTE tmLastChar;
    BYTE tmDefaultChar;
    BYTE tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};

/// Begins with the fields of TEXTMETRICA.
struct NEWTEXTMETRICA
{
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    BYTE tmFirstChar;
    BYTE tmLastChar;
    BYTE tmDefaultChar;
    BYTE tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
    DWORD ntmFlags;
    UINT ntmSizeEM;
    UINT ntmCellHeight;
    UINT ntmAvgWidth;
};

struct PANOSE
{
    BYTE bFamilyType;
    BYTE bSerifStyle;
    BYTE bWeight;
    BYTE bProportion;
    BYTE bContrast;
    BYTE bStrokeVariation;
    BYTE bArmStyle;
    BYTE bLetterform;
    BYTE bMidline;
    BYTE bXHeight;
};

struct OUTLINETEXTMETRICA
{
    UINT otmSize;
    TEXTMETRICA otmTextMetrics;
    BYTE otmFiller;
    PANOSE otmPanoseNumber;
    UINT otmfsSelection;
    UINT otmfsType;
    int otmsCharSlopeRise;
    int otmsCharSlopeRun;
    int otmItalicAngle;
    UINT otmEMSquare;
    int otmAscent;
    int otmDescent;
    UINT otmLineGap;
    UINT otmsCapEmHeight;
    UINT otmsXHeight;
    RECT otmrcFontBox;
    int otmMacAscent;
    int otmMacDescent;
    UINT otmMacLineGap;
    UINT otmusMinimumPPEM;
    POINT otmptSubscriptSize;
    POINT otmptSubscriptOffset;
    POINT otmptSuperscriptSize;
    POINT otmptSuperscriptOffset;
    UINT otmsStrikeoutSize;
    int otmsStrikeoutPosition;
    int otmsUnderscoreSize;
    int otmsUnderscorePosition;
    PSTR otmpFamilyName;  ///< these four: byte offsets from the record's start to zero-ended texts
    PSTR otmpFaceName;
    PSTR otmpStyleName;
    PSTR otmpFullName;
};

struct FIXED
{
    WORD fract;
    SHORT value;
};

struct POINTFX
{
    FIXED x;
    FIXED y;
};

struct MAT2
{
    FIXED eM11;
    FIXED eM12;
    FIXED eM21;
    FIXED eM22;
};

struct GLYPHMETRICS
{
    UINT gmBlackBoxX;
    UINT gmBlackBoxY;
    POINT gmptGlyphOrigin;
    SHORT gmCellIncX;
    SHORT gmCellIncY;
};
static_assert(sizeof(GLYPHMETRICS) == 20);

/// Heads each contour of a native outline; curves follow it up to cb bytes.
struct TTPOLYGONHEADER
{
    DWORD cb;
    DWORD dwType;
    POINTFX pfxStart;
};
static_assert(sizeof(TTPOLYGONHEADER) == 16);

/// A run of cpfx points; only the first is declared.
struct TTPOLYCURVE
{
    WORD wType;
    WORD cpfx;
    POINTFX apfx[1];
};

/// Return 0 to stop the enumeration.
using FONTENUMPROCA = int(CALLBACK*)(const LOGFONTA* record, const TEXTMETRICA* metrics,
                                     DWORD fontType, LPARAM data);

/// A font for a description, ended with DeleteObject; null only for a null description.
///
/// The face is found when the font is used: by lfFaceName as the name of a family, in which slant
/// and then weight decide; else as a full name; else as a PostScript name; else what the machine's
/// configuration puts in its place. Only faces with usable outlines come into question. A
/// description that enumeration gave finds the face that it was given for. A negative lfHeight is
/// the em square's height in pixels, a positive one the cell's, 0 is 12 points; lfWidth, the
/// angles, underlining and striking out are not looked at.
ORVANE_API HFONT CreateFontIndirectA(const LOGFONTA* description);

/// Without a name: one callback per installed family, in the order of their names, for its regular
/// face or what is nearest to it. With a family's name, or the full name of that face: each of its
/// faces, upright before italic, lighter before heavier. With any other full name: that face. The
/// records given are an ENUMLOGFONTA and a NEWTEXTMETRICA. Only faces whose outlines can be
/// handed over as quadratic ones have the type TRUETYPE_FONTTYPE; of others, whose files are not
/// read, the records have only the names, weight and slant. The device context is not looked at.
///
/// Without a name it sees what has been installed or removed since the faces were listed last, save
/// in the very second of that. A font in use keeps its face when that is removed.
///
/// Returns the last value that the callback returned, 1 if it was never called.
ORVANE_API int EnumFontFamiliesA(HDC dc, LPCSTR family, FONTENUMPROCA callback, LPARAM data);

/// With a null \p metrics, the size in bytes of the record with its texts; otherwise fills up to \p
/// size bytes and returns how many. 0 when the selected font has no outlines. A device context
/// without a font has the configuration's choice for no name.
ORVANE_API UINT GetOutlineTextMetricsA(HDC dc, UINT size, OUTLINETEXTMETRICA* metrics);

/// The outline of a character in the selected font (GGO_NATIVE), as polygons of straight and
/// quadratic runs in 16.16 pixels, y up; or its metrics alone (GGO_METRICS). With size 0 or a null
/// buffer: the bytes needed, 0 for an empty glyph and for GGO_METRICS. Only the low byte of \p
/// character counts; one that the font lacks has the outline that marks missing ones. GDI_ERROR
/// when the font has no outlines, the buffer is too small, or \p matrix is not the identity.
ORVANE_API DWORD GetGlyphOutlineA(HDC dc, UINT character, UINT format, GLYPHMETRICS* metrics,
                                  DWORD size, LPVOID buffer, const MAT2* matrix);

/// The selected font's glyph numbers of \p count characters. A character that the font lacks has
/// the number 0, or 0xFFFF with GGI_MARK_NONEXISTING_GLYPHS. Returns the count, GDI_ERROR when the
/// font has no outlines.
ORVANE_API DWORD GetGlyphIndicesA(HDC dc, LPCSTR text, int count, WORD* indices, DWORD flags);

/// Chooses the process's code page: 1250, 1251, 1252 (the default), 1253, 1254 or 1257. A host does
/// so before it makes the font list. FALSE for any other.
ORVANE_API BOOL SetProcessCodePage(UINT codePage);
ORVANE_API UINT GetACP();

/// What is handed over for a face's glyphs.
constexpr UINT OUTLINES_AS_IS = 0;  ///< the font's own outlines; compact (CFF) faces cannot be used
constexpr UINT OUTLINES_REPAIRED = 1;  ///< outlines that come out right, the default

/// Chooses what is handed over, for the whole process. A host does so before it makes the font
/// list. FALSE for anything else than the two.
///
/// Repaired, an outline whose contours overlap is the border of what it fills by the non-zero rule;
/// contours that run the wrong way are turned around; cubic curves become quadratic ones. An
/// outline that comes out right by itself is the same, bit for bit, in both ways.
ORVANE_API BOOL SetProcessOutlines(UINT outlines);
ORVANE_API UINT GetProcessOutlines();

/// How many of a face's glyphs ...
struct OUTLINECHECK
{
    UINT glyphs;     ///< there are
    UINT repaired;   ///< had contours that overlap, and were rebuilt
    UINT turned;     ///< had contours that run the wrong way, and nothing else
    UINT converted;  ///< were made of cubic curves, whatever else was to be done
    UINT
        unrepaired;  ///< do not come out right whatever is tried; these are handed over as they are
};

/// Checks every glyph of the selected font's face, as if outlines were repaired. FALSE when the
/// font has no outlines.
ORVANE_API BOOL CheckFontOutlines(HDC dc, OUTLINECHECK* check);

#endif
