// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/ProfileSolid.h"

#include <string>

/// Why the surface of a solid is not closed; empty when it is closed. A surface is closed when
/// every edge of a triangle belongs to exactly one other triangle, which runs it in the opposite
/// direction. Also looks for triangles that use a position twice, and for normals that are not of
/// unit length or turn away from their triangle by more than 90 degrees.
std::string WhyNotClosed(const orvane::ProfileSolid& solid);
