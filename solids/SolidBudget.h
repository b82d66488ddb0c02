// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Limits.h"
#include "profiles/PlaneRegion.h"
#include "solids/SolidSurface.h"

#include <cstdint>
#include <functional>

namespace orvane
{

/// The steps of limits::maxSolidSteps for a profile of one ring.
std::int64_t StepsOfSolid(const PlaneRegion& region);

/// How many rings are made for a profile. The search for the middle of the strokes makes about 20.
std::int64_t RingsOf(const EdgeProfile& profile);

/// Builds solids as long as they take at most limits::maxSolidSteps together. Those after that have
/// square edges, as long as these take at most as many steps together. Then solids are left out.
class SolidBudget
{
public:
    /// \param steps the result of StepsOfSolid for the region
    /// \param rings that of RingsOf for the profile that is asked for
    /// \param region gives the region after ScaleRegion; it is not called for a solid that is left
    /// out. A solid whose region is an Error is left out.
    BuiltSolid Build(std::int64_t steps, std::int64_t rings,
                     const std::function<PlaneRegion()>& region, SolidSettings settings);

private:
    std::int64_t left_ = limits::maxSolidSteps;
    std::int64_t leftForSquare_ = limits::maxSolidSteps;
};

}  // namespace orvane
