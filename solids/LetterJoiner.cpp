// SPDX-License-Identifier: MIT
#include "solids/LetterJoiner.h"

#include "orvane/Error.h"
#include "profiles/RegionOffsets.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace orvane
{

namespace
{

using contours::DoublePoint;

/// The box of a solid whose origin is moved.
PlaneBox BoxOf(const SolidSurface& surface, const DoublePoint& origin)
{
    PlaneBox box;
    for (const SolidSurface::Corner& corner : surface.corners)
    {
        box.Include(origin + DoublePoint{corner.place[0], corner.place[1]});
    }
    return box;
}

PlaneBox MovedBy(const PlaneBox& box, const DoublePoint& offset)
{
    return box.IsEmpty() ? box : PlaneBox{box.low + offset, box.high + offset};
}

bool DoMeet(const PlaneBox& a, const PlaneBox& b)
{
    return a.low.x <= b.high.x && b.low.x <= a.high.x && a.low.y <= b.high.y && b.low.y <= a.high.y;
}

template <typename Part>
std::vector<PlaneBox> BoxesOf(const std::vector<Part>& parts)
{
    std::vector<PlaneBox> boxes;
    std::transform(parts.begin(), parts.end(), std::back_inserter(boxes),
                   [](const Part& part) { return part.box; });
    return boxes;
}

/// Boxes that overlap, and the box around them.
struct BoxGroup
{
    PlaneBox box;
    std::vector<std::size_t> members;

    void Take(BoxGroup&& other)
    {
        box.Include(other.box);
        if (other.members.size() > members.size())
        {
            std::swap(members, other.members);
        }
        members.insert(members.end(), other.members.begin(), other.members.end());
    }
};

void Append(std::vector<SolidSurface::Corner>& corners, const PlacedLetter& origin,
            std::span<const SolidSurface::Corner> more)
{
    for (const SolidSurface::Corner& each : more)
    {
        SolidSurface::Corner& corner = corners.emplace_back(each);
        corner.place[0] = static_cast<float>(each.place[0] + origin.x);
        corner.place[1] = static_cast<float>(each.place[1] + origin.y);
    }
}

}  // namespace

void PlaneBox::Include(const DoublePoint& point)
{
    low = {std::min(low.x, point.x), std::min(low.y, point.y)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y)};
}

void PlaneBox::Include(const PlaneBox& other)
{
    low = {std::min(low.x, other.low.x), std::min(low.y, other.low.y)};
    high = {std::max(high.x, other.high.x), std::max(high.y, other.high.y)};
}

std::vector<std::vector<std::size_t>> OverlappingGroups(const std::vector<PlaneBox>& boxes)
{
    PlaneBox all;
    std::for_each(boxes.begin(), boxes.end(), [&all](const PlaneBox& box) { all.Include(box); });
    // The boxes are met along the longer side of the box around them, so that few lie beside each
    // other.
    const double DoublePoint::*const axis =
        all.high.x - all.low.x >= all.high.y - all.low.y ? &DoublePoint::x : &DoublePoint::y;
    std::vector<std::vector<std::size_t>> groups;
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < boxes.size(); ++i)
    {
        if (boxes[i].IsEmpty())
        {
            groups.push_back({i});
        }
        else
        {
            order.push_back(i);
        }
    }
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return boxes[a].low.*axis < boxes[b].low.*axis;
    });

    std::vector<BoxGroup> finished;
    std::vector<BoxGroup> open;  // those that a later box can meet
    for (const std::size_t index : order)
    {
        BoxGroup group = {boxes[index], {index}};
        for (std::size_t i = 0; i < open.size();)
        {
            const bool isPassed = open[i].box.high.*axis < boxes[index].low.*axis;
            const bool isMet = !isPassed && DoMeet(open[i].box, group.box);
            if (!isPassed && !isMet)
            {
                ++i;
                continue;
            }
            BoxGroup other = std::exchange(open[i], std::move(open.back()));
            open.pop_back();
            if (isPassed)
            {
                finished.push_back(std::move(other));
                continue;
            }
            group.Take(std::move(other));
            i = 0;  // the box has grown
        }
        open.push_back(std::move(group));
    }
    std::move(open.begin(), open.end(), std::back_inserter(finished));

    for (BoxGroup& group : finished)
    {
        std::sort(group.members.begin(), group.members.end());
        groups.push_back(std::move(group.members));
    }
    std::sort(groups.begin(), groups.end());
    return groups;
}

