// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Reference dumps of the font calls: one JSON object a line.

#include "platform/Fonts.h"

#include <string>
#include <vector>

/// One line of a dump. Only what the dumps use of JSON is understood.
class GoldenLine
{
public:
    explicit GoldenLine(std::string text) : text_(std::move(text)) {}

    const std::string& Text() const { return text_; }
    bool Has(const std::string& key) const;
    /// The number after a key; throws when there is none.
    long Number(const std::string& key) const;
    std::string String(const std::string& key) const;
    /// An object's text, to be asked for its own keys.
    GoldenLine Object(const std::string& key) const;
    /// The numbers of an array.
    std::vector<long> Numbers(const std::string& key) const;

    /// The native buffer that the "polys" stand for.
    std::vector<BYTE> Polygons() const;

private:
    /// Behind the colon of a key; npos when there is none.
    std::size_t After(const std::string& key) const;

    std::string text_;
};

/// The folder of the dumps; empty when it is not there.
std::string GoldenFolder();

std::vector<GoldenLine> ReadGolden(const std::string& name);

/// The full names that a registry of the reference faces has, in its order.
std::vector<std::string> GoldenRegistry();

/// The files of the faces that the dumps are of, as far as they are installed.
std::vector<std::string> ReferenceFiles();
/// The one of that file name; empty when it is not installed.
std::string ReferenceFile(const std::string& name);

/// The checksum that the dumps have of a buffer, as their eight hexadecimal digits.
std::string GoldenChecksum(const std::vector<BYTE>& bytes);
