// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// OpenGL calls as text, one a line.
using Lines = std::vector<std::string>;

/// The first calls and then the others.
inline Lines operator+(Lines lines, const Lines& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}
