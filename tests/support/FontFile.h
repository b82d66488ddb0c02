// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Copies of font files with changed names, styles or tables, for tests.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// The tables of an sfnt font file in memory.
class FontFile
{
public:
    using Table = std::vector<std::uint8_t>;

    /// Throws when the file cannot be read.
    explicit FontFile(const std::string& path);

    /// The font for edge cases, tests/data/EdgeTest.ttf: family "Edge Test", full name "Edge Test
    /// Regular", 1000 units per em.
    static FontFile EdgeTest();

    /// Sets the English names for Windows, given in UTF-8. Characters must be in the basic
    /// multilingual plane.
    FontFile& Names(const std::string& family, const std::string& style, const std::string& full,
                    const std::string& postScript);
    FontFile& Weight(int weight);
    FontFile& Width(int widthClass);
    FontFile& BoldAndItalic(bool bold, bool italic);
    FontFile& Flavour(std::uint32_t version);
    FontFile& Remove(const std::string& tag);
    FontFile& Put(const std::string& tag, Table table);
    /// Replaces two bytes of a table by \p value in big-endian order.
    FontFile& PutWord(const std::string& tag, std::size_t offset, int value);

    void Write(const std::string& path) const;

    /// Writes several fonts into one file, a font collection.
    static void WriteCollection(const std::vector<FontFile>& fonts, const std::string& path);

private:
    Table Bytes(std::size_t start) const;

    std::uint32_t version_ = 0;
    std::map<std::string, Table> tables_;
};
