// SPDX-License-Identifier: MIT
#include "studio/HdrFile.h"

#include "host/CFile.h"
#include "orvane/Error.h"
#include "platform/Limits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace orvane
{

namespace
{

/// The largest size that a LightMap needs.
constexpr int mostColumns = 512;
constexpr int mostRows = 256;

using Pixel = std::array<unsigned char, 4>;  ///< red, green, blue and the exponent of all three

Light LightOf(const Pixel& pixel)
{
    if (pixel[3] == 0)
    {
        return {};
    }
    const float unit = std::ldexp(1.0f, pixel[3] - 136);
    // The largest number of a file is 1.7e38. The sum of many of them would be infinite.
    constexpr float most = 60000;
    Light light;
    for (std::size_t i = 0; i < light.size(); ++i)
    {
        light[i] = std::min((static_cast<float>(pixel[i]) + 0.5f) * unit, most);
    }
    return light;
}

/// The bytes of a file, one after the other.
class Bytes
{
public:
    explicit Bytes(const std::string& path) : path_(path)
    {
        CFileException failure;
        if (!file_.Open(path.c_str(), CFile::modeRead, &failure))
        {
            throw Error(path, failure.what());
        }
    }

    unsigned char Next()
    {
        if (next_ == end_)
        {
            Fill();
        }
        ++place_;
        return buffer_[next_++];
    }
    /// A line without its end, of at most 1,000 bytes.
    std::string Line()
    {
        std::string line;
        for (char each = static_cast<char>(Next()); each != '\n'; each = static_cast<char>(Next()))
        {
            line += each;
            if (line.size() > 1000)
            {
                Refuse("a line of more than 1000 bytes", "a header of a picture");
            }
        }
        return line;
    }
    [[noreturn]] void Refuse(const std::string& found, const std::string& expected) const
    {
        throw Error(path_ + ": byte " + std::to_string(place_), found, expected);
    }

private:
    void Fill()
    {
        try
        {
            end_ = file_.Read(buffer_.data(), static_cast<UINT>(buffer_.size()));
        }
        catch (const CFileException& failure)
        {
            throw Error(path_, failure.what());
        }
        next_ = 0;
        if (end_ == 0)
        {
            Refuse("the end of the file", "more of the picture");
        }
    }

    std::string path_;
    CFile file_;
    std::vector<unsigned char> buffer_ = std::vector<unsigned char>(65536);
    std::size_t next_ = 0;
    std::size_t end_ = 0;
    std::uint64_t place_ = 0;
};

int Number(const Bytes& bytes, std::string_view& text)
{
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || value < 1)
    {
        bytes.Refuse("the size \"" + std::string(text) + "\"", "numbers from 1 on");
    }
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return value;
}

struct PictureSize
{
    int width;
    int height;
};

PictureSize ReadHeader(Bytes& bytes)
{
    if (bytes.Next() != '#' || bytes.Next() != '?')
    {
        bytes.Refuse("another beginning", "#? of a Radiance picture (.hdr)");
    }
    bytes.Line();
    constexpr int mostLines = 1000;
    constexpr std::string_view format = "FORMAT=";
    for (int line = 0;; ++line)
    {
        const std::string text = bytes.Line();
        if (text.empty())
        {
            break;
        }
        if (text.compare(0, format.size(), format) == 0 && text != "FORMAT=32-bit_rle_rgbe")
        {
            bytes.Refuse(text, "FORMAT=32-bit_rle_rgbe");
        }
        if (line == mostLines)
        {
            bytes.Refuse("a header of more than 1000 lines", "a shorter header");
        }
    }
    const std::string sizes = bytes.Line();
    std::string_view rest = sizes;
    constexpr std::string_view rows = "-Y ";
    constexpr std::string_view columns = " +X ";
    const auto take = [&](std::string_view word) {
        if (rest.substr(0, word.size()) != word)
        {
            bytes.Refuse('"' + sizes + '"', "-Y HEIGHT +X WIDTH");
        }
        rest.remove_prefix(word.size());
    };
    PictureSize size;
    take(rows);
    size.height = Number(bytes, rest);
    take(columns);
    size.width = Number(bytes, rest);
    const std::int64_t pixels = std::int64_t{size.width} * size.height;
    if (!rest.empty() || size.width > limits::maxTextureSide ||
        pixels > limits::maxEnvironmentPixels)
    {
        bytes.Refuse('"' + sizes + '"',
                     "rows of at most " + std::to_string(limits::maxTextureSide) + " pixels and " +
                         std::to_string(limits::maxEnvironmentPixels) + " pixels in all");
    }
    return size;
}

/// Reads one of the four components of a row, packed in runs.
void ReadPacked(Bytes& bytes, std::vector<Pixel>& row, std::size_t component)
{
    for (std::size_t x = 0; x < row.size();)
    {
        const unsigned char code = bytes.Next();
        const bool isRun = code > 128;
        const std::size_t count = isRun ? code - 128u : code;
        if (count == 0 || count > row.size() - x)
        {
            bytes.Refuse("a run of " + std::to_string(count) + " pixels",
                         "1 to " + std::to_string(row.size() - x) + ", the rest of the row");
        }
        const unsigned char value = isRun ? bytes.Next() : 0;
        for (const std::size_t end = x + count; x < end; ++x)
        {
            row[x][component] = isRun ? value : bytes.Next();
        }
    }
}

void ReadRow(Bytes& bytes, std::vector<Pixel>& row)
{
    // A packed row begins with 2, 2 and its width. Other rows are not packed.
    Pixel first;
    std::generate(first.begin(), first.end(), [&] { return bytes.Next(); });
    const std::size_t width = row.size();
    if (first[0] == 2 && first[1] == 2 && first[2] < 128 && width >= 8 && width < 32768)
    {
        if (first[2] * 256u + first[3] != width)
        {
            bytes.Refuse("a row of " + std::to_string(first[2] * 256u + first[3]) + " pixels",
                         std::to_string(width));
        }
        for (std::size_t component = 0; component < first.size(); ++component)
        {
            ReadPacked(bytes, row, component);
        }
        return;
    }
    row[0] = first;
    std::for_each(row.begin() + 1, row.end(), [&bytes](Pixel& pixel) {
        std::generate(pixel.begin(), pixel.end(), [&] { return bytes.Next(); });
    });
}

}  // namespace

LightMap ReadHdrFile(const std::string& path)
{
    Bytes bytes(path);
    const PictureSize size = ReadHeader(bytes);
    LightMap map{std::min(size.width, mostColumns), std::min(size.height, mostRows), {}};
    const auto columns = static_cast<std::size_t>(map.width);
    map.pixels.resize(columns * static_cast<std::size_t>(map.height));
    std::vector<float> counts(map.pixels.size());
    std::vector<Pixel> row(static_cast<std::size_t>(size.width));
    for (int y = 0; y < size.height; ++y)
    {
        ReadRow(bytes, row);
        const auto line = static_cast<std::size_t>(std::int64_t{y} * map.height / size.height);
        for (std::size_t x = 0; x < row.size(); ++x)
        {
            const std::size_t place = line * columns + x * columns / row.size();
            const Light light = LightOf(row[x]);
            for (std::size_t i = 0; i < light.size(); ++i)
            {
                map.pixels[place][i] += light[i];
            }
            ++counts[place];
        }
    }
    for (std::size_t i = 0; i < counts.size(); ++i)
    {
        for (float& each : map.pixels[i])
        {
            each /= counts[i];
        }
    }
    return map;
}

}  // namespace orvane
