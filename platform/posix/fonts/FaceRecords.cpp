// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/FaceRecords.h"

#include "platform/Limits.h"
#include "platform/posix/TextConversion.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace posix
{
namespace
{

constexpr int dotsPerInch = 96;
constexpr int defaultHeight = 16;
constexpr int enumerationHeight = 32;

// Bits of tmPitchAndFamily.
constexpr BYTE variablePitchBit = 1;  // set for fonts whose characters differ in width
constexpr BYTE vectorBits = 2 | 4;    // outline font, TrueType font
constexpr BYTE roman = 0x10;
constexpr BYTE swiss = 0x20;
constexpr BYTE modern = 0x30;
constexpr BYTE script = 0x40;
constexpr BYTE decorative = 0x50;

constexpr BYTE fixedPitch = 1;  // LOGFONTA::lfPitchAndFamily
constexpr BYTE variablePitch = 2;
constexpr BYTE strokePrecision = 3;
constexpr BYTE strokeClipping = 2;
constexpr BYTE draftQuality = 1;
constexpr BYTE yes = 0xFF;

/// a * b / divisor, rounded to the nearest, halves away from zero. The divisor is positive.
int MultiplyDivide(int a, int b, int divisor)
{
    const std::int64_t product = std::int64_t{a} * b;
    const std::int64_t half = product < 0 ? -(divisor / 2) : divisor / 2;
    return static_cast<int>((product + half) / divisor);
}

int CellOf(const DesignMetrics& design)
{
    return design.Cell() > 0 ? design.Cell() : design.unitsPerEm;
}

BYTE FamilyOf(const DesignMetrics& design)
{
    if (design.fixedPitch)
    {
        return modern;
    }
    switch (design.panose.bFamilyType)
    {
        case 2:  // Latin text; serif styles 2 to 10 have serifs, 11 and above have none
            return design.panose.bSerifStyle >= 11  ? swiss
                   : design.panose.bSerifStyle >= 2 ? roman
                                                    : BYTE{0};
        case 3:
            return script;
        case 4:
            return decorative;
        default:
            return 0;
    }
}

template <std::size_t size, typename Character>
void CopyText(Character (&field)[size], std::string_view text)
{
    static_assert(sizeof(Character) == 1);
    std::memset(field, 0, size);
    std::memcpy(field, text.data(), std::min(text.size(), size - 1));
}

/// Fills the fields that TEXTMETRICA and NEWTEXTMETRICA share. Fields that depend on the character
/// set are those of the font's own characters, whatever the code page.
template <typename Record>
void FillTextMetrics(Record& record, const InstalledFace& face, const DesignMetrics& design,
                     const FontSize& size, UINT codePage)
{
    record.tmAscent = size(design.ascent);
    record.tmDescent = size(design.descent);
    record.tmHeight = record.tmAscent + record.tmDescent;
    record.tmInternalLeading = size(design.Cell() - design.unitsPerEm);
    record.tmExternalLeading = size(design.externalLeading);
    record.tmAveCharWidth = size(design.averageWidth);
    record.tmMaxCharWidth = size(design.box.right - design.box.left);
    record.tmWeight = face.weight;
    record.tmDigitizedAspectX = dotsPerInch;
    record.tmDigitizedAspectY = dotsPerInch;
    const UINT first = design.firstCharacter;
    const UINT breaking = first <= 1 ? first + 2 : first > 255 ? 32 : first;
    record.tmFirstChar = static_cast<BYTE>(breaking - 2);
    record.tmLastChar = static_cast<BYTE>(std::min(255u, design.lastCharacter));
    record.tmDefaultChar = static_cast<BYTE>(breaking - 1);
    record.tmBreakChar = static_cast<BYTE>(breaking);
    record.tmItalic = face.italic ? yes : 0;
    record.tmPitchAndFamily = static_cast<BYTE>(FamilyOf(design) | vectorBits |
                                                (design.fixedPitch ? 0 : variablePitchBit));
    record.tmCharSet = CharacterSetOf(codePage);
}

POINT Scaled(const FontSize& size, const POINT& point)
{
    return {size(point.x), size(point.y)};
}

}  // namespace

LONG FontSize::operator()(int fontUnits) const
{
    return MultiplyDivide(fontUnits, pixels, units);
}

FontSize SizeForHeight(LONG height, const DesignMetrics& design)
{
    if (height > 0)
    {
        const int pixels = std::min<int>(height, orvane::limits::maxFontHeight);
        const int cell = CellOf(design);
        const int pixelsPerEm = MultiplyDivide(pixels, design.unitsPerEm, cell);
        return {pixels, cell, std::clamp(pixelsPerEm, 1, orvane::limits::maxFontHeight)};
    }
    const auto pixels = static_cast<int>(std::min<std::int64_t>(
        height == 0 ? defaultHeight : -std::int64_t{height}, orvane::limits::maxFontHeight));
    return {pixels, design.unitsPerEm, pixels};
}

FontSize EnumerationSize(const DesignMetrics& design)
{
    const int height = MultiplyDivide(CellOf(design), enumerationHeight, design.unitsPerEm);
    return SizeForHeight(std::max(height, 1), design);
}

FaceRecords RecordsOf(const CatalogFace& face, const DesignMetrics* design, UINT codePage)
{
    const InstalledFace& installed = *face.installed;
    FaceRecords records;
    LOGFONTA& logFont = records.logFont.elfLogFont;
    logFont.lfWeight = installed.weight;
    logFont.lfItalic = installed.italic ? yes : 0;
    logFont.lfCharSet = CharacterSetOf(codePage);
    logFont.lfOutPrecision = strokePrecision;
    logFont.lfClipPrecision = strokeClipping;
    logFont.lfQuality = draftQuality;
    logFont.lfPitchAndFamily = installed.monospaced ? fixedPitch : variablePitch;
    CopyText(logFont.lfFaceName, face.faceName);
    CopyText(records.logFont.elfFullName, face.full);
    CopyText(records.logFont.elfStyle, face.style);

    NEWTEXTMETRICA& metrics = records.metrics;
    if (design == nullptr)
    {
        records.type = installed.kind == OutlineKind::Bitmap ? RASTER_FONTTYPE : DEVICE_FONTTYPE;
        metrics.tmWeight = installed.weight;
        metrics.tmItalic = installed.italic ? yes : 0;
        metrics.tmCharSet = logFont.lfCharSet;
        return records;
    }
    records.type = TRUETYPE_FONTTYPE;
    FillTextMetrics(metrics, installed, *design, EnumerationSize(*design), codePage);
    metrics.ntmFlags = (installed.italic ? NTM_ITALIC : 0) | (design->bold ? NTM_BOLD : 0);
    if (metrics.ntmFlags == 0)
    {
        metrics.ntmFlags = NTM_REGULAR;
    }
    metrics.ntmSizeEM = static_cast<UINT>(design->unitsPerEm);
    metrics.ntmCellHeight = static_cast<UINT>(design->Cell());
    metrics.ntmAvgWidth = static_cast<UINT>(design->averageWidth);
    logFont.lfHeight = metrics.tmHeight;
    logFont.lfWidth = metrics.tmAveCharWidth;
    logFont.lfPitchAndFamily =
        static_cast<BYTE>(FamilyOf(*design) | (design->fixedPitch ? fixedPitch : variablePitch));
    return records;
}

std::vector<BYTE> OutlineRecord(const CatalogFace& face, const DesignMetrics& design,
                                const FontSize& size, UINT codePage)
{
    OUTLINETEXTMETRICA record = {};
    TEXTMETRICA& metrics = record.otmTextMetrics;
    FillTextMetrics(metrics, *face.installed, design, size, codePage);
    record.otmPanoseNumber = design.panose;
    record.otmfsSelection = design.selection;
    record.otmfsType = design.embedding;
    record.otmsCharSlopeRise = design.slopeRise;
    record.otmsCharSlopeRun = design.slopeRun;
    // The italic angle and the smallest size stay 0. Rise and run give the slope.
    record.otmEMSquare = static_cast<UINT>(design.unitsPerEm);
    record.otmAscent = size(design.typographicAscent);
    record.otmDescent = size(design.typographicDescent);
    record.otmLineGap = static_cast<UINT>(size(design.typographicLineGap));
    record.otmsCapEmHeight = static_cast<UINT>(size(design.capHeight));
    record.otmsXHeight = static_cast<UINT>(size(design.xHeight));
    record.otmrcFontBox = {size(design.box.left), size(design.box.top), size(design.box.right),
                           size(design.box.bottom)};
    // Ascent and descent are those of the cell; only the gap is that of the horizontal header.
    record.otmMacAscent = metrics.tmAscent;
    record.otmMacDescent = -metrics.tmDescent;
    record.otmMacLineGap = static_cast<UINT>(size(design.lineGap));
    record.otmptSubscriptSize = Scaled(size, design.subscriptSize);
    record.otmptSubscriptOffset = Scaled(size, design.subscriptOffset);
    record.otmptSuperscriptSize = Scaled(size, design.superscriptSize);
    record.otmptSuperscriptOffset = Scaled(size, design.superscriptOffset);
    record.otmsStrikeoutSize = static_cast<UINT>(size(design.strikeoutSize));
    record.otmsStrikeoutPosition = size(design.strikeoutPosition);
    record.otmsUnderscoreSize = size(design.underlineSize);
    record.otmsUnderscorePosition = size(design.underlinePosition);

    std::vector<BYTE> bytes(sizeof record);
    const auto append = [&](std::string_view text) {
        const std::size_t offset = bytes.size();
        bytes.resize(offset + text.size() + 1);
        std::copy(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
        return std::bit_cast<PSTR>(offset);
    };
    record.otmpFamilyName = append(face.family);
    // The name is cut to the length that an enumeration delivers, so that both calls give the same
    // name.
    record.otmpFaceName = append(std::string_view(face.full).substr(0, LF_FULLFACESIZE - 1));
    record.otmpStyleName = append(face.style);
    record.otmpFullName = append(ToCodePage(design.unique, codePage));
    record.otmSize = static_cast<UINT>(bytes.size());
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

}  // namespace posix
