// SPDX-License-Identifier: MIT
#include "extrude/OrvFont.h"

#include "extrude/FontDC.h"
#include "extrude/OrvGlyph.h"
#include "outline/TTGlyph.h"
#include "platform/Messages.h"
#include "platform/MultibyteCompare.h"

#include <atomic>
#include <cstdio>
#include <vector>

IMPLEMENT_DYNAMIC(OrvFont, CObject)

namespace
{
constexpr LONG windowsFontHeight = 20;  // pixels
constexpr MAT2 identity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};

LOGFONTA AtHeight(LOGFONTA description, LONG height)
{
    description.lfHeight = height;
    description.lfWidth = 0;
    return description;
}

void ReportUnbuiltGlyph(int glyphIndex, int character, const CString& fontName)
{
    char message[512];
    std::snprintf(message, sizeof message,
                  "Glyph Construction Error:  \n\nGlyph Number: %d  \nCharacter Number: %d  \n"
                  "Font Name: %s  ",
                  glyphIndex, character, static_cast<LPCSTR>(fontName));
    MessageBoxA(nullptr, message, "Orvane", MB_OK | MB_ICONEXCLAMATION);
}

// Threads that draw into contexts of their own may share a font. Its slots are therefore read and
// written as atomic values.

/// The glyph in a slot; null while it is not built.
OrvGlyph* GlyphIn(const OrvGlyphArray& glyphs, int index)
{
    // std::atomic_ref takes no constant objects.
    return std::atomic_ref(const_cast<OrvGlyphArray&>(glyphs).ElementAt(index))
        .load(std::memory_order_acquire);
}

/// Puts a glyph into an empty slot. If another thread has filled the slot meanwhile, its glyph
/// stays, and the given one, which is the same, is deleted.
void PutGlyph(OrvGlyphArray& glyphs, int index, std::unique_ptr<OrvGlyph> glyph)
{
    OrvGlyph* inSlot = nullptr;
    if (std::atomic_ref(glyphs.ElementAt(index))
            .compare_exchange_strong(inSlot, glyph.get(), std::memory_order_acq_rel))
    {
        static_cast<void>(glyph.release());
    }
}
}  // namespace

OrvFont::OrvFont() = default;
OrvFont::~OrvFont() = default;

int OrvFont::Create(const ENUMLOGFONTA* record, const NEWTEXTMETRICA* metrics)
{
    if (record == nullptr || metrics == nullptr)
    {
        return 0;
    }
    enumLogFont = *record;
    textMetric = *metrics;

    // At a character height of one em, outlines come in design units.
    const LOGFONTA emHigh =
        AtHeight(enumLogFont.elfLogFont, -static_cast<LONG>(textMetric.ntmSizeEM));
    outlineFont.CreateFontIndirect(&emHigh);
    fullName = FullNameOf(enumLogFont);
    if (!CreateWindowsFont())
    {
        return 0;
    }
    SetGlyphCount();

    OutlineMetricsBuffer read = ReadOutlineMetrics(outlineFont);
    outlineMetricsBytes_ = std::move(read.bytes);
    outlineMetrics = reinterpret_cast<OUTLINETEXTMETRICA*>(outlineMetricsBytes_.get());
    outlineMetricsSize = read.size;
    return outlineMetrics != nullptr;
}

int OrvFont::CreateWindowsFont()
{
    const LOGFONTA small = AtHeight(enumLogFont.elfLogFont, windowsFontHeight);
    return windowsFont.CreateFontIndirect(&small) != FALSE;
}

void OrvFont::SetGlyphCount()
{
    glyphs.RemoveAll();
    glyphCount = textMetric.tmLastChar - textMetric.tmFirstChar + 1;
    glyphs.SetSize(static_cast<WORD>(glyphCount));
}

