// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/BitmapPixels.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace posix
{
namespace
{

/// The place of a channel (red, green or blue) inside a pixel of 16 or 32 bits.
struct Channel
{
    explicit Channel(DWORD mask) : shift(std::countr_zero(mask)), largest(mask >> (shift & 31)) {}

    BYTE Expand(DWORD pixel) const
    {
        const std::uint64_t level = (pixel >> (shift & 31)) & largest;
        return largest == 0 ? 0 : static_cast<BYTE>(level * 255 / largest);
    }

    int shift;
    DWORD largest;
};

/// A table that reduces a channel of 256 values to fewer levels. Dithering is ordered, by the 16
/// thresholds of a 4 by 4 Bayer matrix.
class Levels
{
public:
    Levels(int count, Reduction reduction)
    {
        const int largest = count - 1;
        for (int threshold = 0; threshold < 16; ++threshold)
        {
            for (int value = 0; value < 256; ++value)
            {
                // value * largest / 255 plus (threshold + 1/2) / 16, or plus 1/2.
                const int add = reduction == Reduction::Dither ? 2 * threshold + 1 : 16;
                levels_[threshold][value] =
                    static_cast<BYTE>((value * largest * 32 + add * 255) / (255 * 32));
            }
            // A value that is exactly one of the levels is not dithered, so that plain areas stay
            // plain.
            for (int level = 0; level < count; ++level)
            {
                levels_[threshold][level * 255 / largest] = static_cast<BYTE>(level);
            }
        }
    }

    /// The level for a value at a pixel of the bitmap, whose position counts from the lower left.
    DWORD At(int x, int y, BYTE value) const
    {
        static constexpr int bayer[4][4] = {
            {0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
        return levels_[bayer[y & 3][x & 3]][value];
    }

private:
    BYTE levels_[16][256];
};

/// The number of levels of a channel with this mask: 256 at most, because the source has no more
/// levels.
int LevelCount(DWORD mask)
{
    return 1 << std::clamp(std::popcount(mask), 1, 8);
}

/// Copies pixels of four bytes without their fourth byte.
void PackTriples(const BYTE* bgra, int count, BYTE* out)
{
    constexpr std::uint64_t first = 0xFFFFFF;
    constexpr std::uint64_t second = first << 32;
    for (; count >= 4; count -= 4, bgra += 16, out += 12)
    {
        std::uint64_t low;  // two pixels; the other variable holds the next two
        std::uint64_t high;
        std::memcpy(&low, bgra, sizeof low);
        std::memcpy(&high, bgra + sizeof low, sizeof high);
        low = (low & first) | (low & second) >> 8;
        high = (high & first) | (high & second) >> 8;
        const std::uint64_t begin = low | high << 48;
        const auto end = static_cast<std::uint32_t>(high >> 16);
        std::memcpy(out, &begin, sizeof begin);
        std::memcpy(out + sizeof begin, &end, sizeof end);
    }
    for (; count > 0; --count, bgra += 4, out += 3)
    {
        std::memcpy(out, bgra, 3);
    }
}

constexpr std::array<DWORD, 3> plainMasks = {0xFF0000, 0x00FF00, 0x0000FF};

void Put(BYTE* row, int bitCount, int x, DWORD pixel)
{
    switch (bitCount)
    {
        case 1: {
            const int bit = 7 - x % 8;
            row[x / 8] = static_cast<BYTE>((row[x / 8] & ~(1 << bit)) | pixel << bit);
            break;
        }
        case 4: {
            BYTE& both = row[x / 2];
            both =
                static_cast<BYTE>(x % 2 == 0 ? (both & 0x0F) | pixel << 4 : (both & 0xF0) | pixel);
            break;
        }
        case 8:
            row[x] = static_cast<BYTE>(pixel);
            break;
        case 16: {
            const WORD value = static_cast<WORD>(pixel);
            std::memcpy(row + 2 * x, &value, sizeof value);
            break;
        }
        default:
            std::memcpy(row + 4 * x, &pixel, sizeof pixel);
    }
}

/// Converts bytes blue, green, red, alpha to the pixels of one kind of bitmap.
class Encoder
{
public:
    virtual ~Encoder() = default;
    virtual DWORD Pixel(int x, int y, const BYTE* bgra) = 0;
};

/// For pixels that consist of three channels, each with a mask.
class MaskEncoder final : public Encoder
{
public:
    MaskEncoder(const std::array<DWORD, 3>& masks, Reduction reduction)
        : red_(LevelCount(masks[0]), reduction),
          green_(LevelCount(masks[1]), reduction),
          blue_(LevelCount(masks[2]), reduction)
    {
        for (int i = 0; i < 3; ++i)
        {
            shifts_[i] =
                masks[i] == 0 ? 0 : std::bit_width(masks[i]) - std::min(8, std::popcount(masks[i]));
        }
    }

    DWORD Pixel(int x, int y, const BYTE* bgra) override
    {
        return red_.At(x, y, bgra[2]) << shifts_[0] | green_.At(x, y, bgra[1]) << shifts_[1] |
               blue_.At(x, y, bgra[0]) << shifts_[2];
    }

private:
    Levels red_;
    Levels green_;
    Levels blue_;
    int shifts_[3];
};

/// For pixels that are indices of a colour table. The nearest colour is taken; of equally near
/// colours, the first.
class TableEncoder final : public Encoder
{
public:
    explicit TableEncoder(const std::vector<RGBQUAD>& colors) : colors_(colors) {}

    DWORD Pixel(int, int, const BYTE* bgra) override
    {
        const DWORD color = bgra[0] | DWORD{bgra[1]} << 8 | DWORD{bgra[2]} << 16;
        Found& found = found_[(color * 0x9E3779B1) >> 22];
        if (found.color != color)
        {
            found = {color, Nearest(bgra)};
        }
        return found.index;
    }

private:
    struct Found
    {
        DWORD color = 0xFFFFFFFF;  // a value that no colour has
        DWORD index = 0;
    };

    DWORD Nearest(const BYTE* bgra) const
    {
        const auto distance = [bgra](const RGBQUAD& entry) {
            const int blue = bgra[0] - entry.rgbBlue;
            const int green = bgra[1] - entry.rgbGreen;
            const int red = bgra[2] - entry.rgbRed;
            return red * red + green * green + blue * blue;
        };
        const auto nearest = std::min_element(colors_.begin(), colors_.end(),
                                              [&](const RGBQUAD& left, const RGBQUAD& right) {
                                                  return distance(left) < distance(right);
                                              });
        return static_cast<DWORD>(nearest - colors_.begin());
    }

    const std::vector<RGBQUAD>& colors_;
    std::vector<Found> found_ =
        std::vector<Found>(1024);  // answers already found, by a hash of the colour
};

/// The masks of a bitmap that OpenGL draws into, see Colors::OpenGL.
std::array<DWORD, 3> RenderedMasks(const Bitmap& bitmap)
{
    switch (bitmap.bitCount)
    {
        case 4:
            return {0x1, 0x2, 0x4};
        case 8:
            return {0x07, 0x38, 0xC0};
        default:
            return bitmap.masks;
    }
}

std::unique_ptr<Encoder> EncoderOf(const Bitmap& bitmap, Reduction reduction, Colors colors)
{
    if (bitmap.bitCount <= 8 && colors == Colors::Own)
    {
        return std::make_unique<TableEncoder>(bitmap.colors);
    }
    return std::make_unique<MaskEncoder>(RenderedMasks(bitmap), reduction);
}

}  // namespace

bool IsPlain32(const Bitmap& bitmap)
{
    return bitmap.bitCount == 32 && bitmap.masks == plainMasks;
}

void ExpandPixels(const Bitmap& bitmap, const BYTE* row, int first, int count, BYTE* bgra)
{
    const auto begin = static_cast<std::size_t>(first);
    const auto end = begin + static_cast<std::size_t>(count);
    if (IsPlain32(bitmap))
    {
        std::memcpy(bgra, row + 4 * begin, 4 * (end - begin));
        return;
    }
    if (bitmap.bitCount <= 8)
    {
        const std::size_t bits = static_cast<std::size_t>(bitmap.bitCount);
        const std::size_t perByte = 8 / bits;
        for (std::size_t x = begin; x < end; ++x, bgra += 4)
        {
            const std::size_t shift = (perByte - 1 - x % perByte) * bits;
            const unsigned index = (unsigned{row[x / perByte]} >> shift) & ((1U << bits) - 1);
            std::memcpy(bgra, &bitmap.colors[index], 3);
            bgra[3] = 255;
        }
        return;
    }
    if (bitmap.bitCount == 24)
    {
        for (std::size_t x = begin; x < end; ++x, bgra += 4)
        {
            std::memcpy(bgra, row + 3 * x, 3);
            bgra[3] = 255;
        }
        return;
    }
    const Channel red(bitmap.masks[0]);
    const Channel green(bitmap.masks[1]);
    const Channel blue(bitmap.masks[2]);
    const std::size_t bytes = static_cast<std::size_t>(bitmap.bitCount) / 8;
    for (std::size_t x = begin; x < end; ++x, bgra += 4)
    {
        DWORD pixel = 0;
        std::memcpy(&pixel, row + bytes * x, bytes);
        bgra[0] = blue.Expand(pixel);
        bgra[1] = green.Expand(pixel);
        bgra[2] = red.Expand(pixel);
        bgra[3] = 255;
    }
}

struct PixelWriter::State
{
    Bitmap& bitmap;
    std::unique_ptr<Encoder> encoder;  // null when the bytes are copied as they are
};

PixelWriter::PixelWriter(Bitmap& bitmap, Reduction reduction, Colors colors)
    : state_(new State{bitmap, nullptr})
{
    if (bitmap.bitCount != 24 && !IsPlain32(bitmap))
    {
        state_->encoder = EncoderOf(bitmap, reduction, colors);
    }
}

PixelWriter::~PixelWriter() = default;

void PixelWriter::Write(int x, int y, int count, const BYTE* bgra)
{
    const Bitmap& bitmap = state_->bitmap;
    BYTE* const row = bitmap.Row(y);
    const auto begin = static_cast<std::size_t>(x);
    if (state_->encoder != nullptr)
    {
        for (int i = 0; i < count; ++i, bgra += 4)
        {
            Put(row, bitmap.bitCount, x + i, state_->encoder->Pixel(x + i, y, bgra));
        }
    }
    else if (bitmap.bitCount == 32)
    {
        std::memcpy(row + 4 * begin, bgra, 4 * static_cast<std::size_t>(count));
    }
    else
    {
        PackTriples(bgra, count, row + 3 * begin);
    }
}

std::uint64_t HashOfBits(const Bitmap& bitmap)
{
    std::uint64_t hash = 0;
    std::uint64_t any = 0;
    const std::size_t size = bitmap.Size();  // a multiple of four bytes
    for (std::size_t i = 0; i < size; i += sizeof(std::uint64_t))
    {
        std::uint64_t word = 0;
        std::memcpy(&word, bitmap.bits + i, std::min(sizeof word, size - i));
        any |= word;
        hash = std::rotl((hash ^ word) * 0x9E3779B97F4A7C15, 23);
    }
    return any == 0 ? 0 : hash | 1;
}

}  // namespace posix
