// SPDX-License-Identifier: MIT
#include "solids/ProfileTextSolids.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

namespace orvane
{

bool ProfileTextSettings::operator==(const ProfileTextSettings& other) const
{
    return font == other.font && fusion == other.fusion && solid == other.solid &&
           std::memcmp(&fontRecord, &other.fontRecord, sizeof fontRecord) == 0;
}

bool ProfileTextSolids::AreOf(const ProfileTextSettings& settings,
                              const std::vector<PlacedLetter>& letters) const
{
    const auto isSame = [](const PlacedLetter& a, const PlacedLetter& b) {
        return a.character == b.character && a.line == b.line && a.glyphIndex == b.glyphIndex &&
               a.x == b.x && a.y == b.y;
    };
    return settings == settings_ &&
           std::equal(letters.begin(), letters.end(), letters_.begin(), letters_.end(), isSame);
}

PlaneRegion ProfileTextSolids::RegionOfGlyph(int glyphIndex) const
{
    PlaneRegion region = regionOfLetter_(glyphIndex);
    ScaleRegion(region, settings_.solid);
    return region;
}

const BuiltSolid* ProfileTextSolids::Known(int number) const
{
    const auto known = solids_.find(number);
    return known != solids_.end() ? &known->second : nullptr;
}

const BuiltSolid& ProfileTextSolids::Of(int number)
{
    const auto known = solids_.find(number);
    // When there is too little memory for a new solid, none is kept, and the next call tries again.
    return known != solids_.end() ? known->second
                                  : solids_.emplace(number, Build(number)).first->second;
}

const SolidLines& ProfileTextSolids::LinesOf(int number)
{
    const auto known = lines_.find(number);
    return known != lines_.end()
               ? known->second
               : lines_.emplace(number, orvane::LinesOf(Of(number).surface, settings_.solid))
                     .first->second;
}

BuiltSolid ProfileTextSolids::Build(int number)
{
    if (settings_.fusion == LetterFusion::Separate)
    {
        PlaneRegion region = RegionOfGlyph(number);
        return SolidBudget().Build(
            StepsOfSolid(region), RingsOf(settings_.solid.profile),
            [&region] { return std::move(region); }, settings_.solid);
    }
    std::span<const PlacedLetter> letters = letters_;
    if (settings_.fusion == LetterFusion::Line)
    {
        const auto isBefore = [](const PlacedLetter& letter, int line) {
            return letter.line < line;
        };
        const auto first = std::lower_bound(letters.begin(), letters.end(), number, isBefore);
        letters = {first, std::lower_bound(first, letters.end(), number + 1, isBefore)};
    }
    return joiner_.Join(letters, [this](int glyphIndex) { return RegionOfGlyph(glyphIndex); });
}

}  // namespace orvane
