// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/InstalledFonts.h"

#include "platform/posix/fonts/FontConfiguration.h"

#include <cmath>

namespace posix
{
namespace
{

OutlineKind KindOf(const FcPattern* pattern)
{
    if (!PatternFlag(pattern, FC_OUTLINE))
    {
        return OutlineKind::Bitmap;
    }
    const std::string format = PatternText(pattern, FC_FONTFORMAT);
    return format == "TrueType" ? OutlineKind::TrueType
           : format == "CFF"    ? OutlineKind::Cubic
                                : OutlineKind::Other;
}

std::shared_ptr<const InstalledFace> Describe(const FcPattern* pattern)
{
    const int index = PatternInteger(pattern, FC_INDEX, 0);
    // For a variable font fontconfig has an additional pattern that stands for all of its
    // instances.
    if (PatternFlag(pattern, FC_VARIABLE))
    {
        return nullptr;
    }
    auto face = std::make_shared<InstalledFace>();
    face->file = PatternText(pattern, FC_FILE);
    face->index = index;
    face->family = LastPatternName(pattern, FC_FAMILY, FC_FAMILYLANG);
    face->style = LastPatternName(pattern, FC_STYLE, FC_STYLELANG);
    face->full = LastPatternName(pattern, FC_FULLNAME, FC_FULLNAMELANG);
    face->postScript = PatternText(pattern, FC_POSTSCRIPT_NAME);
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
    const double weight = PatternNumber(pattern, FC_WEIGHT, FC_WEIGHT_NORMAL);
    face->weight = static_cast<int>(std::lround(FcWeightToOpenTypeDouble(weight)));
    face->width = static_cast<int>(std::lround(PatternNumber(pattern, FC_WIDTH, FC_WIDTH_NORMAL)));
    face->italic = PatternInteger(pattern, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
    face->monospaced = PatternInteger(pattern, FC_SPACING, FC_PROPORTIONAL) >= FC_MONO;
    face->kind = KindOf(pattern);
    return face;
}

}  // namespace

std::vector<std::shared_ptr<const InstalledFace>> ListInstalledFaces()
{
    TheFontConfiguration().Load();
    std::vector<std::shared_ptr<const InstalledFace>> faces;
    const std::shared_ptr<FcConfig> config = TheFontConfiguration().Get();
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
    const std::shared_ptr<FcConfig> config = TheFontConfiguration().Get();
    return config && !FcConfigUptoDate(config.get());
}

std::vector<std::pair<std::string, int>> SubstitutesFor(std::string_view family, int weight,
                                                        bool italic)
{
    std::vector<std::pair<std::string, int>> substitutes;
    const std::shared_ptr<FcConfig> config = TheFontConfiguration().Get();
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
        substitutes.emplace_back(PatternText(sorted->fonts[n], FC_FILE),
                                 PatternInteger(sorted->fonts[n], FC_INDEX, 0));
    }
    if (sorted != nullptr)
    {
        FcFontSetDestroy(sorted);
    }
    FcPatternDestroy(pattern);
    return substitutes;
}

}  // namespace posix
