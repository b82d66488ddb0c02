// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/EdgeStyle.h"
#include "extrude/OrvFont.h"
#include "platform/Fonts.h"
#include "profiles/PlaneRegion.h"
#include "solids/LetterJoiner.h"
#include "solids/SolidSurface.h"

#include <array>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace orvane
{

/// All that the solids of a text with profiles are made from, except its characters and their
/// places.
struct ProfileTextSettings
{
    bool operator==(const ProfileTextSettings& other) const;

    const OrvFont* font;
    ENUMLOGFONTA fontRecord;
    LetterFusion fusion;
    SolidSettings solid;
};

/// The ends of lines, two for each.
using SolidLines = std::vector<std::array<float, 3>>;

/// The lines that show the shape of a solid: the rings of the profile's steps, and the edges at
/// which the surface is not smooth. The other edges of triangles are left out.
SolidLines LinesOf(const SolidSurface& solid, const SolidSettings& settings);

/// The solids that a text with profiles consists of. Each is made when it is first needed.
class ProfileTextSolids
{
public:
    /// The outline of a letter, in ems; empty when there is none.
    using RegionOfLetter = std::function<PlaneRegion(int glyphIndex)>;

    /// \param letters those that are joined, line by line; empty when each letter is a solid
    ProfileTextSolids(const ProfileTextSettings& settings, std::vector<PlacedLetter> letters,
                      RegionOfLetter regionOfLetter)
        : settings_(settings),
          letters_(std::move(letters)),
          regionOfLetter_(std::move(regionOfLetter)),
          joiner_(settings.solid)
    {}

    /// Whether the solids are those of these settings and joined letters.
    bool AreOf(const ProfileTextSettings& settings, const std::vector<PlacedLetter>& letters) const;

    const std::vector<PlacedLetter>& Letters() const { return letters_; }

    /// \param number the index of a glyph that is built, or the number of a line of joined letters,
    /// which is 0 when all lines are joined
    const BuiltSolid& Of(int number);
    /// The same if it was built before; null otherwise.
    const BuiltSolid* Known(int number) const;
    /// The lines of the same solid.
    const SolidLines& LinesOf(int number);

private:
    BuiltSolid Build(int number);
    PlaneRegion RegionOfGlyph(int glyphIndex) const;

    ProfileTextSettings settings_;
    std::vector<PlacedLetter> letters_;
    RegionOfLetter regionOfLetter_;
    LetterJoiner joiner_;
    std::map<int, BuiltSolid> solids_;  ///< by number
    std::map<int, SolidLines> lines_;   ///< by number
};

}  // namespace orvane