LetterJoiner::Glyph& LetterJoiner::GlyphOf(int index,
                                           const std::function<PlaneRegion(int)>& regionOf)
{
    const auto known = glyphs_.find(index);
    if (known != glyphs_.end())
    {
        return known->second;
    }
    Glyph glyph;
    glyph.region = regionOf(index);
    glyph.steps = StepsOfSolid(glyph.region);
    for (const std::vector<DoublePoint>& contour : glyph.region.contours)
    {
        for (const DoublePoint& point : contour)
        {
            glyph.outline.Include(
                DoublePoint{point.x * settings_.stretchX, point.y * settings_.stretchY});
        }
    }
    return glyphs_.emplace(index, std::move(glyph)).first->second;
}

LetterJoiner::Joint LetterJoiner::JointOf(const std::vector<PlacedLetter>& letters) const
{
    const PlacedLetter& first = letters[0];
    Joint joint;
    PlaneRegion together;
    for (const PlacedLetter& letter : letters)
    {
        const PlaneRegion& region = glyphs_.at(letter.glyphIndex).region;
        const DoublePoint offset = {(letter.x - first.x) / settings_.stretchX,
                                    (letter.y - first.y) / settings_.stretchY};
        joint.placed.push_back({&region, offset});
        for (const std::vector<DoublePoint>& contour : region.contours)
        {
            std::vector<DoublePoint>& moved = together.contours.emplace_back(contour);
            for (DoublePoint& point : moved)
            {
                point = point + offset;
            }
        }
    }
    joint.steps = StepsOfSolid(together);
    return joint;
}

double LetterJoiner::MiddleOf(const std::vector<Part>& parts)
{
    const auto middleOf = [this](const PlaneRegion& region) {
        const profiles::RegionOffsets offsets(region, settings_.profile.corners, 0);
        // On the grid of the solid nothing may be left there either.
        constexpr double margin = 4;
        return (offsets.MiddleOffset() + margin) / offsets.UnitsPerEm();
    };
    double widest = 0;
    std::int64_t left = limits::maxSolidSteps;  // as SolidBudget counts them
    for (const std::vector<std::size_t>& group : OverlappingGroups(BoxesOf(parts)))
    {
        std::vector<PlacedLetter> letters;
        std::transform(group.begin(), group.end(), std::back_inserter(letters),
                       [&parts](std::size_t index) { return parts[index].letters[0]; });
        try
        {
            Glyph& glyph = glyphs_.at(letters[0].glyphIndex);
            if (letters.size() == 1)
            {
                glyph.middle = glyph.middle < 0 ? middleOf(glyph.region) : glyph.middle;
                widest = std::max(widest, glyph.middle);
                continue;
            }
            const Joint joint = JointOf(letters);
            left -= joint.steps * rings_;
            if (left >= 0)
            {
                widest = std::max(widest, middleOf(JoinRegions(joint.placed)));
            }
        }
        catch (const Error&)
        {
            // Building the solid meets the same problem and tells it.
        }
    }
    return widest;
}

void LetterJoiner::UseMiddle(double middle)
{
    if (middle == middle_)
    {
        return;
    }
    middle_ = middle;
    settings_.profile.reachesMiddle = false;
    settings_.profile.steps = middleSteps_;
    for (ProfileStep& step : settings_.profile.steps)
    {
        step.offset *= middle;
    }
    for (auto& each : glyphs_)
    {
        each.second.solid.reset();
    }
}

