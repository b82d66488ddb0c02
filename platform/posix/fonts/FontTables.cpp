// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/FontTables.h"

#include "platform/posix/FileMapping.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <span>
#include <system_error>
#include <vector>
#include FT_TRUETYPE_TAGS_H

namespace posix
{
namespace
{

using Bytes = std::span<const BYTE>;

constexpr std::uint32_t quadraticVersion = 0x00010000;
constexpr std::uint32_t quadraticAppleVersion = TTAG_true;
constexpr std::uint32_t compactVersion = TTAG_OTTO;

/// The bytes of a file, read when they are asked for. Small tables mostly lie close together, so up
/// to 1024 bytes are read at a time.
class FontFileBytes
{
public:
    explicit FontFileBytes(const char* path)
        : path_(path), file_(OpenRegularFile(path)), size_(file_ != nullptr ? file_->Length() : 0)
    {}
    FontFileBytes(const FontFileBytes&) = delete;
    FontFileBytes& operator=(const FontFileBytes&) = delete;

    bool Has(std::uint64_t offset, std::uint64_t size) const
    {
        return offset <= size_ && size <= size_ - offset;
    }

    /// The bytes of a range, valid until the next call. Empty when the range is not inside the
    /// file. Throws std::system_error when the file cannot be read.
    Bytes At(std::uint64_t offset, std::size_t size)
    {
        if (!Has(offset, size))
        {
            return {};
        }
        if (offset < start_ || offset + size > start_ + read_)
        {
            BYTE* room = few_;
            std::size_t roomSize = sizeof few_;
            if (size > roomSize)
            {
                many_.resize(size);
                room = many_.data();
                roomSize = size;
            }
            const ssize_t got =
                pread(file_->descriptor, room, roomSize, static_cast<off_t>(offset));
            if (got < 0)
            {
                // Without an exception, a table that was not read would count as a table that the
                // font does not have.
                read_ = 0;
                throw std::system_error(errno, std::generic_category(), path_);
            }
            start_ = offset;
            read_ = got > 0 ? static_cast<std::size_t>(got) : 0;
            bytes_ = room;
            if (read_ < size)
            {
                return {};
            }
        }
        return {bytes_ + (offset - start_), size};
    }

private:
    const char* path_;            // borrowed
    std::shared_ptr<File> file_;  // null when the file cannot be read
    std::uint64_t size_;
    BYTE few_[1024];            // holds most ranges
    std::vector<BYTE> many_;    // holds a longer range
    const BYTE* bytes_ = few_;  // the bytes read last, in few_ or many_
    std::uint64_t start_ = 0;   // their offset in the file
    std::size_t read_ = 0;      // their number
};

/// Reads successive numbers, stored high byte first. The caller makes sure that there are enough
/// bytes.
class NumberReader
{
public:
    explicit NumberReader(Bytes bytes) : bytes_(bytes) {}

    std::uint16_t Word()
    {
        const auto value = static_cast<std::uint16_t>(bytes_[at_] << 8 | bytes_[at_ + 1]);
        at_ += 2;
        return value;
    }
    std::int16_t Short() { return static_cast<std::int16_t>(Word()); }
    std::uint32_t Long()
    {
        const std::uint32_t high = Word();
        return high << 16 | Word();
    }
    BYTE Byte() { return bytes_[at_++]; }
    void Skip(std::size_t count) { at_ += count; }

private:
    Bytes bytes_;
    std::size_t at_ = 0;
};

/// An entry of a font file's table directory.
struct TablePlace
{
    std::uint32_t tag;
    std::uint32_t offset;
    std::uint32_t size;
};

/// The table directory of one face of a file. It is empty when any table lies outside the file.
class TableDirectory
{
public:
    TableDirectory(FontFileBytes& file, int faceIndex)
    {
        const std::uint64_t start = StartOf(file, faceIndex);
        constexpr std::size_t headSize = 12;
        const Bytes head = file.At(start, headSize);
        if (head.empty())
        {
            return;
        }
        NumberReader reader(head);
        version_ = reader.Long();
        const std::uint16_t count = reader.Word();
        tables_.reserve(count);
        constexpr std::size_t entrySize = 16;
        const Bytes entries = file.At(start + headSize, count * entrySize);
        NumberReader entry(entries);
        for (std::size_t n = 0; n < entries.size() / entrySize; ++n)
        {
            TablePlace& table = tables_.emplace_back();
            table.tag = entry.Long();
            entry.Skip(4);
            table.offset = entry.Long();
            table.size = entry.Long();
            if (!file.Has(table.offset, table.size))
            {
                tables_.clear();
                return;
            }
        }
    }

