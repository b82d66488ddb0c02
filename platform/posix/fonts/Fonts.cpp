// SPDX-License-Identifier: MIT
#include "platform/Fonts.h"

#include "platform/posix/TextConversion.h"
#include "platform/posix/drawing/GdiObjects.h"
#include "platform/posix/fonts/FaceRecords.h"
#include "platform/posix/fonts/FontCatalog.h"
#include "platform/posix/fonts/FontFace.h"
#include "platform/posix/fonts/FontHandles.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>

namespace posix
{

/// The face that was chosen for a description.
struct FoundFont
{
    std::shared_ptr<const FontCatalog> catalog;
    std::shared_ptr<const CatalogFace> face;
    bool named = false;  ///< whether the face has the name that was asked for
    std::shared_ptr<const DesignMetrics> design;
    FontSize size;
};

/// A font: a description, and the face chosen for it.
struct Font : GdiObject
{
    explicit Font(const LOGFONTA& logFont) : GdiObject(GdiKind::Font), description(logFont) {}
    explicit Font(FoundFont only)
        : GdiObject(GdiKind::Font), description(), hasOnlyFace(true), found(std::move(only))
    {}

    /// The face in the current catalogue. It is null when no face is usable or the file of the
    /// chosen face cannot be read.
    FoundFont Find()
    {
        if (hasOnlyFace)
        {
            return found;
        }
        const std::lock_guard lock(mutex);
        const std::shared_ptr<const FontCatalog> catalog = CurrentCatalog();
        if (searched != catalog)
        {
            FoundFont next = Search(catalog);
            // The font keeps a face that has been removed meanwhile, because the letters of
            // another face would not fit the measures that callers have been given.
            const bool keeps = found.named && !next.named &&
                               searched->CodePage() == catalog->CodePage() &&
                               searched->Outlines() == catalog->Outlines();
            if (!keeps)
            {
                found = std::move(next);
            }
            searched = catalog;
        }
        return found;
    }

    FoundFont Search(const std::shared_ptr<const FontCatalog>& catalog) const
    {
        const char* const name = description.lfFaceName;
        const std::string_view faceName(name, strnlen(name, LF_FACESIZE));
        const int weight = description.lfWeight > 0 ? std::min<int>(description.lfWeight, 1000)
                                                    : static_cast<int>(FW_NORMAL);
        const bool italic = description.lfItalic != 0;
        FoundFont result;
        result.catalog = catalog;
        const CatalogFace* face = catalog->Find(faceName, weight, italic);
        const bool named = face != nullptr;
        if (!named)
        {
            face = catalog->Nearest(faceName, weight, italic);
        }
        if (face != nullptr)
        {
            result.design = DesignOf(face->installed);
        }
        if (result.design)
        {
            result.face = std::shared_ptr<const CatalogFace>(catalog, face);
            result.named = named;
            result.size = SizeForHeight(description.lfHeight, *result.design);
        }
        return result;
    }

