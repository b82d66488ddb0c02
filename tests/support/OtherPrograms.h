// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What other programs, where they are installed, make of the files that are written here.

#include "tests/support/DecodedPicture.h"

#include <optional>
#include <string>

/// What a shell command writes to standard output; nothing when the command fails.
std::optional<std::string> OutputOf(const std::string& command);

/// A program that reads BMP files.
struct PictureReader
{
    const char* name;
    const char* package;
    /// The command before the file's name, and behind it, that writes a PPM file (P6).
    const char* before;
    const char* behind;
    const char* test;  ///< a command that succeeds when the program is there
};

constexpr PictureReader pictureReaders[] = {
    {"ImageMagick", "imagemagick", "convert ", " -depth 8 ppm:-", "convert -version"},
    {"netpbm", "netpbm", "bmptopnm -quiet ", " | ppmtoppm", "bmptopnm -version 2>&1"}};

bool IsInstalled(const PictureReader& reader);

/// The picture that the program finds in a BMP file; an empty one when it finds none.
DecodedPicture ReadByOther(const PictureReader& reader, const std::string& path);

/// The pixels that have a channel that differs by more than \p levels; all of them when the sizes
/// differ.
std::size_t CountFarther(const DecodedPicture& a, const DecodedPicture& b, int levels);
