// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/FontFace.h"

#include "platform/Limits.h"
#include "platform/posix/TextConversion.h"
#include "platform/posix/fonts/FontTables.h"
#include "platform/posix/fonts/GlyphPolygons.h"
#include "platform/posix/fonts/MappedFontFile.h"
#include "platform/posix/fonts/OutlineTracer.h"

#include <algorithm>
#include <cmath>
#include <list>
#include <mutex>
#include <new>
#include <optional>
#include <system_error>
#include <vector>
#include FT_MODULE_H
#include FT_MULTIPLE_MASTERS_H
#include FT_SFNT_NAMES_H
#include FT_SIZES_H
#include FT_TRUETYPE_TABLES_H
#include FT_TRUETYPE_TAGS_H

namespace posix
{

using orvane::contours::FaceOutlines;
using orvane::contours::NativeOutline;
using orvane::contours::ProvidedOutline;
using orvane::contours::ProvideOutline;
using orvane::contours::Scaled;

namespace
{

/// Symbol fonts map the code of a character plus this number.
constexpr FT_ULong symbolCodes = 0xF000;

/// The number of faces that are kept open, each with its file mapped into memory.
constexpr std::size_t openFaces = 16;

/// The number of sizes that are kept for each open face. Making a size runs the font's preparation
/// program.
constexpr std::size_t sizesPerFace = 4;

/// Guards everything of FreeType and all open faces. Never destroyed, because static objects may
/// use fonts while the process ends.
std::mutex& FreeTypeMutex()
{
    static auto* const mutex = new std::mutex;
    return *mutex;
}

/// Whether a call of FreeType failed. Throws std::bad_alloc when it failed because there is too
/// little memory, which says nothing about the font: the same call may succeed later.
bool Failed(FT_Error error)
{
    if (FT_ERROR_BASE(error) == FT_Err_Out_Of_Memory)
    {
        throw std::bad_alloc();
    }
    return error != 0;
}

/// FreeType's library object, which is never destroyed either. Null when FreeType cannot be
/// initialised.
FT_Library FreeType()
{
    static const FT_Library library = [] {
        FT_Library made = nullptr;
        if (Failed(FT_Init_FreeType(&made)))
        {
            return FT_Library(nullptr);
        }
        // An environment variable can choose another interpreter, which hints differently.
        FT_UInt version = 40;
        FT_Property_Set(made, "truetype", "interpreter-version", &version);
        return made;
    }();
    return library;
}

/// An opened face, with its latest sizes and its last glyph. Used under FreeTypeMutex only.
class OpenedFace
{
public:
    explicit OpenedFace(std::shared_ptr<const InstalledFace> installed)
        : installed_(std::move(installed)), file_(installed_->file.c_str())
    {
        sizes_.reserve(sizesPerFace);
        if (FreeType() == nullptr || file_.Bytes() == nullptr ||
            Failed(FT_New_Memory_Face(FreeType(), file_.Bytes(), file_.Size(), installed_->index,
                                      &face_)))
        {
            face_ = nullptr;
            return;
        }
        const auto has = [this](FT_ULong table) {
            FT_ULong size = 0;
            return FT_Load_Sfnt_Table(face_, table, 0, nullptr, &size) == 0;
        };
        const bool readable = IsCubic() ? has(TTAG_CFF) || has(TTAG_CFF2) : has(TTAG_glyf);
        if (!FT_IS_SFNT(face_) || !readable)
        {
            FT_Done_Face(face_);
            face_ = nullptr;
            return;
        }
        SetAxes();
        if (face_->charmap == nullptr && FT_Select_Charmap(face_, FT_ENCODING_MS_SYMBOL) != 0 &&
            face_->num_charmaps > 0)
        {
            FT_Set_Charmap(face_, face_->charmaps[0]);
        }
    }

    ~OpenedFace()
    {
        if (face_ != nullptr)
        {
            FT_Done_Face(face_);  // and its sizes with it
        }
    }

    OpenedFace(const OpenedFace&) = delete;
    OpenedFace& operator=(const OpenedFace&) = delete;

    const InstalledFace* Installed() const { return installed_.get(); }
    FT_Face Face() const { return face_; }

    bool IsCubic() const { return installed_->kind == OutlineKind::Cubic; }

