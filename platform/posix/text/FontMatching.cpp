// SPDX-License-Identifier: MIT
#include "platform/FontMatching.h"

#include "platform/posix/fonts/FontCatalog.h"
#include "platform/posix/fonts/FontConfiguration.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <list>
#include <mutex>
#include <tuple>

namespace orvane
{
namespace
{

using posix::PatternFlag;
using posix::PatternInteger;
using posix::PatternNumber;
using posix::PatternText;

struct PatternEnd
{
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, PatternEnd>;

struct FontSetEnd
{
    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
};
using FontSet = std::unique_ptr<FcFontSet, FontSetEnd>;

struct ObjectSetEnd
{
    void operator()(FcObjectSet* objects) const { FcObjectSetDestroy(objects); }
};

/// The configuration in use. Null while the process ends.
std::shared_ptr<FcConfig> Configuration()
{
    posix::EnsureFacesAreListed();
    return posix::TheFontConfiguration().Get();
}

const FcChar8* FcText(const std::string& text)
{
    return reinterpret_cast<const FcChar8*>(text.c_str());
}

/// From the least to the largest value of a property, which is a range for variable fonts.
struct Range
{
    double least;
    double most;

    bool IsRange() const { return least < most; }
    double Nearest(double value) const { return std::max(least, std::min(value, most)); }
};

Range PatternRange(const FcPattern* pattern, const char* object, double otherwise)
{
    FcRange* range = nullptr;
    Range values = {otherwise, otherwise};
    if (FcPatternGetRange(pattern, object, 0, &range) == FcResultMatch)
    {
        FcRangeGetDouble(range, &values.least, &values.most);
        return values;
    }
    values.least = values.most = PatternNumber(pattern, object, otherwise);
    return values;
}

Range WeightsOf(const FcPattern* pattern)
{
    const Range weights = PatternRange(pattern, FC_WEIGHT, FC_WEIGHT_NORMAL);
    return {FcWeightToOpenTypeDouble(weights.least), FcWeightToOpenTypeDouble(weights.most)};
}

bool IsItalic(const FcPattern* pattern)
{
    return PatternInteger(pattern, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
}

/// Whether a face has outlines that can be handed over.
bool IsUsable(const FcPattern* pattern)
{
    const std::string format = PatternText(pattern, FC_FONTFORMAT);
    return PatternFlag(pattern, FC_OUTLINE) && (format == "TrueType" || format == "CFF") &&
           !PatternText(pattern, FC_FILE).empty();
}

/// The face of a pattern. A variable font is moved as near to the looks as it can be.
InstalledFont Describe(const FcPattern* pattern, const FontLooks& looks)
{
    InstalledFont font;
    font.file.file = PatternText(pattern, FC_FILE);
    font.file.index = PatternInteger(pattern, FC_INDEX, 0);
    const Range weights = WeightsOf(pattern);
    const Range widths = PatternRange(pattern, FC_WIDTH, FC_WIDTH_NORMAL);
    font.looks = {static_cast<int>(std::lround(weights.Nearest(looks.weight))),
                  widths.Nearest(looks.width), IsItalic(pattern)};
    if (PatternFlag(pattern, FC_VARIABLE))
    {
        font.file.index &= 0xFFFF;
        if (weights.IsRange())
        {
            font.file.axes.push_back({"wght", static_cast<double>(font.looks.weight)});
        }
        if (widths.IsRange())
        {
            font.file.axes.push_back({"wdth", font.looks.width});
        }
    }
    // The first names are those of the whole family, not of its groups of four.
    font.family = PatternText(pattern, FC_FAMILY);
    font.style = PatternText(pattern, FC_STYLE);
    font.fullName = posix::LastPatternName(pattern, FC_FULLNAME, FC_FULLNAMELANG);
    if (font.fullName.empty())
    {
        font.fullName = font.family + ' ' + font.style;
    }
    return font;
}

/// How far a face is from the looks: the slant counts most, then the width, then the weight.
std::tuple<bool, double, double> Distance(const FcPattern* pattern, const FontLooks& looks)
{
    const double width = PatternRange(pattern, FC_WIDTH, FC_WIDTH_NORMAL).Nearest(looks.width);
    return {IsItalic(pattern) != looks.isItalic, std::abs(width - looks.width),
            std::abs(WeightsOf(pattern).Nearest(looks.weight) - looks.weight)};
}

/// The installed faces of which a property has a value.
FontSet ListFonts(FcConfig* config, const char* object, std::string_view value)
{
    const Pattern pattern(FcPatternCreate());
    if (object != nullptr)
    {
        FcPatternAddString(pattern.get(), object, FcText(std::string(value)));
    }
    const std::unique_ptr<FcObjectSet, ObjectSetEnd> objects(FcObjectSetBuild(
        FC_FAMILY, FC_FAMILYLANG, FC_STYLE, FC_STYLELANG, FC_FULLNAME, FC_FULLNAMELANG, FC_WEIGHT,
        FC_WIDTH, FC_SLANT, FC_FILE, FC_INDEX, FC_VARIABLE, FC_OUTLINE, FC_FONTFORMAT, nullptr));
    return FontSet(FcFontList(config, pattern.get(), objects.get()));
}

/// The face of a list that is nearest to the looks. Of equally near ones it is the one whose file
/// and number come first, so that every run chooses the same.
std::optional<InstalledFont> NearestOf(const FontSet& fonts, const FontLooks& looks)
{
    const auto rankOf = [&looks](const FcPattern* pattern) {
        return std::tuple(Distance(pattern, looks), PatternFlag(pattern, FC_VARIABLE),
                          PatternText(pattern, FC_FILE), PatternInteger(pattern, FC_INDEX, 0));
    };
    const FcPattern* nearest = nullptr;
    for (int n = 0; fonts && n < fonts->nfont; ++n)
    {
        const FcPattern* const pattern = fonts->fonts[n];
        if (IsUsable(pattern) && (nearest == nullptr || rankOf(pattern) < rankOf(nearest)))
        {
            nearest = pattern;
        }
    }
    if (nearest == nullptr)
    {
        return std::nullopt;
    }
    return Describe(nearest, looks);
}

/// The installed faces in the order in which the configuration prefers them.
struct PreferredFonts
{
    std::shared_ptr<FcConfig> config;
    std::string language;
    FontLooks looks;
    FontSet fonts;

    bool Fits(const std::shared_ptr<FcConfig>& current, const std::string& wanted,
              const FontLooks& wantedLooks) const
    {
        return config == current && language == wanted && looks.weight == wantedLooks.weight &&
               looks.width == wantedLooks.width && looks.isItalic == wantedLooks.isItalic;
    }
};

FontSet SortFonts(FcConfig* config, const std::string& language, const FontLooks& looks)
{
    const Pattern pattern(FcPatternCreate());
    if (!language.empty())
    {
        FcPatternAddString(pattern.get(), FC_LANG, FcText(language));
    }
    FcPatternAddDouble(pattern.get(), FC_WEIGHT, FcWeightFromOpenTypeDouble(looks.weight));
    FcPatternAddDouble(pattern.get(), FC_WIDTH, looks.width);
    FcPatternAddInteger(pattern.get(), FC_SLANT, looks.isItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultMatch;
    return FontSet(FcFontSort(config, pattern.get(), FcFalse, nullptr, &result));
}

/// Sorting all fonts takes milliseconds, so the latest orders are kept.
struct KeptOrders
{
    std::mutex mutex;
    std::list<PreferredFonts> fonts;  // the last used first
};
constexpr std::size_t mostOrders = 16;

KeptOrders& TheOrders()
{
    // Emptied at the end but never destroyed, as the font configuration.
    static auto* const orders = new KeptOrders;
    static const struct AtExit
    {
        ~AtExit()
        {
            const std::lock_guard lock(orders->mutex);
            orders->fonts.clear();
        }
    } atExit;
    return *orders;
}

}  // namespace

std::optional<InstalledFont> FindFontOfFamily(std::string_view family, const FontLooks& looks)
{
    const std::shared_ptr<FcConfig> config = Configuration();
    if (!config || family.empty())
    {
        return std::nullopt;
    }
    return NearestOf(ListFonts(config.get(), FC_FAMILY, family), looks);
}

std::optional<InstalledFont> FindFontByFullName(std::string_view name)
{
    const std::shared_ptr<FcConfig> config = Configuration();
    if (!config || name.empty())
    {
        return std::nullopt;
    }
    for (const char* object : {FC_FULLNAME, FC_POSTSCRIPT_NAME})
    {
        if (std::optional<InstalledFont> font =
                NearestOf(ListFonts(config.get(), object, name), FontLooks()))
        {
            return font;
        }
    }
    return std::nullopt;
}

std::optional<InstalledFont> FindFontByPattern(std::string_view pattern)
{
    const std::shared_ptr<FcConfig> config = Configuration();
    const Pattern wanted(config ? FcNameParse(FcText(std::string(pattern))) : nullptr);
    if (!wanted)
    {
        return std::nullopt;
    }
    FontLooks looks;
    looks.weight = static_cast<int>(std::lround(
        FcWeightToOpenTypeDouble(PatternNumber(wanted.get(), FC_WEIGHT, FC_WEIGHT_NORMAL))));
    looks.width = PatternNumber(wanted.get(), FC_WIDTH, FC_WIDTH_NORMAL);
    FcConfigSubstitute(config.get(), wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultMatch;
    const FontSet sorted(FcFontSort(config.get(), wanted.get(), FcFalse, nullptr, &result));
    for (int n = 0; sorted && n < sorted->nfont; ++n)
    {
        if (IsUsable(sorted->fonts[n]))
        {
            return Describe(sorted->fonts[n], looks);
        }
    }
    return std::nullopt;
}

std::vector<InstalledFont> FindFallbackFonts(char32_t character, const std::string& language,
                                             const FontLooks& looks, std::size_t count)
{
    std::vector<InstalledFont> found;
    const std::shared_ptr<FcConfig> config = Configuration();
    if (!config)
    {
        return found;
    }
    KeptOrders& orders = TheOrders();
    const std::lock_guard lock(orders.mutex);
    std::list<PreferredFonts>& kept = orders.fonts;
    kept.remove_if([&](const PreferredFonts& entry) { return entry.config != config; });
    const auto known = std::find_if(kept.begin(), kept.end(), [&](const PreferredFonts& entry) {
        return entry.Fits(config, language, looks);
    });
    if (known != kept.end())
    {
        kept.splice(kept.begin(), kept, known);
    }
    else
    {
        kept.push_front({config, language, looks, SortFonts(config.get(), language, looks)});
        kept.resize(std::min(kept.size(), mostOrders));
    }
    const FontSet& fonts = kept.front().fonts;
    for (int n = 0; fonts && n < fonts->nfont && found.size() < count; ++n)
    {
        FcCharSet* characters = nullptr;
        if (IsUsable(fonts->fonts[n]) &&
            FcPatternGetCharSet(fonts->fonts[n], FC_CHARSET, 0, &characters) == FcResultMatch &&
            FcCharSetHasChar(characters, character))
        {
            found.push_back(Describe(fonts->fonts[n], looks));
        }
    }
    return found;
}

std::vector<InstalledFont> InstalledFonts()
{
    std::vector<InstalledFont> installed;
    const std::shared_ptr<FcConfig> config = Configuration();
    const FontSet fonts = config ? ListFonts(config.get(), nullptr, {}) : nullptr;
    for (int n = 0; fonts && n < fonts->nfont; ++n)
    {
        // A variable font is listed once more as a whole.
        if (IsUsable(fonts->fonts[n]) && !PatternFlag(fonts->fonts[n], FC_VARIABLE))
        {
            installed.push_back(Describe(fonts->fonts[n], FontLooks()));
        }
    }
    const auto keyOf = [](const InstalledFont& font) {
        return std::tie(font.family, font.style, font.file.file, font.file.index);
    };
    std::sort(installed.begin(), installed.end(),
              [&](const InstalledFont& a, const InstalledFont& b) { return keyOf(a) < keyOf(b); });
    installed.erase(std::unique(installed.begin(), installed.end(),
                                [&](const InstalledFont& a, const InstalledFont& b) {
                                    return keyOf(a) == keyOf(b);
                                }),
                    installed.end());
    return installed;
}

std::vector<std::string> InstalledFamilies()
{
    std::vector<std::string> families;
    for (InstalledFont& font : InstalledFonts())
    {
        if (families.empty() || families.back() != font.family)
        {
            families.push_back(std::move(font.family));
        }
    }
    return families;
}

}  // namespace orvane