    const LOGFONTA description;
    const bool hasOnlyFace = false;  ///< whether \c found is given and never changes
    std::mutex mutex;
    FoundFont found;
    std::shared_ptr<const FontCatalog> searched;  // the catalogue that \c found was chosen from
};

namespace
{

std::atomic<UINT> processOutlines = OUTLINES_REPAIRED;

/// The font of a device context or, if no font was selected, the face that the font configuration
/// chooses for an empty name. The face is null when the handle is not valid or no face is usable.
FoundFont SelectedFont(HDC dc)
{
    const std::shared_ptr<DeviceContext> context = Resolve<DeviceContext>(dc);
    if (!context)
    {
        return {};
    }
    if (const std::shared_ptr<Font> font = Resolve<Font>(context->font))
    {
        return font->Find();
    }
    static auto* const defaultFont = new Font(LOGFONTA());
    return defaultFont->Find();
}

bool IsIdentity(const MAT2& matrix)
{
    const auto is = [](const FIXED& number, SHORT value) {
        return number.value == value && number.fract == 0;
    };
    return is(matrix.eM11, 1) && is(matrix.eM12, 0) && is(matrix.eM21, 0) && is(matrix.eM22, 1);
}

/// The metrics of a glyph in whole pixels. Its box is cut to the height of the cell.
GLYPHMETRICS BoxOf(const FT_Glyph_Metrics& glyph, const FoundFont& font)
{
    const auto floored = [](FT_Pos value) { return static_cast<LONG>(value >> 6); };
    const auto ceiled = [](FT_Pos value) { return static_cast<LONG>((value + 63) >> 6); };
    const LONG left = floored(glyph.horiBearingX);
    const LONG right = ceiled(glyph.horiBearingX + glyph.width);
    const LONG top = std::min(ceiled(glyph.horiBearingY), font.size(font.design->ascent));
    const LONG bottom =
        std::max(floored(glyph.horiBearingY - glyph.height), -font.size(font.design->descent));
    GLYPHMETRICS metrics = {};
    metrics.gmBlackBoxX = static_cast<UINT>(std::max<LONG>(right - left, 1));
    metrics.gmBlackBoxY = static_cast<UINT>(std::max<LONG>(top - bottom, 1));
    metrics.gmptGlyphOrigin = {left, top};
    metrics.gmCellIncX = static_cast<SHORT>((glyph.horiAdvance + 32) >> 6);
    return metrics;
}

/// Calls the callback with the records of a face. A usable face whose file cannot be read is
/// skipped. \return the callback's result, or \p before when it was not called
int Deliver(const CatalogFace& face, UINT codePage, FONTENUMPROCA callback, LPARAM data, int before)
{
    std::shared_ptr<const DesignMetrics> design;
    if (face.usable)
    {
        design = DesignOf(face.installed);
        if (!design)
        {
            return before;
        }
    }
    const FaceRecords records = RecordsOf(face, design.get(), codePage);
    return callback(reinterpret_cast<const LOGFONTA*>(&records.logFont),
                    reinterpret_cast<const TEXTMETRICA*>(&records.metrics), records.type, data);
}

}  // namespace

HFONT MakeFontOfFace(const std::shared_ptr<const InstalledFace>& face, LONG height)
{
    const std::shared_ptr<const DesignMetrics> design = DesignOf(face);
    const UINT outlines = GetProcessOutlines();
    if (!design || (face->kind == OutlineKind::Cubic && outlines == OUTLINES_AS_IS))
    {
        return nullptr;
    }
    FoundFont found;
    found.catalog = std::make_shared<const FontCatalog>(
        std::vector<std::shared_ptr<const InstalledFace>>(), GetACP(), outlines);
    auto only = std::make_shared<CatalogFace>();
    only->installed = face;
    only->usable = true;
    only->family = only->faceName = face->family;
    only->style = face->style;
    only->full = face->full;
    found.face = std::move(only);
    found.named = true;
    found.design = design;
    found.size = SizeForHeight(height, *design);
    return static_cast<HFONT>(AddHandle(std::make_shared<Font>(std::move(found))));
}

}  // namespace posix

HFONT CreateFontIndirectA(const LOGFONTA* description)
{
    if (description == nullptr)
    {
        return nullptr;
    }
    return static_cast<HFONT>(posix::AddHandle(std::make_shared<posix::Font>(*description)));
}

int EnumFontFamiliesA(HDC, LPCSTR family, FONTENUMPROCA callback, LPARAM data)
{
    if (callback == nullptr)
    {
        return 0;
    }
    const std::shared_ptr<const posix::FontCatalog> catalog =
        family != nullptr ? posix::CurrentCatalog() : posix::FreshCatalog();
    std::vector<const posix::CatalogFace*> faces;
    if (family != nullptr)
    {
        faces = catalog->StylesOf(family);
    }
    else
    {
        for (const posix::CatalogFamily& installed : catalog->Families())
        {
            faces.push_back(installed.regular);
        }
    }
    int result = 1;
    for (const posix::CatalogFace* face : faces)
    {
        result = posix::Deliver(*face, catalog->CodePage(), callback, data, result);
        if (result == 0)
        {
            break;
        }
    }
    return result;
}