    /// Loads a glyph. Null when it cannot be loaded.
    const GlyphOutline* Load(int pixelsPerEm, FT_UInt index, UINT outlines)
    {
        if (face_ == nullptr || (IsCubic() && outlines == OUTLINES_AS_IS))
        {
            return nullptr;
        }
        if (lastPixelsPerEm_ == pixelsPerEm && lastIndex_ == index && lastOutlines_ == outlines)
        {
            return &last_;
        }
        lastPixelsPerEm_ = 0;
        NativeOutline own;
        const ProvidedOutline* provided = nullptr;
        if (outlines == OUTLINES_REPAIRED)
        {
            provided = Provide(index, pixelsPerEm, &own);
            if (provided == nullptr)
            {
                return nullptr;
            }
        }
        if (loadedPixelsPerEm_ != pixelsPerEm || loadedIndex_ != index)
        {
            if (!LoadSlot(index, pixelsPerEm))
            {
                return nullptr;
            }
            own = {};
        }
        const FT_GlyphSlot slot = face_->glyph;
        if (provided != nullptr && provided->outline)
        {
            last_.polygons =
                NativePolygons(Scaled(*provided->outline, pixelsPerEm, DesignPixels()));
        }
        else
        {
            if (own.points.empty())
            {
                own = TraceOutline(slot->outline);
            }
            last_.polygons = NativePolygons(own);
        }
        last_.metrics = slot->metrics;
        lastPixelsPerEm_ = pixelsPerEm;
        lastIndex_ = index;
        lastOutlines_ = outlines;
        return &last_;
    }

    /// Loads the font's own outline of a glyph, at one pixel per design unit. False on failure.
    bool LoadOwn(FT_UInt index, NativeOutline* own)
    {
        if (!LoadSlot(index, DesignPixels()))
        {
            return false;
        }
        *own = IsCubic() ? TraceCubicOutline(face_->glyph->outline)
                         : TraceOutline(face_->glyph->outline);
        return true;
    }

    /// The pixels per em at which one pixel is one design unit.
    int DesignPixels() const
    {
        return std::clamp<int>(face_->units_per_EM, 1, orvane::limits::maxFontHeight);
    }

    /// The index of a character's glyph; 0 when the face lacks the character.
    FT_UInt IndexOf(char32_t character, BYTE code) const
    {
        if (face_ == nullptr || face_->charmap == nullptr)
        {
            return 0;
        }
        if (face_->charmap->encoding == FT_ENCODING_UNICODE)
        {
            return FT_Get_Char_Index(face_, character);
        }
        const FT_UInt symbol = FT_Get_Char_Index(face_, symbolCodes | code);
        return symbol != 0 ? symbol : FT_Get_Char_Index(face_, code);
    }

private:
    /// Moves a variable font to the values of its axes.
    void SetAxes()
    {
        std::vector<FT_Fixed> coordinates;
        for (const orvane::AxisValue& axis : installed_->axes)
        {
            coordinates.push_back(std::lround(axis.value * 0x10000));
        }
        if (!coordinates.empty())
        {
            FT_Set_Var_Design_Coordinates(face_, static_cast<FT_UInt>(coordinates.size()),
                                          coordinates.data());
        }
    }

    /// Returns the outline to hand over for a glyph; null when the glyph cannot be loaded.
    /// \param own receives the font's own outline if it was loaded at \p pixelsPerEm on the way;
    /// otherwise left empty
    const ProvidedOutline* Provide(FT_UInt index, int pixelsPerEm, NativeOutline* own)
    {
        if (!installed_->outlines)
        {
            installed_->outlines = std::make_shared<FaceOutlines>();
        }
        FaceOutlines& outlines = *installed_->outlines;
        if (const ProvidedOutline* const known = outlines.Find(index))
        {
            return known;
        }
        NativeOutline traced;
        if (!LoadOwn(index, &traced))
        {
            return nullptr;
        }
        ProvidedOutline provided = ProvideOutline(traced, IsCubic(), DesignPixels());
        if (pixelsPerEm == DesignPixels())
        {
            *own = std::move(traced);
        }
        return &outlines.Keep(index, std::move(provided));
    }