    std::uint32_t Version() const { return version_; }

    /// The entry of a table; null when the face lacks it or it is empty.
    const TablePlace* Find(std::uint32_t tag) const
    {
        const auto found = std::find_if(tables_.begin(), tables_.end(),
                                        [&](const TablePlace& t) { return t.tag == tag; });
        return found != tables_.end() && found->size != 0 ? &*found : nullptr;
    }

private:
    /// The offset of a face's directory in the file, which may be a collection of faces. UINT64_MAX
    /// when the file has no such face.
    static std::uint64_t StartOf(FontFileBytes& file, int faceIndex)
    {
        constexpr std::size_t headSize = 12;
        const Bytes head = file.At(0, headSize);
        if (head.empty())
        {
            return UINT64_MAX;
        }
        NumberReader reader(head);
        if (reader.Long() != TTAG_ttcf)
        {
            return faceIndex == 0 ? 0 : UINT64_MAX;
        }
        reader.Skip(4);
        const auto index = static_cast<std::uint32_t>(faceIndex);
        if (index >= reader.Long())
        {
            return UINT64_MAX;
        }
        const Bytes offset = file.At(headSize + std::uint64_t{index} * 4, 4);
        return offset.empty() ? UINT64_MAX : NumberReader(offset).Long();
    }

