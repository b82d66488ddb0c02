// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/PlaneRegion.h"
#include "solids/SolidSurface.h"

#include <memory>
#include <optional>
#include <vector>

namespace orvane
{

/// The flat areas of a node. Nodes and their copies for undo share them.
using SharedRegions = std::shared_ptr<const std::vector<PlaneRegion>>;

/// All that the solids of flat areas are made from.
struct OutlineSettings
{
    bool operator==(const OutlineSettings&) const = default;

    SharedRegions regions;
    /// How far the areas are moved before they are scaled, in ems.
    contours::DoublePoint offset;
    SolidSettings solid;
};

/// The solids of flat areas. Each is made when it is first needed.
class OutlineSolids
{
public:
    explicit OutlineSolids(OutlineSettings settings);

    bool AreOf(const OutlineSettings& settings) const { return settings == settings_; }
    /// \param area the index of an area
    const BuiltSolid& Of(std::size_t area);
    /// The same if it was built before; null otherwise.
    const BuiltSolid* Known(std::size_t area) const
    {
        return solids_[area] ? &*solids_[area] : nullptr;
    }

private:
    OutlineSettings settings_;
    std::vector<std::optional<BuiltSolid>> solids_;
};

}  // namespace orvane