    bool LoadSlot(FT_UInt index, int pixelsPerEm)
    {
        loadedPixelsPerEm_ = 0;
        constexpr FT_Int32 usual = FT_LOAD_DEFAULT | FT_LOAD_NO_BITMAP | FT_LOAD_NO_AUTOHINT;
        // Cubic outlines are not hinted, because their hints are meant for small sizes.
        const FT_Int32 flags = IsCubic() ? usual | FT_LOAD_NO_HINTING : usual;
        // If the instructions of a glyph are broken, it is loaded without them.
        if (!SelectSize(pixelsPerEm) ||
            (Failed(FT_Load_Glyph(face_, index, flags)) &&
             Failed(FT_Load_Glyph(face_, index, flags | FT_LOAD_NO_HINTING))) ||
            face_->glyph->format != FT_GLYPH_FORMAT_OUTLINE || file_.HasLostBytes())
        {
            return false;
        }
        loadedPixelsPerEm_ = pixelsPerEm;
        loadedIndex_ = index;
        return true;
    }

    struct Size
    {
        int pixelsPerEm;
        FT_Size size;
    };

    bool SelectSize(int pixelsPerEm)
    {
        const auto known = std::find_if(sizes_.begin(), sizes_.end(), [&](const Size& size) {
            return size.pixelsPerEm == pixelsPerEm;
        });
        if (known != sizes_.end())
        {
            return face_->size == known->size || FT_Activate_Size(known->size) == 0;
        }
        FT_Size size = nullptr;
        if (Failed(FT_New_Size(face_, &size)))
        {
            return false;
        }
        const auto pixels = static_cast<FT_UInt>(pixelsPerEm);
        if (FT_Activate_Size(size) != 0 || FT_Set_Pixel_Sizes(face_, pixels, pixels) != 0)
        {
            FT_Done_Size(size);
            return false;
        }
        if (sizes_.size() == sizesPerFace)
        {
            FT_Done_Size(sizes_.front().size);
            sizes_.erase(sizes_.begin());
        }
        sizes_.push_back({pixelsPerEm, size});
        return true;
    }

