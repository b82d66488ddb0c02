// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What an independent implementation of the font calls returned for the faces of DejaVu and
/// Liberation and for the test font (tests/data/font-figures.json).

#include "platform/Fonts.h"
#include "tests/support/Json.h"

#include <string>
#include <vector>

/// The whole file.
const Json& FontFigures();

/// The outline of one character: its size, its metrics and its checksum.
struct GlyphFigures
{
    UINT code;  ///< in the code page 1252
    UINT unicode;
    DWORD size;  ///< of the native outline, in bytes
    GLYPHMETRICS metrics;
    std::string crc;  ///< CRC-32 of the native outline, in eight hexadecimal digits
};

/// The characters of a face, by its full name.
std::vector<GlyphFigures> GlyphsOf(const std::string& face);

/// A with macron, U+0100, of a face.
GlyphFigures AWithMacronOf(const std::string& face);

/// CRC-32 of some bytes, in eight hexadecimal digits.
std::string Crc32Of(const std::vector<BYTE>& bytes);

/// The full names of the faces of DejaVu and Liberation, in the order of a font registry.
std::vector<std::string> RegistryNames();

/// The files of these faces: those of the packages fonts-dejavu-core and fonts-liberation. Throws
/// std::runtime_error, naming the file, when one is not installed.
std::vector<std::string> FontFiles();
/// One of them, by its file's name without the folder.
std::string FontFilePath(const std::string& name);
