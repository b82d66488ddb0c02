// SPDX-License-Identifier: MIT
#include "tests/support/FontFile.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace
{

using Table = FontFile::Table;

void PutBig(Table& bytes, std::size_t offset, std::uint32_t value, int size)
{
    for (int n = 0; n < size; ++n)
    {
        bytes.at(offset + n) = static_cast<std::uint8_t>(value >> (8 * (size - 1 - n)));
    }
}

void AppendBig(Table& bytes, std::uint32_t value, int size)
{
    bytes.resize(bytes.size() + size);
    PutBig(bytes, bytes.size() - size, value, size);
}

std::uint32_t GetBig(const Table& bytes, std::size_t offset, int size)
{
    std::uint32_t value = 0;
    for (int n = 0; n < size; ++n)
    {
        value = value << 8 | bytes.at(offset + n);
    }
    return value;
}

/// UTF-8 of the basic plane as big-endian UTF-16.
Table Utf16(const std::string& text)
{
    Table bytes;
    for (std::size_t n = 0; n < text.size();)
    {
        const auto lead = static_cast<unsigned char>(text[n]);
        const int length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : 3;
        unsigned unit = length == 1 ? lead : lead & (0xFF >> (length + 1));
        for (int tail = 1; tail < length; ++tail)
        {
            unit = unit << 6 | (static_cast<unsigned char>(text.at(n + tail)) & 0x3F);
        }
        AppendBig(bytes, unit, 2);
        n += length;
    }
    return bytes;
}

void WriteBytes(const std::string& path, const Table& bytes)
{
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

FontFile::FontFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
    {
        throw std::runtime_error(path + ": cannot be read");
    }
    const Table bytes{std::istreambuf_iterator<char>(file), {}};
    version_ = GetBig(bytes, 0, 4);
    const std::uint32_t count = GetBig(bytes, 4, 2);
    for (std::uint32_t n = 0; n < count; ++n)
    {
        const std::size_t entry = 12 + 16 * n;
        const std::string tag(bytes.begin() + entry, bytes.begin() + entry + 4);
        const std::uint32_t offset = GetBig(bytes, entry + 8, 4);
        const std::uint32_t size = GetBig(bytes, entry + 12, 4);
        tables_[tag].assign(bytes.begin() + offset, bytes.begin() + offset + size);
    }
}

FontFile FontFile::EdgeTest()
{
    return FontFile(ORVANE_TEST_DATA "/EdgeTest.ttf");
}

FontFile& FontFile::Names(const std::string& family, const std::string& style,
                          const std::string& full, const std::string& postScript)
{
    const std::pair<int, const std::string*> names[] = {
        {1, &family}, {2, &style}, {3, &full}, {4, &full}, {6, &postScript}};
    const int count = static_cast<int>(std::size(names));
    Table table;
    Table texts;
    AppendBig(table, 0, 2);
    AppendBig(table, count, 2);
    AppendBig(table, 6 + 12 * count, 2);
    for (const auto& [id, name] : names)
    {
        const Table text = Utf16(*name);
        for (const int field : {3, 1, 0x409, id})
        {
            AppendBig(table, field, 2);
        }
        AppendBig(table, static_cast<std::uint32_t>(text.size()), 2);
        AppendBig(table, static_cast<std::uint32_t>(texts.size()), 2);
        texts.insert(texts.end(), text.begin(), text.end());
    }
    table.insert(table.end(), texts.begin(), texts.end());
    return Put("name", table);
}

FontFile& FontFile::Weight(int weight)
{
    return PutWord("OS/2", 4, weight);
}

FontFile& FontFile::Width(int widthClass)
{
    return PutWord("OS/2", 6, widthClass);
}

FontFile& FontFile::BoldAndItalic(bool bold, bool italic)
{
    PutWord("OS/2", 62, bold || italic ? (bold ? 0x20 : 0) | (italic ? 0x01 : 0) : 0x40);
    return PutWord("head", 44, (bold ? 1 : 0) | (italic ? 2 : 0));
}

FontFile& FontFile::Flavour(std::uint32_t version)
{
    version_ = version;
    return *this;
}

FontFile& FontFile::Remove(const std::string& tag)
{
    tables_.erase(tag);
    return *this;
}

FontFile& FontFile::Put(const std::string& tag, Table table)
{
    tables_[tag] = std::move(table);
    return *this;
}

FontFile& FontFile::PutWord(const std::string& tag, std::size_t offset, int value)
{
    PutBig(tables_.at(tag), offset, static_cast<std::uint32_t>(value), 2);
    return *this;
}

FontFile::Table FontFile::Bytes(std::size_t start) const
{
    Table bytes;
    AppendBig(bytes, version_, 4);
    AppendBig(bytes, static_cast<std::uint32_t>(tables_.size()), 2);
    bytes.resize(12);  // the search fields, which nobody needs
    std::size_t offset = start + 12 + 16 * tables_.size();
    Table contents;
    for (const auto& [tag, table] : tables_)
    {
        bytes.insert(bytes.end(), tag.begin(), tag.end());
        AppendBig(bytes, 0, 4);  // the sum, which nobody checks
        AppendBig(bytes, static_cast<std::uint32_t>(offset + contents.size()), 4);
        AppendBig(bytes, static_cast<std::uint32_t>(table.size()), 4);
        contents.insert(contents.end(), table.begin(), table.end());
        contents.resize((contents.size() + 3) / 4 * 4);
    }
    bytes.insert(bytes.end(), contents.begin(), contents.end());
    return bytes;
}

void FontFile::Write(const std::string& path) const
{
    WriteBytes(path, Bytes(0));
}

void FontFile::WriteCollection(const std::vector<FontFile>& fonts, const std::string& path)
{
    Table bytes = {'t', 't', 'c', 'f', 0, 1, 0, 0};
    AppendBig(bytes, static_cast<std::uint32_t>(fonts.size()), 4);
    const std::size_t offsets = bytes.size();
    bytes.resize(offsets + 4 * fonts.size());
    for (std::size_t n = 0; n < fonts.size(); ++n)
    {
        const Table font = fonts[n].Bytes(bytes.size());
        PutBig(bytes, offsets + 4 * n, static_cast<std::uint32_t>(bytes.size()), 4);
        bytes.insert(bytes.end(), font.begin(), font.end());
    }
    WriteBytes(path, bytes);
}
