// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/ProfileSolid.h"

namespace orvane::profiles
{

/// Sets the normals of all corners. The normal of a corner is the average of the normals of the
/// triangles around its position that differ from its own triangle's by less than \p smoothAngle,
/// weighted by their angles there.
/// \param smoothAngle in degrees
void SetNormals(ProfileSolid& solid, double smoothAngle);

}  // namespace orvane::profiles
