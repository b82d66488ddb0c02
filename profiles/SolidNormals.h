// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/ProfileSolid.h"

namespace orvane::profiles
{

/// Sets the normals of all corners. The normal of a corner is the average of the normals of the
/// triangles around its position that meet its own triangle smoothly, weighted by their angles
/// there. Two triangles meet smoothly when their normals differ by less than \p smoothAngle, and
/// when they also do seen from the front. Faces and walls take no part of a profile's normals; a
/// profile that meets them smoothly takes theirs.
/// \param smoothAngle in degrees
void SetNormals(ProfileSolid& solid, double smoothAngle);

}  // namespace orvane::profiles