    std::shared_ptr<const InstalledFace> installed_;
    MappedFontFile file_;  // FreeType reads it as long as the face is open
    FT_Face face_ = nullptr;
    std::vector<Size> sizes_;  // the oldest first
    GlyphOutline last_;
    int lastPixelsPerEm_ = 0;  // 0 when no glyph is kept
    FT_UInt lastIndex_ = 0;
    UINT lastOutlines_ = OUTLINES_AS_IS;
    int loadedPixelsPerEm_ = 0;  // of the glyph in face_->glyph; 0 when there is none
    FT_UInt loadedIndex_ = 0;
};

/// The opened face. A face that is not open is opened, and if too many faces are open, the face
/// whose last use is longest ago is closed. The caller holds FreeTypeMutex.
OpenedFace& Open(const std::shared_ptr<const InstalledFace>& face)
{
    static auto* const opened = new std::list<OpenedFace>;  // the last used first
    const auto known = std::find_if(opened->begin(), opened->end(), [&](const OpenedFace& entry) {
        return entry.Installed() == face.get();
    });
    if (known != opened->end())
    {
        opened->splice(opened->begin(), *opened, known);
        return opened->front();
    }
    if (opened->size() == openFaces)
    {
        opened->pop_back();
    }
    return opened->emplace_front(face);
}

std::string UniqueNameOf(FT_Face face)
{
    UniqueName unique;
    for (FT_UInt n = 0; n < FT_Get_Sfnt_Name_Count(face) && !unique.IsFound(); ++n)
    {
        FT_SfntName name;
        if (FT_Get_Sfnt_Name(face, n, &name) == 0 &&
            UniqueName::Wants(name.platform_id, name.language_id, name.name_id))
        {
            unique.Offer(name.platform_id,
                         {reinterpret_cast<const char*>(name.string), name.string_len});
        }
    }
    return unique.Text();
}

template <typename Table>
const Table* TableOf(FT_Face face, FT_Sfnt_Tag tag)
{
    return static_cast<const Table*>(FT_Get_Sfnt_Table(face, tag));
}

DesignMetrics ReadDesign(FT_Face face)
{
    DesignTables tables;
    tables.unitsPerEm = face->units_per_EM;
    tables.ascent = face->ascender;
    tables.descent = -face->descender;
    tables.widestWidth = face->max_advance_width;
    tables.box = {static_cast<LONG>(face->bbox.xMin), static_cast<LONG>(face->bbox.yMax),
                  static_cast<LONG>(face->bbox.xMax), static_cast<LONG>(face->bbox.yMin)};
    tables.bold = (face->style_flags & FT_STYLE_FLAG_BOLD) != 0;
    tables.fixedPitch = FT_IS_FIXED_WIDTH(face);
    const auto* const os2 = TableOf<TT_OS2>(face, FT_SFNT_OS2);
    tables.os2 = os2 != nullptr && os2->version != 0xFFFF ? os2 : nullptr;
    tables.header = TableOf<TT_HoriHeader>(face, FT_SFNT_HHEA);
    tables.postScript = TableOf<TT_Postscript>(face, FT_SFNT_POST);
    tables.unique = UniqueNameOf(face);
    return DesignFrom(tables);
}

/// The measures of a face. No value when its file is damaged. The caller holds FreeTypeMutex.
std::optional<DesignMetrics> FindDesign(const std::shared_ptr<const InstalledFace>& face)
{
    const auto unlessUnreadable = [](auto read) -> std::optional<DesignMetrics> {
        try
        {
            return read();
        }
        catch (const std::system_error& error)
        {
            // A bad block of the disk under one font must not hide the other fonts.
            if (error.code() == std::errc::io_error)
            {
                return std::nullopt;
            }
            throw;
        }
    };
    // The measures in the tables of a variable font are those of its default instance.
    std::optional<DesignMetrics> design =
        face->axes.empty() ? unlessUnreadable([&face] { return ReadDesignTables(*face); })
                           : std::nullopt;
    if (design)
    {
        return design;
    }
    return unlessUnreadable([&face]() -> std::optional<DesignMetrics> {
        const FT_Face opened = Open(face).Face();
        if (opened == nullptr || opened->units_per_EM == 0)
        {
            return std::nullopt;
        }
        return ReadDesign(opened);
    });
}

}  // namespace

std::shared_ptr<const DesignMetrics> DesignOf(const std::shared_ptr<const InstalledFace>& face)
{
    if (face->kind != OutlineKind::TrueType && face->kind != OutlineKind::Cubic)
    {
        return nullptr;
    }
    const std::lock_guard lock(FreeTypeMutex());
    if (!face->design)
    {
        std::optional<DesignMetrics> design = FindDesign(face);
        if (!design)
        {
            return nullptr;
        }
        // The tables describe the default instance, so the weight of a named instance is taken from
        // fontconfig.
        if (face->index >> 16 != 0)
        {
            design->bold = face->weight >= FW_BOLD;
        }
        face->design = std::make_shared<const DesignMetrics>(*std::move(design));
    }
    return face->design;
}

bool UseGlyph(const std::shared_ptr<const InstalledFace>& face, int pixelsPerEm, char32_t character,
              BYTE code, UINT outlines, const std::function<void(const GlyphOutline&)>& use)
{
    std::unique_lock lock(FreeTypeMutex());
    const FT_UInt index = Open(face).IndexOf(character, code);
    lock.unlock();
    return UseGlyphOfIndex(face, pixelsPerEm, index, outlines, use);
}

bool UseGlyphOfIndex(const std::shared_ptr<const InstalledFace>& face, int pixelsPerEm, UINT index,
                     UINT outlines, const std::function<void(const GlyphOutline&)>& use)
{
    const std::lock_guard lock(FreeTypeMutex());
    const GlyphOutline* const glyph = Open(face).Load(pixelsPerEm, index, outlines);
    if (glyph != nullptr)
    {
        use(*glyph);
    }
    return glyph != nullptr;
}

UINT GlyphCountOf(const std::shared_ptr<const InstalledFace>& face)
{
    const std::lock_guard lock(FreeTypeMutex());
    const FT_Face opened = Open(face).Face();
    return opened != nullptr ? static_cast<UINT>(opened->num_glyphs) : 0;
}

bool InspectGlyph(const std::shared_ptr<const InstalledFace>& face, UINT index,
                  const std::function<void(const NativeOutline&, const ProvidedOutline&)>& show)
{
    const std::lock_guard lock(FreeTypeMutex());
    OpenedFace& opened = Open(face);
    NativeOutline own;
    if (opened.Face() == nullptr || !opened.LoadOwn(index, &own))
    {
        return false;
    }
    show(own, ProvideOutline(own, opened.IsCubic(), opened.DesignPixels()));
    return true;
}

WORD GlyphIndexOf(const std::shared_ptr<const InstalledFace>& face, char32_t character, BYTE code)
{
    const std::lock_guard lock(FreeTypeMutex());
    return static_cast<WORD>(Open(face).IndexOf(character, code));
}

}  // namespace posix
