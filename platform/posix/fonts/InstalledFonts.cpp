// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/InstalledFonts.h"

#include <fontconfig/fontconfig.h>

#include <cmath>
#include <mutex>

namespace posix
{
namespace
{

/// The font configuration in use. It is freed when the process ends: its parts refer to each other
/// by offsets, which a leak checker does not recognise as pointers.
class Configuration
{
public:
    void Load() { Hold(FcInitLoadConfigAndFonts()); }
    void Drop() { Hold(nullptr); }

    /// Returns the configuration, shared so that it stays valid when another thread reloads. Null
    /// when there is no configuration, for example while the process ends.
    std::shared_ptr<FcConfig> Get()
    {
        const std::lock_guard lock(mutex_);
        return config_;
    }

private:
    void Hold(FcConfig* config)
    {
        std::shared_ptr<FcConfig> held;
        if (config != nullptr)
        {
            held.reset(config, FcConfigDestroy);
        }
        const std::lock_guard lock(mutex_);
        config_.swap(held);
    }

    std::mutex mutex_;
    std::shared_ptr<FcConfig> config_;
};

Configuration& TheConfiguration()
{
    // This object is emptied at the end but never destroyed, because static objects may look for
    // fonts while the process ends.
    static auto* const configuration = new Configuration;
    static const struct AtExit
    {
        ~AtExit() { configuration->Drop(); }
    } atExit;
    return *configuration;
}

std::string Text(const FcPattern* pattern, const char* object, int n = 0)
{
    FcChar8* value = nullptr;
    return FcPatternGetString(pattern, object, n, &value) == FcResultMatch
               ? reinterpret_cast<const char*>(value)
               : "";
}

/// The last English value of a name or, without one, the last value. fontconfig lists typographic
/// families and styles first and the plain names last; the plain names are wanted here.
std::string LastName(const FcPattern* pattern, const char* object, const char* language)
{
    std::string last;
    std::string lastEnglish;
    FcChar8* value = nullptr;
    for (int n = 0; FcPatternGetString(pattern, object, n, &value) == FcResultMatch; ++n)
    {
        last = reinterpret_cast<const char*>(value);
        if (Text(pattern, language, n).starts_with("en"))
        {
            lastEnglish = last;
        }
    }
    return lastEnglish.empty() ? last : lastEnglish;
}

double Number(const FcPattern* pattern, const char* object, double otherwise)
{
    double value = otherwise;
    FcPatternGetDouble(pattern, object, 0, &value);
    return value;
}

int Whole(const FcPattern* pattern, const char* object, int otherwise)
{
    int value = otherwise;
    FcPatternGetInteger(pattern, object, 0, &value);
    return value;
}

OutlineKind KindOf(const FcPattern* pattern)
{
    FcBool outline = FcFalse;
    FcPatternGetBool(pattern, FC_OUTLINE, 0, &outline);
    if (!outline)
    {
        return OutlineKind::Bitmap;
    }
    const std::string format = Text(pattern, FC_FONTFORMAT);
    return format == "TrueType" ? OutlineKind::TrueType
           : format == "CFF"    ? OutlineKind::Cubic
                                : OutlineKind::Other;
}

std::shared_ptr<const InstalledFace> Describe(const FcPattern* pattern)
{
    const int index = Whole(pattern, FC_INDEX, 0);
    // For a variable font fontconfig has an additional pattern that stands for all of its
    // instances.
    FcBool variable = FcFalse;
    FcPatternGetBool(pattern, FC_VARIABLE, 0, &variable);
    if (variable)
    {
        return nullptr;
    }
    auto face = std::make_shared<InstalledFace>();
    face->file = Text(pattern, FC_FILE);
    face->index = index;
    face->family = LastName(pattern, FC_FAMILY, FC_FAMILYLANG);
    face->style = LastName(pattern, FC_STYLE, FC_STYLELANG);
    face->full = LastName(pattern, FC_FULLNAME, FC_FULLNAMELANG);
    face->postScript = Text(pattern, FC_POSTSCRIPT_NAME);
    if (face->file.empty() || face->family.empty())
    {
        return nullptr;
    }
    if (face->full.empty())
    {
        face->full = face->style.empty() ? face->family : face->family + ' ' + face->style;
    }
    else if (index >> 16 != 0 && !face->full.ends_with(face->style))
    {
        // The full name is that of the whole font, the same for all of its named instances.
        face->full = face->family + ' ' + face->style;
    }
    const double weight = Number(pattern, FC_WEIGHT, FC_WEIGHT_NORMAL);
    face->weight = static_cast<int>(std::lround(FcWeightToOpenTypeDouble(weight)));
    face->width = static_cast<int>(std::lround(Number(pattern, FC_WIDTH, FC_WIDTH_NORMAL)));
    face->italic = Whole(pattern, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
    face->monospaced = Whole(pattern, FC_SPACING, FC_PROPORTIONAL) >= FC_MONO;
    face->kind = KindOf(pattern);
    return face;
}

}  // namespace

std::vector<std::shared_ptr<const InstalledFace>> ListInstalledFaces()
{
    TheConfiguration().Load();
    std::vector<std::shared_ptr<const InstalledFace>> faces;
    const std::shared_ptr<FcConfig> config = TheConfiguration().Get();
    if (!config)
    {
        return faces;
    }
    for (const FcSetName name : {FcSetSystem, FcSetApplication})
    {
        const FcFontSet* const fonts = FcConfigGetFonts(config.get(), name);
        for (int n = 0; fonts != nullptr && n < fonts->nfont; ++n)
        {
            if (auto face = Describe(fonts->fonts[n]))
            {
                faces.push_back(std::move(face));
            }
        }
    }
    return faces;
}

bool InstalledFacesChanged()
{
    const std::shared_ptr<FcConfig> config = TheConfiguration().Get();
    return config && !FcConfigUptoDate(config.get());
}

std::vector<std::pair<std::string, int>> SubstitutesFor(std::string_view family, int weight,
                                                        bool italic)
{
    std::vector<std::pair<std::string, int>> substitutes;
    const std::shared_ptr<FcConfig> config = TheConfiguration().Get();
    if (!config)
    {
        return substitutes;
    }
    FcPattern* const pattern = FcPatternCreate();
    if (!family.empty())
    {
        const std::string name(family);
        FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
    }
    FcPatternAddDouble(pattern, FC_WEIGHT, FcWeightFromOpenTypeDouble(weight));
    FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcConfigSubstitute(config.get(), pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultMatch;
    FcFontSet* const sorted = FcFontSort(config.get(), pattern, FcFalse, nullptr, &result);
    for (int n = 0; sorted != nullptr && n < sorted->nfont; ++n)
    {
        substitutes.emplace_back(Text(sorted->fonts[n], FC_FILE),
                                 Whole(sorted->fonts[n], FC_INDEX, 0));
    }
    if (sorted != nullptr)
    {
        FcFontSetDestroy(sorted);
    }
    FcPatternDestroy(pattern);
    return substitutes;
}

}  // namespace posix