void LetterJoiner::BuildLetter(Part& part)
{
    const PlacedLetter& letter = part.letters[0];
    Glyph& glyph = glyphs_.at(letter.glyphIndex);
    if (glyph.solid == nullptr)
    {
        glyph.solid = std::make_shared<const BuiltSolid>(budget_.Build(
            glyph.steps, rings_, [&glyph] { return glyph.region; }, settings_));
    }
    part.solid = glyph.solid;
    part.box.Include(BoxOf(part.solid->surface, {letter.x, letter.y}));
}

LetterJoiner::Part LetterJoiner::Join(std::vector<Part>& parts,
                                      const std::vector<std::size_t>& group)
{
    Part joined = std::move(parts[group[0]]);
    for (auto index = std::next(group.begin()); index != group.end(); ++index)
    {
        const Part& part = parts[*index];
        joined.letters.insert(joined.letters.end(), part.letters.begin(), part.letters.end());
        joined.box.Include(part.box);
    }
    if (group.size() > 1)
    {
        const Joint joint = JointOf(joined.letters);
        joined.solid = std::make_shared<const BuiltSolid>(budget_.Build(
            joint.steps, rings_, [&joint] { return JoinRegions(joint.placed); }, settings_));
        const PlacedLetter& first = joined.letters[0];
        joined.box.Include(BoxOf(joined.solid->surface, {first.x, first.y}));
    }
    return joined;
}

BuiltSolid LetterJoiner::Join(std::span<const PlacedLetter> letters,
                              const std::function<PlaneRegion(int)>& regionOf)
{
    BuiltSolid solid;
    solid.outcome = SolidOutcome::Profiled;
    std::vector<Part> parts;
    for (const PlacedLetter& letter : letters)
    {
        const Glyph& glyph = GlyphOf(letter.glyphIndex, regionOf);
        if (std::isfinite(letter.x) && std::isfinite(letter.y))
        {
            parts.push_back({{letter}, MovedBy(glyph.outline, {letter.x, letter.y}), nullptr});
        }
        else
        {
            solid.outcome = SolidOutcome::Missing;
            solid.problem = "the place of a letter is no number";
        }
    }
    if (!middleSteps_.empty())
    {
        UseMiddle(MiddleOf(parts));
    }
    std::for_each(parts.begin(), parts.end(), [this](Part& part) { BuildLetter(part); });
    // Joined letters may reach farther than each of them, so they may meet more letters.
    for (bool isDone = false; !isDone;)
    {
        const std::vector<std::vector<std::size_t>> groups = OverlappingGroups(BoxesOf(parts));
        isDone = groups.size() == parts.size();
        std::vector<Part> joined;
        std::transform(groups.begin(), groups.end(), std::back_inserter(joined),
                       [&](const std::vector<std::size_t>& group) { return Join(parts, group); });
        parts = std::move(joined);
    }

    const auto append = [&](auto begin, auto end) {
        for (const Part& part : parts)
        {
            const SolidSurface& surface = part.solid->surface;
            Append(
                solid.surface.corners, part.letters[0],
                std::span(surface.corners).subspan(begin(surface), end(surface) - begin(surface)));
        }
        return solid.surface.corners.size();
    };
    const auto zero = [](const SolidSurface&) { return std::size_t{0}; };
    const auto edge = [](const SolidSurface& surface) { return surface.firstOfEdge; };
    const auto bevel = [](const SolidSurface& surface) { return surface.firstOfBevel; };
    const auto end = [](const SolidSurface& surface) { return surface.corners.size(); };
    solid.surface.firstOfEdge = append(zero, edge);
    solid.surface.firstOfBevel = append(edge, bevel);
    append(bevel, end);
    for (const Part& part : parts)
    {
        if (part.solid->outcome > solid.outcome)
        {
            solid.outcome = part.solid->outcome;
            solid.problem = part.solid->problem;
        }
    }
    return solid;
}

}  // namespace orvane
