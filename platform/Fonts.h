// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Installed fonts: enumeration, metrics and glyph outlines. Names and texts are in the process's
/// code page (SetProcessCodePage).

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
    PSTR otmpFamilyName;  ///< this and the next three fields: byte offsets from the start of
                          ///< the record to zero-terminated texts
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

/// The start of each contour of a native outline. Curves (TTPOLYCURVE) follow it; cb is the size in
/// bytes of the header and its curves.
struct TTPOLYGONHEADER
{
    DWORD cb;
    DWORD dwType;
    POINTFX pfxStart;
};
static_assert(sizeof(TTPOLYGONHEADER) == 16);

/// A line or spline through cpfx points. Only the first point is declared; the others follow it.
struct TTPOLYCURVE
{
    WORD wType;
    WORD cpfx;
    POINTFX apfx[1];
};

/// Called for each font of an enumeration. Returns 0 to stop the enumeration.
using FONTENUMPROCA = int(CALLBACK*)(const LOGFONTA* record, const TEXTMETRICA* metrics,
                                     DWORD fontType, LPARAM data);

/// Makes a font for a description. The caller ends it with DeleteObject. Null only for a null
/// description.
///
/// The face is chosen when the font is used, among those with usable outlines. lfFaceName is tried
/// as the name of a family, within which slant and then weight decide, then as a full name, then as
/// a PostScript name. If no face has that name, the machine's font configuration chooses a
/// substitute. A description that an enumeration delivered finds exactly the face for which it was
/// delivered. A negative lfHeight is minus the height of the em square in pixels, a positive
/// lfHeight is the height of the cell in pixels, and 0 means 12 points. lfWidth, the angles,
/// underlining and striking out are ignored.
ORVANE_API HFONT CreateFontIndirectA(const LOGFONTA* description);

/// Enumerates installed fonts. Without a name, the callback is called once for each family, in the
/// order of the families' names, with the regular face or the face nearest to regular. With the
/// name of a family, or the full name of its regular face, the callback is called for each face of
/// the family, upright before italic and lighter before heavier. With any other full name, the
/// callback is called for that face alone.
///
/// The records are an ENUMLOGFONTA and a NEWTEXTMETRICA. The type is TRUETYPE_FONTTYPE only for
/// faces whose outlines can be handed over as quadratic curves. The files of other faces are not
/// read, so their records have only names, weight and slant. \p dc is ignored.
///
/// A call without a name notices fonts that have been installed or removed since the last listing,
/// except within the same second. A font in use keeps its face even when the face is removed.
///
/// Returns the last value that the callback returned, or 1 if it was never called.
ORVANE_API int EnumFontFamiliesA(HDC dc, LPCSTR family, FONTENUMPROCA callback, LPARAM data);

/// Fills \p metrics with at most \p size bytes of the record and its texts, and returns the number
/// of bytes filled. With a null \p metrics, returns the size of the whole record in bytes. Returns
/// 0 when the selected font has no outlines. A device context in which no font was selected uses
/// the face that the machine's font configuration chooses for an empty name.
ORVANE_API UINT GetOutlineTextMetricsA(HDC dc, UINT size, OUTLINETEXTMETRICA* metrics);

/// Gives the metrics of a character of the selected font and, with GGO_NATIVE, its outline:
/// polygons of lines and quadratic splines, in 16.16 pixels with y upward. With GGO_METRICS it
/// gives the metrics alone. Only the low byte of \p character counts. For a character that the font
/// lacks, the outline is the font's mark for missing characters.
/// \return the size of the outline in bytes, also when \p size is 0 or the buffer is null; 0 for an
/// empty glyph and for GGO_METRICS. GDI_ERROR when the font has no outlines, the buffer is too
/// small, or \p matrix is not the identity.
ORVANE_API DWORD GetGlyphOutlineA(HDC dc, UINT character, UINT format, GLYPHMETRICS* metrics,
                                  DWORD size, LPVOID buffer, const MAT2* matrix);

/// Stores the glyph indices that \p count characters have in the selected font. For a character
/// that the font lacks, the index is 0 or, with GGI_MARK_NONEXISTING_GLYPHS, 0xFFFF. Returns the
/// count, or GDI_ERROR when the font has no outlines.
ORVANE_API DWORD GetGlyphIndicesA(HDC dc, LPCSTR text, int count, WORD* indices, DWORD flags);

/// Sets the code page of the process: 1250, 1251, 1252 (the default), 1253, 1254 or 1257. A host
/// must call this before it makes the font list. For any other code page, changes nothing and
/// returns FALSE.
ORVANE_API BOOL SetProcessCodePage(UINT codePage);
ORVANE_API UINT GetACP();

/// The outlines that callers get for the glyphs of a face.
constexpr UINT OUTLINES_AS_IS = 0;     ///< the font's own; faces with a CFF table cannot be used
constexpr UINT OUTLINES_REPAIRED = 1;  ///< corrected where necessary; the default

/// Sets, for the whole process, which outlines callers get. A host must call this before it makes
/// the font list. For any other value than OUTLINES_AS_IS and OUTLINES_REPAIRED, changes nothing
/// and returns FALSE.
///
/// With OUTLINES_REPAIRED, an outline whose contours overlap is replaced by the border of the area
/// that it fills by the non-zero rule, contours that run the wrong way are reversed, and cubic
/// curves become quadratic ones. An outline that needs no correction is the same, bit for bit, with
/// both values.
ORVANE_API BOOL SetProcessOutlines(UINT outlines);
ORVANE_API UINT GetProcessOutlines();

/// Reads the font configuration and lists the installed faces again when a font is next needed.
/// Existing fonts choose their faces anew. A host calls this after it has installed a font in the
/// same second in which it asked for one; later changes are noticed without it.
ORVANE_API void ReloadFonts();

/// Counts of a face's glyphs, by the way in which their outlines were corrected.
struct OUTLINECHECK
{
    UINT glyphs;      ///< all glyphs of the face
    UINT repaired;    ///< contours overlapped, so the outline was rebuilt
    UINT turned;      ///< contours ran the wrong way and were reversed; nothing else was wrong
    UINT converted;   ///< made from cubic curves; other corrections may have been made, too
    UINT unrepaired;  ///< wrong, but not repairable; callers get these outlines as they are
};

/// Checks every glyph of the selected font's face as under OUTLINES_REPAIRED. FALSE when the font
/// has no outlines.
ORVANE_API BOOL CheckFontOutlines(HDC dc, OUTLINECHECK* check);

#endif
