// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class OutputFile;

/// A finished picture: rows from the top, each pixel red, green, blue, rows tightly packed.
struct Picture
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    std::uint8_t* Row(int y) { return pixels.data() + std::size_t{3} * width * y; }
    const std::uint8_t* Row(int y) const { return pixels.data() + std::size_t{3} * width * y; }
};

enum class PictureFormat
{
    Png,
    Bmp
};

/// The format that a file's name asks for; PNG for standard output ("-").
/// Throws UsageError for a name with another ending.
PictureFormat FormatOf(const std::string& path);

/// Writes the picture and commits the file. Throws Failure.
void SavePicture(const Picture& picture, PictureFormat format, OutputFile& file);
