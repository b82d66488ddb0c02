// SPDX-License-Identifier: MIT
#pragma once

#include "contours/PlanePoint.h"
#include "extrude/OrvFont.h"
#include "profiles/PlaneRegion.h"
#include "solids/SolidBudget.h"
#include "solids/SolidSurface.h"

#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <span>
#include <vector>

namespace orvane
{

/// A box in the plane. A new one is empty.
struct PlaneBox
{
    contours::DoublePoint low = {std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::infinity()};
    contours::DoublePoint high = {-std::numeric_limits<double>::infinity(),
                                  -std::numeric_limits<double>::infinity()};

    bool IsEmpty() const { return !(low.x <= high.x && low.y <= high.y); }
    void Include(const contours::DoublePoint& point);
    void Include(const PlaneBox& other);
};

/// Groups of boxes that overlap or touch, directly or through other boxes of the group: the indices
/// of each group in ascending order, the groups in the order of their first boxes. Two groups may
/// still have boxes around them that overlap.
std::vector<std::vector<std::size_t>> OverlappingGroups(const std::vector<PlaneBox>& boxes);

/// Makes one solid of many letters. Only letters that meet, or whose profiles could, are joined to
/// one region before their edges are cut, because that takes time that grows with the square of
/// their number. A letter by itself is built once for all its places.
class LetterJoiner
{
public:
    explicit LetterJoiner(const SolidSettings& settings)
        : settings_(settings), rings_(RingsOf(settings.profile))
    {
        if (settings.profile.reachesMiddle)
        {
            middleSteps_ = settings.profile.steps;
        }
    }

    /// All solids of a joiner share one SolidBudget.
    /// \param regionOf gives the region of a glyph index, after ScaleRegion
    BuiltSolid Join(std::span<const PlacedLetter> letters,
                    const std::function<PlaneRegion(int)>& regionOf);

private:
    /// A glyph with the origin of its letter at 0, 0.
    struct Glyph
    {
        PlaneRegion region;
        std::int64_t steps = 0;  ///< of StepsOfSolid
        PlaneBox outline;
        double middle = -1;                       ///< of MiddleOf; negative until it is needed
        std::shared_ptr<const BuiltSolid> solid;  ///< null until it is needed
    };
    /// Letters that are joined.
    struct Part
    {
        std::vector<PlacedLetter> letters;
        PlaneBox box;  ///< of the outlines and of the solid
        /// With the origin of the first letter at 0, 0.
        std::shared_ptr<const BuiltSolid> solid;
    };
    /// Letters with their places from the origin of the first one.
    struct Joint
    {
        std::vector<PlacedRegion> placed;
        std::int64_t steps = 0;  ///< of StepsOfSolid, before the regions are joined
    };

    Glyph& GlyphOf(int index, const std::function<PlaneRegion(int)>& regionOf);
    Joint JointOf(const std::vector<PlacedLetter>& letters) const;
    /// How far the widest stroke of all letters is from its outline to its middle, in ems.
    double MiddleOf(const std::vector<Part>& parts);
    /// Makes the profile one whose offsets are ems.
    void UseMiddle(double middle);
    void BuildLetter(Part& part);
    Part Join(std::vector<Part>& parts, const std::vector<std::size_t>& group);

    SolidSettings settings_;
    std::int64_t rings_;
    std::vector<ProfileStep> middleSteps_;  ///< of a profile that reaches the middle; else empty
    double middle_ = -1;                    ///< that the settings are for; negative before
    SolidBudget budget_;
    std::map<int, Glyph> glyphs_;  ///< by index
};

}  // namespace orvane