UINT GetOutlineTextMetricsA(HDC dc, UINT size, OUTLINETEXTMETRICA* metrics)
{
    const posix::FoundFont font = posix::SelectedFont(dc);
    if (font.face == nullptr)
    {
        return 0;
    }
    const std::vector<BYTE> record =
        posix::OutlineRecord(*font.face, *font.design, font.size, font.catalog->CodePage());
    const UINT whole = static_cast<UINT>(record.size());
    if (metrics == nullptr)
    {
        return whole;
    }
    const UINT filled = std::min(size, whole);
    std::memcpy(static_cast<void*>(metrics), record.data(), filled);
    return filled;
}

DWORD GetGlyphOutlineA(HDC dc, UINT character, UINT format, GLYPHMETRICS* metrics, DWORD size,
                       LPVOID buffer, const MAT2* matrix)
{
    const bool isIndex = (format & GGO_GLYPH_INDEX) != 0;
    format &= ~GGO_GLYPH_INDEX;
    if ((format != GGO_NATIVE && format != GGO_METRICS) || metrics == nullptr ||
        matrix == nullptr || !posix::IsIdentity(*matrix))
    {
        return GDI_ERROR;
    }
    const posix::FoundFont font = posix::SelectedFont(dc);
    if (font.face == nullptr)
    {
        return GDI_ERROR;
    }
    DWORD result = GDI_ERROR;
    const auto use = [&](const posix::GlyphOutline& glyph) {
        *metrics = posix::BoxOf(glyph.metrics, font);
        const auto whole = static_cast<DWORD>(glyph.polygons.size());
        if (format == GGO_METRICS || whole == 0)
        {
            result = 0;
        }
        else if (size == 0 || buffer == nullptr)
        {
            result = whole;
        }
        else if (size >= whole)
        {
            std::memcpy(buffer, glyph.polygons.data(), whole);
            result = whole;
        }
    };
    if (isIndex)
    {
        posix::UseGlyphOfIndex(font.face->installed, font.size.pixelsPerEm, character,
                               font.catalog->Outlines(), use);
        return result;
    }
    const auto code = static_cast<BYTE>(character);
    posix::UseGlyph(font.face->installed, font.size.pixelsPerEm,
                    posix::CharacterOf(code, font.catalog->CodePage()), code,
                    font.catalog->Outlines(), use);
    return result;
}

DWORD GetGlyphIndicesA(HDC dc, LPCSTR text, int count, WORD* indices, DWORD flags)
{
    const posix::FoundFont font = posix::SelectedFont(dc);
    if (font.face == nullptr || text == nullptr || indices == nullptr || count < 0)
    {
        return GDI_ERROR;
    }
    const WORD missing = (flags & GGI_MARK_NONEXISTING_GLYPHS) != 0 ? 0xFFFF : 0;
    for (int i = 0; i < count; ++i)
    {
        const auto code = static_cast<BYTE>(text[i]);
        const WORD index = posix::GlyphIndexOf(
            font.face->installed, posix::CharacterOf(code, font.catalog->CodePage()), code);
        indices[i] = index != 0 ? index : missing;
    }
    return static_cast<DWORD>(count);
}

BOOL SetProcessOutlines(UINT outlines)
{
    if (outlines != OUTLINES_AS_IS && outlines != OUTLINES_REPAIRED)
    {
        return FALSE;
    }
    posix::processOutlines = outlines;
    return TRUE;
}

UINT GetProcessOutlines()
{
    return posix::processOutlines;
}

void ReloadFonts()
{
    posix::ForgetCatalog();
}

BOOL CheckFontOutlines(HDC dc, OUTLINECHECK* check)
{
    const posix::FoundFont font = posix::SelectedFont(dc);
    if (font.face == nullptr || check == nullptr)
    {
        return FALSE;
    }
    *check = {};
    check->glyphs = posix::GlyphCountOf(font.face->installed);
    for (UINT index = 0; index < check->glyphs; ++index)
    {
        posix::InspectGlyph(font.face->installed, index,
                            [check](const orvane::contours::NativeOutline&,
                                    const orvane::contours::ProvidedOutline& glyph) {
                                check->repaired += glyph.isRepaired ? 1 : 0;
                                check->turned += glyph.isTurned ? 1 : 0;
                                check->converted += glyph.isConverted ? 1 : 0;
                                check->unrepaired += glyph.isFailed ? 1 : 0;
                            });
    }
    return TRUE;
}
