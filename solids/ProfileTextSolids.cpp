// SPDX-License-Identifier: MIT
#include "solids/ProfileTextSolids.h"

#include "extrude/OrvGlyph.h"
#include "orvane/Error.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace orvane
{

bool ProfileTextSettings::operator==(const ProfileTextSettings& other) const
{
    return font == other.font && profile == other.profile && sides == other.sides &&
           fusion == other.fusion && smoothAngle == other.smoothAngle && depth == other.depth &&
           scaleX == other.scaleX && scaleY == other.scaleY && stretchX == other.stretchX &&
           stretchY == other.stretchY && stretchZ == other.stretchZ &&
           std::memcmp(&fontRecord, &other.fontRecord, sizeof fontRecord) == 0;
}

ProfileTextSolid::ProfileTextSolid(const ProfileSolid& solid, const ProfileTextSettings& settings)
{
    const double stretch[3] = {settings.stretchX, settings.stretchY, settings.stretchZ};
    corners.reserve(3 * solid.triangles.size());
    const auto add = [&](SolidPart part) {
        for (const SolidTriangle& triangle : solid.triangles)
        {
            for (std::size_t k = 0; triangle.part == part && k < 3; ++k)
            {
                const std::array<float, 3>& place = solid.positions[triangle.corners[k]];
                double normal[3];
                double square = 0;
                Corner& corner = corners.emplace_back();
                for (std::size_t axis = 0; axis < 3; ++axis)
                {
                    corner.place[axis] = static_cast<float>(stretch[axis] * place[axis]);
                    normal[axis] = triangle.normals[k][axis] / stretch[axis];
                    square += normal[axis] * normal[axis];
                }
                for (std::size_t axis = 0; axis < 3; ++axis)
                {
                    corner.normal[axis] = static_cast<float>(normal[axis] / std::sqrt(square));
                }
            }
        }
    };
    add(SolidPart::Face);
    firstOfEdge = corners.size();
    add(SolidPart::Edge);
    firstOfBevel = corners.size();
    add(SolidPart::Bevel);
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
    const OrvGlyph* const glyph = glyphIndex >= 0 && glyphIndex < settings_.font->glyphs.GetSize()
                                      ? settings_.font->glyphs.GetAt(glyphIndex)
                                      : nullptr;
    PlaneRegion region;
    if (glyph != nullptr && !glyph->IsInvalid())
    {
        region = orvane::RegionOf(*glyph);
    }
    for (std::vector<contours::DoublePoint>& contour : region.contours)
    {
        for (contours::DoublePoint& point : contour)
        {
            point.x *= settings_.scaleX;
            point.y *= settings_.scaleY;
        }
    }
    return region;
}

PlaneRegion ProfileTextSolids::RegionOf(int number) const
{
    if (settings_.fusion == LetterFusion::Separate)
    {
        return RegionOfGlyph(number);
    }
    const auto isBefore = [](const PlacedLetter& letter, int line) { return letter.line < line; };
    auto letter = letters_.begin();
    auto end = letters_.end();
    if (settings_.fusion == LetterFusion::Line)
    {
        letter = std::lower_bound(letters_.begin(), letters_.end(), number, isBefore);
        end = std::lower_bound(letter, letters_.end(), number + 1, isBefore);
    }
    std::map<int, PlaneRegion> regions;  // by glyph index
    std::vector<PlacedRegion> placed;
    for (; letter != end; ++letter)
    {
        const auto found = regions.try_emplace(letter->glyphIndex);
        PlaneRegion& region = found.first->second;
        if (found.second)
        {
            region = RegionOfGlyph(letter->glyphIndex);
        }
        placed.push_back(
            {&region, {letter->x / settings_.stretchX, letter->y / settings_.stretchY}});
    }
    return JoinRegions(placed);
}

const ProfileTextSolid& ProfileTextSolids::Of(int number)
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
               : lines_.emplace(number, orvane::LinesOf(Of(number), settings_)).first->second;
}

ProfileTextSolid ProfileTextSolids::Build(int number) const
{
    if (settings_.depth == 0 || settings_.stretchX == 0 || settings_.stretchY == 0)
    {
        return {};
    }
    ProfileSolidOptions options;
    options.depth = settings_.depth;
    options.sides = settings_.sides;
    options.smoothAngle = settings_.smoothAngle;
    // A letter whose edges cannot be cut keeps square edges. It is left out if that cannot be done
    // either, because its size is no number, for example.
    for (const EdgeProfile& profile : {settings_.profile, EdgeProfile{{ProfileStep{}}}})
    {
        try
        {
            return ProfileTextSolid(BuildProfileSolid(RegionOf(number), profile, options),
                                    settings_);
        }
        catch (const Error&)
        {}
    }
    return {};
}

}  // namespace orvane
