// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What an independent implementation of the font calls returned for the faces of DejaVu and
/// Liberation and for the test font (tests/data/font-figures.json).

#include "platform/Fonts.h"
#include "tests/support/Json.h"

#include <string>
#include <vector>

/// The whole content of tests/data/font-figures.json.
const Json& FontFigures();

/// The outline of one character: its size, its metrics and its checksum.
struct GlyphFigures
{
    UINT code;  ///< in the code page 1252
    UINT unicode;
    DWORD size;  ///< the size of the native outline, in bytes
    GLYPHMETRICS metrics;
    std::string crc;  ///< CRC-32 of the native outline, in eight hexadecimal digits
};

/// The characters of a face, by its full name.
std::vector<GlyphFigures> GlyphsOf(const std::string& face);

/// The outline of A with macron, U+0100, in a face.
GlyphFigures AWithMacronOf(const std::string& face);

/// CRC-32 of some bytes, in eight hexadecimal digits.
std::string Crc32Of(const std::vector<BYTE>& bytes);

/// The full names of the faces of DejaVu and Liberation, in the order of a font registry.
std::vector<std::string> RegistryNames();

/// The paths of the font files of DejaVu and Liberation, from the packages fonts-dejavu-core and
/// fonts-liberation. Throws std::runtime_error with the file's name when a file is not installed.
std::vector<std::string> FontFiles();
/// The path of one of these files, given the file's name without its folder.
std::string FontFilePath(const std::string& name);