unsigned long OrvFont::SizeOf() const
{
    unsigned long bytes = sizeof *this + outlineMetricsSize + fullName.GetLength();
    for (int index = 0; index < glyphCount; ++index)
    {
        if (const OrvGlyph* const glyph = ValidGlyph(index))
        {
            bytes += glyph->SizeOf() + glyph->SizeOfPolygons() + glyph->SizeOfVerticies();
        }
    }
    return bytes;
}

int OrvFont::ConstructOrvGlyph(int glyphIndex)
{
    if (glyphIndex < 0 || glyphIndex >= glyphs.GetSize() || GlyphIn(glyphs, glyphIndex) != nullptr)
    {
        return 0;
    }
    const int character = textMetric.tmFirstChar + glyphIndex;
    GLYPHMETRICS metrics = {};
    std::unique_ptr<OrvGlyph> glyph;
    std::vector<BYTE> outline;
    {
        const FontDC dc(outlineFont);
        const DWORD size =
            GetGlyphOutlineA(dc, character, GGO_NATIVE, &metrics, 0, nullptr, &identity);
        if (size == GDI_ERROR)
        {
            ReportUnbuiltGlyph(glyphIndex, character, FullNameOf(enumLogFont));
            glyph = std::make_unique<OrvGlyph>(0, metrics);
            glyph->SetInvalid();
            PutGlyph(glyphs, glyphIndex, std::move(glyph));
            return 1;
        }
        glyph = std::make_unique<OrvGlyph>(size, metrics);
        outline.resize(size);
        GetGlyphOutlineA(dc, character, GGO_NATIVE, &metrics, size, outline.data(), &identity);
    }
    TTGlyph ttGlyph;
    ttGlyph.FromGlyphOutline(outline.data(), static_cast<unsigned long>(outline.size()));
    const int built = glyph->ConstructGlyph(ttGlyph, static_cast<float>(EmSquare()));
    if (built)
    {
        PutGlyph(glyphs, glyphIndex, std::move(glyph));
    }
    return built;
}

int OrvFont::LookupGlyphIndex(unsigned short character) const
{
    const int first = textMetric.tmFirstChar;
    const unsigned short index = static_cast<unsigned short>(character - first);
    // The code one past the last character passes this test too. Its index, glyphCount, is out of
    // range, and every function that takes an index refuses it. That is required; see
    // TheCodeOnePastTheLastIsLookedUpAsTheGlyphCount.
    return index <= glyphCount ? index : textMetric.tmDefaultChar - first;
}

int OrvFont::GetGlyphAdvanceWidth(unsigned short glyphIndex)
{
    if (glyphIndex >= glyphs.GetSize())
    {
        return 0;
    }
    const OrvGlyph* glyph = GlyphIn(glyphs, glyphIndex);
    if (glyph == nullptr)
    {
        ConstructOrvGlyph(glyphIndex);
        glyph = GlyphIn(glyphs, glyphIndex);
    }
    return glyph != nullptr ? glyph->GetAdvanceWidth() : 0;
}

int OrvFont::CompareName(const OrvFont* other) const
{
    return CompareMultibyte(fullName, other->fullName);
}

OrvGlyph* OrvFont::ValidGlyph(int glyphIndex) const
{
    if (glyphIndex < 0 || glyphIndex >= glyphCount || glyphIndex >= glyphs.GetSize())
    {
        return nullptr;
    }
    OrvGlyph* const glyph = GlyphIn(glyphs, glyphIndex);
    return glyph != nullptr && !glyph->IsInvalid() ? glyph : nullptr;
}

UINT OrvFont::EmSquare() const
{
    return outlineMetrics != nullptr ? outlineMetrics->otmEMSquare : 0;
}

double OrvFont::AdvanceInEms(int glyphIndex)
{
    const int advance = GetGlyphAdvanceWidth(static_cast<unsigned short>(glyphIndex));
    const UINT em = EmSquare();
    return em != 0 ? advance / static_cast<double>(em) : 0.0;
}
