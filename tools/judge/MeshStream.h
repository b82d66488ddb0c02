// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What judge-solids writes to standard output for profiles.mjs: records of four kinds.

#include "profiles/ProfileSolid.h"

#include <string>

enum class RecordKind
{
    Mesh,           ///< a solid that manifold-3d must judge, with its name and volume
    Face,           ///< the line about a face
    JudgedOutline,  ///< the key of an outline in whose solids, the meshes before, nothing is wrong
    RepeatedOutline,  ///< the key of such an outline, which another glyph has, too; and its name
};

void WriteRecord(RecordKind kind, const std::string& text);
void WriteMesh(const std::string& name, const orvane::ProfileSolid& solid, double volume);
