// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "profiles/EdgeProfile.h"
#include "profiles/PlaneRegion.h"

#include <array>
#include <cstdint>
#include <vector>

namespace orvane
{

/// The faces that have a profile.
enum class ProfileSides
{
    Front,
    Back,
    Both
};

/// The surface that a triangle of a profiled solid belongs to.
enum class SolidPart : std::uint8_t
{
    Face,  ///< the front and the back face
    Edge,  ///< the wall between the profiles, or between a profile and a face
    Bevel  ///< a profile
};

/// A triangle of a profiled solid. Its corners run counter-clockwise seen from outside.
struct SolidTriangle
{
    std::array<std::uint32_t, 3> corners = {};         ///< in ProfileSolid::positions
    std::array<std::array<float, 3>, 3> normals = {};  ///< of the corners, of unit length
    SolidPart part = SolidPart::Face;
};

/// A letter, or several joined ones, with profiled edges. In ems; the front face lies at z = 0 and
/// looks to +z, the back face at -depth. The surface is closed: each edge belongs to two triangles,
/// which name its ends in opposite orders. No two triangles cross.
///
/// No two positions are the same, except where the solid touches itself.
struct ProfileSolid
{
    std::vector<std::array<float, 3>> positions;
    std::vector<SolidTriangle> triangles;
};

struct ProfileSolidOptions
{
    double depth = 0.25;  ///< ems, from the front face to the back; more than 0
    ProfileSides sides = ProfileSides::Front;
    /// Degrees, 0 to 180: surfaces that meet at a smaller angle are shaded as one smooth surface.
    /// 30 is more than curves turn at a corner after they were flattened.
    double smoothAngle = 30;
};

/// Makes the solid of a region. A face without a profile has the outline of the wall, which is that
/// of the profile's last step.
///
/// An offset at which nothing is left of the region has no ring: the surface ends before it, in a
/// ridge. A region without area gives a solid without triangles.
///
/// Between two steps of the profile the surface is made of planes, one for each edge of the
/// outline. Where strokes vanish or meet, the planes meet in ridges and valleys, the straight
/// skeleton; its points lie at their exact distance from the ring.
///
/// Throws Error when the profile or a coordinate is wrong, when the profiles are deeper than the
/// letter, and when a ring cannot be filled.
ORVANE_API ProfileSolid BuildProfileSolid(const PlaneRegion& region, const EdgeProfile& profile,
                                          const ProfileSolidOptions& options = {});

/// The volume that the triangles enclose, in cubic ems; positive when they face outward.
ORVANE_API double VolumeOf(const ProfileSolid& solid);

}  // namespace orvane
