// SPDX-License-Identifier: MIT
#include "platform/ShapingFace.h"

#include "platform/Limits.h"
#include "platform/posix/fonts/FontHandles.h"
#include "platform/posix/fonts/InstalledFonts.h"
#include "platform/posix/fonts/MappedFontFile.h"
#include "platform/posix/text/FaceProperties.h"

#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <map>
#include <mutex>
#include <stdexcept>
#include <system_error>

namespace orvane
{

struct ShapingFace::Parts
{
    explicit Parts(const FaceFile& wanted) : file(wanted), bytes(wanted.file.c_str()) {}

    FaceFile file;
    posix::MappedFontFile bytes;  // HarfBuzz reads it as long as the face is open
    posix::HbFace face;
    posix::HbFont font;
    std::uint64_t id = 0;
    FaceMetrics metrics;
    std::vector<FaceAxis> axes;
    std::vector<FaceInstance> instances;
    std::vector<AxisValue> settings;
    std::shared_ptr<const posix::InstalledFace> installed;
};

namespace
{

std::uint64_t NextId()
{
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

/// The file as HarfBuzz sees it. The bytes must stay as long as the blob and all that is made of
/// it.
posix::HbBlob BlobOf(const posix::MappedFontFile& bytes)
{
    return posix::HbBlob(hb_blob_create(reinterpret_cast<const char*>(bytes.Bytes()),
                                        static_cast<unsigned>(bytes.Size()),
                                        HB_MEMORY_MODE_READONLY, nullptr, nullptr));
}

bool HasTable(hb_face_t* face, const char (&tag)[5])
{
    const posix::HbBlob table(
        hb_face_reference_table(face, HB_TAG(tag[0], tag[1], tag[2], tag[3])));
    return hb_blob_get_length(table.get()) != 0;
}

/// The name under which a face is remembered while it is open. A file that was replaced has another
/// one.
std::string KeyOf(const FaceFile& file)
{
    struct stat status = {};
    stat(file.file.c_str(), &status);
    std::string key = file.file;
    for (const std::string& part :
         {std::to_string(status.st_dev), std::to_string(status.st_ino),
          std::to_string(status.st_size), std::to_string(status.st_mtim.tv_sec),
          std::to_string(status.st_mtim.tv_nsec), std::to_string(file.index)})
    {
        key += '\0' + part;
    }
    for (const AxisValue& axis : file.axes)
    {
        char value[64];
        std::snprintf(value, sizeof value, "%a", axis.value);
        key += '\0' + axis.tag + '=' + value;
    }
    return key;
}

struct OpenFaces
{
    std::mutex mutex;
    struct Entry
    {
        std::weak_ptr<const ShapingFace> face;
        std::vector<std::string> notices;
    };
    std::map<std::string, Entry> faces;
};

OpenFaces& TheOpenFaces()
{
    // Never destroyed, because static objects may use fonts while the process ends.
    static auto* const faces = new OpenFaces;
    return *faces;
}

/// Turns design units into ems. Dividing is slow, so a multiplication takes its place where it
/// gives the same number.
class EmScale
{
public:
    explicit EmScale(int unitsPerEm)
        : unitsPerEm_(unitsPerEm),
          emsPerUnit_(1.0 / unitsPerEm),
          isPowerOfTwo_((unitsPerEm & (unitsPerEm - 1)) == 0)
    {}

    double operator()(std::int64_t units) const
    {
        const auto number = static_cast<double>(units);
        return isPowerOfTwo_ ? number * emsPerUnit_ : units == 0 ? 0 : number / unitsPerEm_;
    }

private:
    double unitsPerEm_;
    double emsPerUnit_;
    bool isPowerOfTwo_;
};

}  // namespace

ShapingFace::ShapingFace(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

ShapingFace::~ShapingFace() = default;

std::shared_ptr<const ShapingFace> ShapingFace::Open(const FaceFile& file, std::string* problem,
                                                     std::vector<std::string>* notices)
{
    const auto refuse = [problem](const char* why) {
        if (problem != nullptr)
        {
            *problem = why;
        }
        return nullptr;
    };
    OpenFaces& open = TheOpenFaces();
    const std::lock_guard lock(open.mutex);
    const std::string key = KeyOf(file);
    if (const auto known = open.faces.find(key); known != open.faces.end())
    {
        if (std::shared_ptr<const ShapingFace> face = known->second.face.lock())
        {
            if (notices != nullptr)
            {
                notices->insert(notices->end(), known->second.notices.begin(),
                                known->second.notices.end());
            }
            return face;
        }
    }
    std::unique_ptr<Parts> parts;
    try
    {
        parts = std::make_unique<Parts>(file);
    }
    catch (const std::system_error&)
    {
        return refuse("cannot be read");
    }
    if (parts->bytes.Bytes() == nullptr)
    {
        return refuse("cannot be read");
    }
    const posix::HbBlob blob = BlobOf(parts->bytes);
    const unsigned count = hb_face_count(blob.get());
    if (count == 0)
    {
        return refuse("no OpenType font file");
    }
    const unsigned number = static_cast<unsigned>(file.index) & 0xFFFF;
    if (number >= count)
    {
        return refuse("has fewer faces");
    }
    parts->face.reset(hb_face_create(blob.get(), number));
    hb_face_t* const face = parts->face.get();
    if (hb_face_get_glyph_count(face) == 0)
    {
        return refuse("no glyphs");
    }
    const bool isTrueType = HasTable(face, "glyf");
    if (!isTrueType && !HasTable(face, "CFF ") && !HasTable(face, "CFF2"))
    {
        return refuse("no outlines");
    }
    parts->axes = posix::FaceAxes(face);
    parts->instances = posix::FaceInstances(face, parts->axes);
    const int instance = file.index >> 16;
    if (instance > static_cast<int>(parts->instances.size()) || instance < 0)
    {
        return refuse("has fewer named instances");
    }
    std::vector<std::string> told;
    parts->settings =
        posix::AxisSettings(parts->axes, parts->instances, instance, file.axes, &told);
    parts->font.reset(hb_font_create(face));
    hb_font_t* const font = parts->font.get();
    const auto scale = static_cast<int>(hb_face_get_upem(face));
    hb_font_set_scale(font, scale, scale);
    std::vector<float> coordinates;
    for (const AxisValue& setting : parts->settings)
    {
        coordinates.push_back(static_cast<float>(setting.value));
    }
    if (!coordinates.empty())
    {
        hb_font_set_var_coords_design(font, coordinates.data(),
                                      static_cast<unsigned>(coordinates.size()));
    }
    hb_font_make_immutable(font);
    parts->metrics = posix::MeasuresOf(font);
    parts->id = NextId();
    auto installed = std::make_shared<posix::InstalledFace>();
    installed->file = file.file;
    installed->index = static_cast<int>(number);
    installed->axes = parts->settings;
    installed->kind = isTrueType ? posix::OutlineKind::TrueType : posix::OutlineKind::Cubic;
    installed->family = posix::FaceName(face, HB_OT_NAME_ID_FONT_FAMILY);
    installed->style = posix::FaceName(face, HB_OT_NAME_ID_FONT_SUBFAMILY);
    installed->full = posix::FaceName(face, HB_OT_NAME_ID_FULL_NAME);
    installed->postScript = posix::FaceName(face, HB_OT_NAME_ID_POSTSCRIPT_NAME);
    parts->installed = std::move(installed);

    std::shared_ptr<const ShapingFace> opened(new ShapingFace(std::move(parts)));
    std::erase_if(open.faces, [](const auto& entry) { return entry.second.face.expired(); });
    open.faces[key] = {opened, told};
    if (notices != nullptr)
    {
        notices->insert(notices->end(), told.begin(), told.end());
    }
    return opened;
}

int ShapingFace::CountFaces(const std::string& file)
{
    try
    {
        const posix::MappedFontFile bytes(file.c_str());
        return bytes.Bytes() == nullptr ? 0 : static_cast<int>(hb_face_count(BlobOf(bytes).get()));
    }
    catch (const std::system_error&)
    {
        return 0;
    }
}

std::uint64_t ShapingFace::Id() const
{
    return parts_->id;
}

const FaceFile& ShapingFace::File() const
{
    return parts_->file;
}

std::string ShapingFace::FamilyName() const
{
    const std::string name = posix::FaceName(parts_->face.get(), HB_OT_NAME_ID_TYPOGRAPHIC_FAMILY);
    return name.empty() ? parts_->installed->family : name;
}

std::string ShapingFace::StyleName() const
{
    const int instance = parts_->file.index >> 16;
    if (instance > 0)
    {
        return parts_->instances[static_cast<std::size_t>(instance) - 1].name;
    }
    const std::string name =
        posix::FaceName(parts_->face.get(), HB_OT_NAME_ID_TYPOGRAPHIC_SUBFAMILY);
    return name.empty() ? parts_->installed->style : name;
}

std::string ShapingFace::FullName() const
{
    const bool isInstance = parts_->file.index >> 16 > 0;
    return isInstance || parts_->installed->full.empty() ? FamilyName() + ' ' + StyleName()
                                                         : parts_->installed->full;
}

int ShapingFace::Weight() const
{
    const float weight = hb_style_get_value(parts_->font.get(), HB_STYLE_TAG_WEIGHT);
    return std::clamp(static_cast<int>(std::lround(weight)), 1, 1000);
}

bool ShapingFace::IsItalic() const
{
    return hb_style_get_value(parts_->font.get(), HB_STYLE_TAG_ITALIC) != 0 ||
           hb_style_get_value(parts_->font.get(), HB_STYLE_TAG_SLANT_ANGLE) != 0;
}

const FaceMetrics& ShapingFace::Metrics() const
{
    return parts_->metrics;
}

const std::vector<FaceAxis>& ShapingFace::Axes() const
{
    return parts_->axes;
}

const std::vector<FaceInstance>& ShapingFace::Instances() const
{
    return parts_->instances;
}

const std::vector<AxisValue>& ShapingFace::AxisValues() const
{
    return parts_->settings;
}

std::vector<char32_t> ShapingFace::Characters() const
{
    const posix::HbSet characters(hb_set_create());
    hb_face_collect_unicodes(parts_->face.get(), characters.get());
    std::vector<char32_t> list;
    list.reserve(hb_set_get_population(characters.get()));
    for (hb_codepoint_t next = HB_SET_VALUE_INVALID; hb_set_next(characters.get(), &next) != 0;)
    {
        list.push_back(next);
    }
    return list;
}

std::vector<std::string> ShapingFace::Features() const
{
    return posix::FaceFeatures(parts_->face.get());
}

std::optional<GlyphBox> ShapingFace::BoxOf(std::uint32_t glyph) const
{
    hb_glyph_extents_t extents = {};
    if (hb_font_get_glyph_extents(parts_->font.get(), glyph, &extents) == 0 ||
        (extents.width == 0 && extents.height == 0))
    {
        return std::nullopt;
    }
    // HarfBuzz counts the height downward from the top.
    const EmScale ems(parts_->metrics.unitsPerEm);
    const std::int64_t left = extents.x_bearing;
    const std::int64_t top = extents.y_bearing;
    return GlyphBox{ems(left), ems(top + extents.height), ems(left + extents.width), ems(top)};
}

std::uint32_t ShapingFace::GlyphOf(char32_t character) const
{
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(parts_->font.get(), character, &glyph) != 0 ? glyph : 0;
}

bool ShapingFace::Covers(const char32_t* characters, std::size_t count) const
{
    hb_unicode_funcs_t* const unicode = hb_unicode_funcs_get_default();
    // Whether the face has a character or the letters that it is composed of.
    const auto has = [&](hb_codepoint_t character) {
        for (int letters = 0; letters < 8; ++letters)
        {
            hb_codepoint_t base = 0;
            hb_codepoint_t mark = 0;
            if (GlyphOf(character) != 0)
            {
                return true;
            }
            if (hb_unicode_decompose(unicode, character, &base, &mark) == 0 ||
                (mark != 0 && GlyphOf(mark) == 0))
            {
                return false;
            }
            character = base;
        }
        return false;
    };
    // The letter that the marks up to here may form; 0 when they form none.
    hb_codepoint_t composed = 0;
    for (std::size_t n = 0; n < count; ++n)
    {
        hb_codepoint_t together = 0;
        const bool joins = n > 0 && composed != 0 &&
                           hb_unicode_compose(unicode, composed, characters[n], &together) != 0;
        const bool isThere =
            IsIgnorable(characters[n]) || has(characters[n]) || (joins && GlyphOf(together) != 0);
        if (!isThere)
        {
            return false;
        }
        composed = joins ? together : n == 0 ? characters[n] : 0;
    }
    return true;
}

std::vector<ShapedGlyph> ShapingFace::Shape(const ShapingRun& run) const
{
    const posix::HbBuffer buffer(hb_buffer_create());
    const std::size_t first = run.begin - std::min(run.begin, contextSize);
    const std::size_t last = run.end + std::min(run.textSize - run.end, contextSize);
    const std::vector<std::uint32_t> text(run.text + first, run.text + last);
    hb_buffer_add_utf32(buffer.get(), text.data(), static_cast<int>(text.size()),
                        static_cast<unsigned>(run.begin - first),
                        static_cast<int>(run.end - run.begin));
    hb_buffer_set_direction(buffer.get(), run.isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer.get(), hb_script_from_iso15924_tag(run.script));
    if (!run.language.empty())
    {
        hb_buffer_set_language(
            buffer.get(),
            hb_language_from_string(run.language.data(), static_cast<int>(run.language.size())));
    }
    hb_buffer_set_flags(buffer.get(), static_cast<hb_buffer_flags_t>(
                                          (run.begin == 0 ? HB_BUFFER_FLAG_BOT : 0) |
                                          (run.end == run.textSize ? HB_BUFFER_FLAG_EOT : 0)));
    std::vector<hb_feature_t> features;
    features.reserve(run.features.size());
    for (const FontFeature& feature : run.features)
    {
        features.push_back(
            {hb_tag_from_string(feature.tag.data(), static_cast<int>(feature.tag.size())),
             feature.value, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END});
    }
    hb_shape(parts_->font.get(), buffer.get(), features.data(),
             static_cast<unsigned>(features.size()));
    unsigned count = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer.get(), &count);
    // HarfBuzz gives up without memory, or when a font makes 64 glyphs of each character and more.
    if (hb_buffer_allocation_successful(buffer.get()) == 0 ||
        count > limits::MaxGlyphs(run.end - run.begin))
    {
        throw std::length_error("too many glyphs");
    }
    const hb_glyph_position_t* const places = hb_buffer_get_glyph_positions(buffer.get(), nullptr);
    const EmScale ems(parts_->metrics.unitsPerEm);
    std::vector<ShapedGlyph> glyphs(count);
    for (unsigned n = 0; n < count; ++n)
    {
        ShapedGlyph& glyph = glyphs[n];
        glyph.glyph = infos[n].codepoint;
        glyph.cluster = infos[n].cluster + static_cast<std::uint32_t>(first);
        glyph.advance = ems(places[n].x_advance);
        glyph.x = ems(places[n].x_offset);
        glyph.y = ems(places[n].y_offset);
        glyph.isSafeToBreak =
            (hb_glyph_info_get_glyph_flags(&infos[n]) & HB_GLYPH_FLAG_UNSAFE_TO_BREAK) == 0;
    }
    return glyphs;
}

std::vector<ColorLayer> ShapingFace::ColorLayers(std::uint32_t glyph) const
{
    return posix::ColorLayersOf(parts_->face.get(), glyph);
}

HFONT ShapingFace::MakeFont(LONG height) const
{
    return posix::MakeFontOfFace(parts_->installed, height);
}

}  // namespace orvane
