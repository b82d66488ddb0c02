// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Font files rewritten for tests: other names, styles and tables.

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

    /// The edge cases' font of tests/data: "Edge Test", "Edge Test Regular", 1000 units.
    static FontFile EdgeTest();

    /// English names for Windows, in ASCII or UTF-8 within the basic plane.
    FontFile& Names(const std::string& family, const std::string& style, const std::string& full,
                    const std::string& postScript);
    FontFile& Weight(int weight);
    FontFile& Width(int widthClass);
    FontFile& BoldAndItalic(bool bold, bool italic);
    FontFile& Flavour(std::uint32_t version);
    FontFile& Remove(const std::string& tag);
    FontFile& Put(const std::string& tag, Table table);
    /// Two big-endian bytes in a table.
    FontFile& PutWord(const std::string& tag, std::size_t offset, int value);

    void Write(const std::string& path) const;

    /// Several fonts in one file.
    static void WriteCollection(const std::vector<FontFile>& fonts, const std::string& path);

private:
    Table Bytes(std::size_t start) const;

    std::uint32_t version_ = 0;
    std::map<std::string, Table> tables_;
};
