// SPDX-License-Identifier: MIT
#include "profiles/EdgeSurface.h"

#include "orvane/Error.h"
#include "profiles/BandRidges.h"

#include <algorithm>
#include <cmath>

namespace orvane::profiles
{

namespace
{

double ReachOf(const EdgeProfile& profile)
{
    CheckProfile(profile);
    double reach = 0;
    // Inward offsets never leave the region.
    for (const ProfileStep& step : profile.steps)
    {
        reach = std::max(reach, profile.reachesMiddle ? 0 : std::abs(step.offset));
    }
    return reach;
}

}  // namespace

EdgeSurface::EdgeSurface(const PlaneRegion& region, const EdgeProfile& profile, Faces faces)
    : offsets_(region, profile.corners, ReachOf(profile)), faces_(faces)
{
    AddLevels(profile);
    FindBands();
}

void EdgeSurface::AddLevels(const EdgeProfile& profile)
{
    const double unit = profile.reachesMiddle ? offsets_.MiddleOffset() : UnitsPerEm();
    for (const ProfileStep& step : profile.steps)
    {
        if (!levels_.empty())
        {
            // A band from inside of the outline to outside of it gets the outline as a level,
            // because distances are measured from there.
            const ProfileStep& last = (&step)[-1];
            const double part = last.offset / (last.offset - step.offset);
            if (last.offset * step.offset < 0)
            {
                levels_.push_back({RingAt(0), last.height + (step.height - last.height) * part});
            }
        }
        levels_.push_back({RingAt(step.offset * unit), step.height});
    }
}

std::size_t EdgeSurface::RingAt(double offset)
{
    for (std::size_t i = 0; i < rings_.size(); ++i)
    {
        if (std::abs(found_[i].wanted - offset) < RegionOffsets::minSeparation)
        {
            return i;
        }
    }
    found_.push_back({offset, offset, 0});
    rings_.push_back(offsets_.At(offset));
    return rings_.size() - 1;
}

void EdgeSurface::FindBands()
{
    while (!Fill(rings_[levels_.front().ring], firstFill_))
    {
        TryNextOffset(levels_.front().ring);
    }
    while (faces_ == Faces::Both && !Fill(rings_[levels_.back().ring], lastFill_))
    {
        TryNextOffset(levels_.back().ring);
    }
    bands_.resize(levels_.size() - 1);
    for (std::size_t i = 0; i < bands_.size();)
    {
        if (FindBand(i))
        {
            ++i;
            continue;
        }
        // One of the two rings meets itself, or they meet.
        std::vector<IndexTriangle> unused;
        const bool isUpperGood = Fill(rings_[levels_[i].ring], unused);
        TryNextOffset(levels_[isUpperGood ? i + 1 : i].ring);
        FindBands();
        return;
    }
}

/// Replaces a ring that cannot be used by that of an offset a few grid units beside it, where
/// rounding makes other corners.
void EdgeSurface::TryNextOffset(std::size_t ring)
{
    constexpr int maxTries = 16;
    constexpr double step = 3;
    FoundRing& found = found_[ring];
    if (found.tries == maxTries)
    {
        throw Error("profile, offset " + std::to_string(found.wanted / UnitsPerEm()) + " em",
                    "a border that cannot be filled, even a little beside it",
                    "contours that keep apart");
    }
    ++found.tries;
    const int away = (found.tries + 1) / 2;  // 1, 1, 2, 2, ...: below and above in turns
    const double distance = step * away;
    found.actual = found.wanted + (found.tries % 2 == 0 ? distance : -distance);
    rings_[ring] = offsets_.At(found.actual);
}

bool EdgeSurface::Fill(const Ring& ring, std::vector<IndexTriangle>& triangles)
{
    triangles.clear();
    if (ring.edges.empty())
    {
        return true;
    }
    if (triangulation_.Build(ring.points) != Triangulation::Outcome::Done)
    {
        return false;
    }
    for (const RingEdge& edge : ring.edges)
    {
        if (triangulation_.AddEdge(edge.from, edge.to, 1) != Triangulation::Outcome::Done)
        {
            return false;
        }
    }
    if (!triangulation_.FindInside(1))
    {
        return false;
    }
    AppendInside(triangulation_, false, triangles);
    return true;
}

bool EdgeSurface::Join(const Ring& upper, const Ring& lower, int winding,
                       std::span<const BandSkeleton::Node> nodes)
{
    const int upperCount = static_cast<int>(upper.points.size());
    points_ = upper.points;
    points_.insert(points_.end(), lower.points.begin(), lower.points.end());
    for (const BandSkeleton::Node& node : nodes)
    {
        points_.push_back(node.place);
    }
    if (triangulation_.Build(points_) != Triangulation::Outcome::Done)
    {
        return false;
    }
    for (const RingEdge& edge : upper.edges)
    {
        if (triangulation_.AddEdge(edge.from, edge.to, -1) != Triangulation::Outcome::Done)
        {
            return false;
        }
    }
    for (const RingEdge& edge : lower.edges)
    {
        if (triangulation_.AddEdge(upperCount + edge.from, upperCount + edge.to, 1) !=
            Triangulation::Outcome::Done)
        {
            return false;
        }
    }
    return triangulation_.FindInside(winding);
}

/// As Join, with the nodes of a skeleton. Moves those that rounding has put onto a ring.
bool EdgeSurface::JoinWithNodes(const Ring& upper, const Ring& lower, int winding,
                                BandSkeleton& skeleton)
{
    const int ringCount = static_cast<int>(upper.points.size() + lower.points.size());
    constexpr int maxTries = 16;
    for (int tries = 0; tries < maxTries; ++tries)
    {
        if (Join(upper, lower, winding, skeleton.Nodes()))
        {
            return true;
        }
        const int touched = triangulation_.TouchedPoint();
        if (touched < ringCount)
        {
            return false;
        }
        skeleton.MoveNode(static_cast<std::size_t>(touched - ringCount));
    }
    return false;
}

bool EdgeSurface::FindBand(std::size_t index)
{
    const Level& upperLevel = levels_[index];
    const Level& lowerLevel = levels_[index + 1];
    Band& band = bands_[index];
    band = {};
    const Ring& upper = rings_[upperLevel.ring];
    const Ring& lower = rings_[lowerLevel.ring];
    if (upperLevel.ring == lowerLevel.ring || (upper.edges.empty() && lower.edges.empty()))
    {
        return true;
    }

    const double from = found_[upperLevel.ring].actual;
    const double to = found_[lowerLevel.ring].actual;
    const int winding = from < to ? 1 : -1;
    if (!Join(upper, lower, winding, {}))
    {
        return false;
    }
    if (upperLevel.height != lowerLevel.height)
    {
        BandRidges ridges(triangulation_, {upper, from}, {lower, to}, offsets_.ArcStep(),
                          UnitsPerEm());
        BandSkeleton skeleton = ridges.FindSkeleton();
        constexpr int maxRounds = 3;
        for (int round = 0; !skeleton.Lines().empty(); ++round)
        {
            if (!JoinWithNodes(upper, lower, winding, skeleton))
            {
                Join(upper, lower, winding, {});
                break;
            }
            ridges.AddLines(skeleton);
            const auto missing = round < maxRounds ? ridges.MissingLines(skeleton)
                                                   : std::vector<BandSkeleton::LinePlace>();
            if (missing.empty())
            {
                ridges.AddNodes(skeleton, band.ridge);
                break;
            }
            Join(upper, lower, winding, {});
            skeleton.TraceFrom(missing);
        }
        ridges.CutChords(band.ridge);
    }
    AppendInside(triangulation_, from > to, band.triangles);
    return true;
}

}  // namespace orvane::profiles