    std::uint32_t version_ = 0;
    std::vector<TablePlace> tables_;
};

/// Reads the fields of an OS/2 table that measures come from; the other fields stay 0. False when
/// the table is too short.
bool ReadOs2(Bytes bytes, TT_OS2& os2)
{
    // In bytes, for versions 0, 1, and 2 or later.
    constexpr std::array<std::size_t, 3> sizes = {78, 86, 96};
    if (bytes.size() < sizes[0])
    {
        return false;
    }
    NumberReader reader(bytes);
    os2.version = reader.Word();
    if (os2.version == 0xFFFF || bytes.size() < sizes[std::min<std::size_t>(os2.version, 2)])
    {
        return false;
    }
    os2.xAvgCharWidth = reader.Short();
    reader.Skip(4);
    os2.fsType = reader.Word();
    for (FT_Short* const field :
         {&os2.ySubscriptXSize, &os2.ySubscriptYSize, &os2.ySubscriptXOffset,
          &os2.ySubscriptYOffset, &os2.ySuperscriptXSize, &os2.ySuperscriptYSize,
          &os2.ySuperscriptXOffset, &os2.ySuperscriptYOffset, &os2.yStrikeoutSize,
          &os2.yStrikeoutPosition})
    {
        *field = reader.Short();
    }
    reader.Skip(2);
    for (FT_Byte& field : os2.panose)
    {
        field = reader.Byte();
    }
    reader.Skip(20);
    os2.fsSelection = reader.Word();
    os2.usFirstCharIndex = reader.Word();
    os2.usLastCharIndex = reader.Word();
    os2.sTypoAscender = reader.Short();
    os2.sTypoDescender = reader.Short();
    os2.sTypoLineGap = reader.Short();
    os2.usWinAscent = reader.Word();
    os2.usWinDescent = reader.Word();
    if (os2.version >= 2)
    {
        reader.Skip(8);
        os2.sxHeight = reader.Short();
        os2.sCapHeight = reader.Short();
    }
    return true;
}

/// The same for a horizontal header (hhea).
bool ReadHeader(Bytes bytes, TT_HoriHeader& header)
{
    constexpr std::size_t size = 36;
    if (bytes.size() < size)
    {
        return false;
    }
    NumberReader reader(bytes);
    reader.Skip(4);
    header.Ascender = reader.Short();
    header.Descender = reader.Short();
    header.Line_Gap = reader.Short();
    reader.Skip(8);
    header.caret_Slope_Rise = reader.Short();
    header.caret_Slope_Run = reader.Short();
    return true;
}

/// The same for a PostScript table (post).
bool ReadPostScript(Bytes bytes, TT_Postscript& postScript)
{
    constexpr std::size_t size = 32;
    if (bytes.size() < size)
    {
        return false;
    }
    NumberReader reader(bytes);
    postScript.FormatType = static_cast<FT_Fixed>(reader.Long());
    reader.Skip(4);
    postScript.underlinePosition = reader.Short();
    postScript.underlineThickness = reader.Short();
    postScript.isFixedPitch = reader.Long();
    return true;
}

bool ReadHead(Bytes bytes, DesignTables& tables)
{
    constexpr std::size_t size = 54;
    if (bytes.size() < size)
    {
        return false;
    }
    NumberReader reader(bytes);
    reader.Skip(18);
    tables.unitsPerEm = reader.Word();
    reader.Skip(16);
    tables.box.left = reader.Short();
    tables.box.bottom = reader.Short();
    tables.box.right = reader.Short();
    tables.box.top = reader.Short();
    return tables.unitsPerEm != 0;
}

std::string ReadUniqueName(FontFileBytes& file, const TablePlace& table)
{
    constexpr std::size_t headSize = 6;
    constexpr std::size_t recordSize = 12;
    const Bytes head = table.size < headSize ? Bytes() : file.At(table.offset, headSize);
    if (head.empty())
    {
        return "";
    }
    NumberReader reader(head);
    reader.Skip(2);
    const std::uint16_t count = reader.Word();
    const std::uint16_t storage = reader.Word();
    const std::size_t storageStart = headSize + count * recordSize;
    if (storageStart > table.size)
    {
        return "";
    }
    struct Name
    {
        unsigned platform;
        std::size_t offset;
        std::size_t size;
    };
    std::vector<Name> names;
    NumberReader record(file.At(table.offset + headSize, count * recordSize));
    for (std::size_t n = 0; n < count; ++n)
    {
        const unsigned platform = record.Word();
        record.Skip(2);
        const unsigned language = record.Word();
        const unsigned id = record.Word();
        const std::size_t size = record.Word();
        const std::size_t offset = std::size_t{storage} + record.Word();
        // Empty names and names outside the table are ignored, as FreeType ignores them.
        if (UniqueName::Wants(platform, language, id) && size != 0 && offset >= storageStart &&
            offset + size <= table.size)
        {
            names.push_back({platform, offset, size});
        }
    }
    UniqueName unique;
    for (const Name& name : names)
    {
        const Bytes bytes = file.At(table.offset + name.offset, name.size);
        unique.Offer(name.platform, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        if (unique.IsFound())
        {
            break;
        }
    }
    return unique.Text();
}

/// Whether the face has the tables that its outlines need.
bool HasOutlines(const TableDirectory& directory, OutlineKind kind)
{
    const auto has = [&](std::uint32_t tag) { return directory.Find(tag) != nullptr; };
    if (!has(TTAG_maxp) || !has(TTAG_hmtx))
    {
        return false;
    }
    const std::uint32_t version = directory.Version();
    return kind == OutlineKind::Cubic
               ? version == compactVersion && (has(TTAG_CFF) || has(TTAG_CFF2))
               : (version == quadraticVersion || version == quadraticAppleVersion) &&
                     has(TTAG_glyf) && has(TTAG_loca);
}

}  // namespace

std::optional<DesignMetrics> ReadDesignTables(const InstalledFace& face)
{
    FontFileBytes file(face.file.c_str());
    const TableDirectory directory(file, face.index & 0xFFFF);
    const bool isInstance = face.index >> 16 != 0;
    if (!HasOutlines(directory, face.kind) || (isInstance && directory.Find(TTAG_MVAR) != nullptr))
    {
        return std::nullopt;
    }
    const auto read = [&](std::uint32_t tag, auto reader, auto& result) {
        const TablePlace* const table = directory.Find(tag);
        return table != nullptr && reader(file.At(table->offset, table->size), result);
    };
    DesignTables tables;
    TT_OS2 os2 = {};
    TT_HoriHeader header = {};
    TT_Postscript postScript = {};
    if (!read(TTAG_head, ReadHead, tables) || !read(TTAG_hhea, ReadHeader, header) ||
        !read(TTAG_OS2, ReadOs2, os2) || os2.usWinAscent + os2.usWinDescent == 0)
    {
        return std::nullopt;
    }
    tables.os2 = &os2;
    tables.header = &header;
    if (const TablePlace* const table = directory.Find(TTAG_post))
    {
        // Only the start of the table is read, because the rest holds the names of all glyphs.
        constexpr std::size_t startSize = 32;
        if (!ReadPostScript(file.At(table->offset, std::min<std::size_t>(table->size, startSize)),
                            postScript))
        {
            return std::nullopt;
        }
        tables.postScript = postScript.FormatType != 0 ? &postScript : nullptr;
        tables.fixedPitch = postScript.isFixedPitch != 0;
    }
    constexpr FT_UShort boldSelection = 0x20;
    tables.bold = (os2.fsSelection & boldSelection) != 0;
    if (const TablePlace* const table = directory.Find(TTAG_name))
    {
        tables.unique = ReadUniqueName(file, *table);
    }
    return DesignFrom(tables);
}

}  // namespace posix
