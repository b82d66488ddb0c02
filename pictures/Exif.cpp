// SPDX-License-Identifier: MIT
#include "pictures/Exif.h"

#include <cmath>
#include <optional>

namespace orvane
{

namespace
{

// EXIF data are a TIFF without pixels: a header, and a directory of entries of 12 bytes.
constexpr std::size_t headerBytes = 8;
constexpr std::size_t entryBytes = 12;

enum Tag : std::uint16_t
{
    orientationTag = 0x112,
    xResolutionTag = 0x11A,
    yResolutionTag = 0x11B,
    resolutionUnitTag = 0x128
};
enum Type : std::uint16_t
{
    shortType = 3,     // 16 bits
    rationalType = 5,  // two numbers of 32 bits, the second one the denominator
};

class Numbers
{
public:
    Numbers(const std::uint8_t* bytes, std::size_t count) : bytes_(bytes), count_(count) {}

    bool ReadByteOrder()
    {
        isBigEndian_ = count_ > 1 && bytes_[0] == 'M' && bytes_[1] == 'M';
        return isBigEndian_ || (count_ > 1 && bytes_[0] == 'I' && bytes_[1] == 'I');
    }
    /// A number of \p size bytes, or nothing beyond the end.
    std::optional<std::uint32_t> At(std::size_t place, std::size_t size) const
    {
        if (place > count_ || count_ - place < size)
        {
            return std::nullopt;
        }
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < size; ++i)
        {
            number = number << 8 | bytes_[place + (isBigEndian_ ? i : size - 1 - i)];
        }
        return number;
    }

private:
    const std::uint8_t* bytes_;
    std::size_t count_;
    bool isBigEndian_ = false;
};

void Append(Bytes& bytes, std::uint32_t number, int size)
{
    for (int i = 0; i < size; ++i)
    {
        bytes.push_back(static_cast<std::uint8_t>(number >> 8 * i));
    }
}

void AppendEntry(Bytes& bytes, Tag tag, Type type, std::uint32_t value)
{
    Append(bytes, tag, 2);
    Append(bytes, type, 2);
    Append(bytes, 1, 4);  // a single value
    Append(bytes, value, 4);
}

}  // namespace

Bytes MakeResolutionExif(double dotsPerInch)
{
    constexpr std::uint32_t entries = 3;
    constexpr std::uint32_t valuesPlace = headerBytes + 2 + entries * entryBytes + 4;
    constexpr std::uint32_t denominator = 1000;
    Bytes exif = {'I', 'I', 42, 0};
    Append(exif, headerBytes, 4);  // the place of the directory
    Append(exif, entries, 2);
    AppendEntry(exif, xResolutionTag, rationalType, valuesPlace);
    AppendEntry(exif, yResolutionTag, rationalType, valuesPlace);
    AppendEntry(exif, resolutionUnitTag, shortType, 2);  // inches
    Append(exif, 0, 4);                                  // there is no other directory
    Append(exif, static_cast<std::uint32_t>(std::lround(dotsPerInch * denominator)), 4);
    Append(exif, denominator, 4);
    return exif;
}

int OrientationIn(const std::uint8_t* exif, std::size_t count)
{
    Numbers numbers(exif, count);
    if (!numbers.ReadByteOrder() || numbers.At(2, 2) != 42)
    {
        return 1;
    }
    const std::size_t directory = numbers.At(4, 4).value_or(0);
    const std::uint32_t entries = numbers.At(directory, 2).value_or(0);
    for (std::uint32_t i = 0; i < entries; ++i)
    {
        const std::size_t entry = directory + 2 + i * entryBytes;
        if (numbers.At(entry, 2) == orientationTag && numbers.At(entry + 2, 2) == shortType)
        {
            const std::uint32_t orientation = numbers.At(entry + 8, 2).value_or(1);
            return orientation >= 1 && orientation <= 8 ? static_cast<int>(orientation) : 1;
        }
    }
    return 1;
}

}  // namespace orvane
