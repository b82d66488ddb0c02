// SPDX-License-Identifier: MIT
#include "pictures/PictureReader.h"

#include "orvane/Error.h"
#include "pictures/RowPlacer.h"
#include "platform/Errors.h"
#include "platform/Files.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace orvane
{

namespace
{

using namespace std::string_view_literals;

struct Beginning
{
    PictureFormat format;
    std::string_view bytes;
    std::string_view further = {};  ///< at byte 8
};

constexpr Beginning beginnings[] = {
    {PictureFormat::Png, "\x89PNG\r\n\x1A\n"sv}, {PictureFormat::Jpeg, "\xFF\xD8\xFF"sv},
    {PictureFormat::WebP, "RIFF"sv, "WEBP"sv},   {PictureFormat::Tiff, "II\x2A\0"sv},
    {PictureFormat::Tiff, "MM\0\x2A"sv},         {PictureFormat::Tiff, "II\x2B\0"sv},
    {PictureFormat::Tiff, "MM\0\x2B"sv},         {PictureFormat::Bmp, "BM"sv},
};

std::string HexOf(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes.substr(0, 4))
    {
        char hex[4];
        std::snprintf(hex, sizeof hex, "%02X", static_cast<unsigned char>(byte));
        text += (text.empty() ? "" : " ") + std::string(hex);
    }
    return text.empty() ? "the end of the file" : text;
}

/// A file whose bytes lie in memory.
class MappedFile
{
public:
    explicit MappedFile(const std::string& path)
        : file_(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        if (file_ == INVALID_HANDLE_VALUE)
        {
            throw Error(path, GetLastErrorText());
        }
        const std::uint64_t length = Length();
        mapping_ = CreateFileMappingA(file_, nullptr, PAGE_READONLY, 0, 0, nullptr);
        view_ = mapping_ != nullptr ? MapViewOfFile(mapping_, FILE_MAP_READ, 0, 0, 0) : nullptr;
        if (view_ == nullptr)
        {
            const std::string reason =
                length == 0 ? "byte 0: the file ends, expected a picture" : GetLastErrorText();
            Close();
            throw Error(path, reason);
        }
        // Another program may have changed the file's length since it was mapped.
        count_ = std::min(length, Length());
    }
    ~MappedFile() { Close(); }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    const std::uint8_t* Bytes() const { return static_cast<const std::uint8_t*>(view_); }
    std::size_t Count() const { return count_; }
    bool HasLostBytes() const { return Length() < count_; }

private:
    std::uint64_t Length() const
    {
        DWORD high = 0;
        const DWORD low = GetFileSize(file_, &high);
        return std::uint64_t{high} << 32 | low;
    }
    void Close()
    {
        if (view_ != nullptr)
        {
            UnmapViewOfFile(view_);
        }
        if (mapping_ != nullptr)
        {
            CloseHandle(mapping_);
        }
        CloseHandle(file_);
    }

    HANDLE file_;
    HANDLE mapping_ = nullptr;
    void* view_ = nullptr;
    std::size_t count_ = 0;
};

}  // namespace

std::optional<PictureFormat> FormatOfContent(const std::uint8_t* bytes, std::size_t count)
{
    const std::string_view content(reinterpret_cast<const char*>(bytes), count);
    const auto* const known =
        std::find_if(std::begin(beginnings), std::end(beginnings), [content](const Beginning& b) {
            return content.substr(0, b.bytes.size()) == b.bytes &&
                   (b.further.empty() ||
                    (content.size() > 8 && content.substr(8, b.further.size()) == b.further));
        });
    return known != std::end(beginnings) ? std::optional(known->format) : std::nullopt;
}

ReadPicture ReadPictureBytes(const std::uint8_t* bytes, std::size_t count, const std::string& place)
{
    const PictureSource source = {bytes, count, place};
    switch (FormatOfContent(bytes, count).value_or(PictureFormat::Bmp))
    {
        case PictureFormat::Png:
            return ReadPng(source);
        case PictureFormat::Jpeg:
            return ReadJpeg(source);
        case PictureFormat::WebP:
            return ReadWebp(source);
        case PictureFormat::Tiff:
            return ReadTiff(source);
        case PictureFormat::Bmp:
            break;
    }
    throw Error(place + ": byte 0",
                HexOf({reinterpret_cast<const char*>(bytes), std::min<std::size_t>(count, 4)}),
                "the beginning of a BMP, PNG, JPEG, WebP or TIFF picture");
}

ReadPicture ReadPictureFile(const std::string& path)
{
    const MappedFile file(path);
    ReadPicture picture = ReadPictureBytes(file.Bytes(), file.Count(), path);
    if (file.HasLostBytes())
    {
        throw Error(path, "the file became shorter while it was read");
    }
    return picture;
}

}  // namespace orvane
