// SPDX-License-Identifier: MIT
#pragma once

#include <string>

enum class PictureFormat
{
    Png,
    Bmp
};

/// The format that a file's name asks for; PNG for standard output ("-").
/// Throws UsageError for a name with another ending.
PictureFormat FormatOf(const std::string& path);
