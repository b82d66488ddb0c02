// SPDX-License-Identifier: MIT
// For glWindowPos2i, which is younger than the header's own functions.
#define GL_GLEXT_PROTOTYPES

#include "platform/posix/BitmapPixels.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace posix
{
namespace
{

// A channel inside a pixel of 16 or 32 bits.
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

// What a channel's 256 values become on fewer levels, for each of the 16 thresholds of a 4 by 4
// Bayer matrix.
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
            // What a level stands for stays that level, so that plain colours stay plain.
            for (int level = 0; level < count; ++level)
            {
                levels_[threshold][level * 255 / largest] = static_cast<BYTE>(level);
            }
        }
    }

    /// \param x, y of the bitmap, from its lower left.
    DWORD At(int x, int y, BYTE value) const
    {
        static constexpr int bayer[4][4] = {
            {0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
        return levels_[bayer[y & 3][x & 3]][value];
    }

private:
    BYTE levels_[16][256];
};

// The number of levels of a mask; masks wider than a byte lose nothing with 256.
int LevelCount(DWORD mask)
{
    return 1 << std::clamp(std::popcount(mask), 1, 8);
}

// The three channels of a pixel with fewer bits, joined.
class Reducer
{
public:
    Reducer(const std::array<DWORD, 3>& masks, Reduction reduction)
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

    DWORD Pixel(int x, int y, const BYTE* bgra) const
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

constexpr std::array<DWORD, 3> plainMasks = {0xFF0000, 0x00FF00, 0x0000FF};

std::array<DWORD, 3> MasksOf(const Bitmap& bitmap)
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

void Put(BYTE* row, int bitCount, int x, DWORD pixel)
{
    switch (bitCount)
    {
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

bool IsPlain32(const Bitmap& bitmap)
{
    return bitmap.bitCount == 32 && bitmap.masks == plainMasks;
}

// The settings that pixels pass through when they are read, put to their first values while it
// lives. Not pushed as attributes: the stack could be full.
class PlainReading
{
public:
    explicit PlainReading(GLenum buffer)
    {
        for (std::size_t i = 0; i < std::size(integers); ++i)
        {
            glGetIntegerv(integers[i].name, &savedIntegers_[i]);
            glPixelStorei(integers[i].name, integers[i].plain);
        }
        for (std::size_t i = 0; i < std::size(transfers); ++i)
        {
            glGetFloatv(transfers[i].name, &savedTransfers_[i]);
            glPixelTransferf(transfers[i].name, transfers[i].plain);
        }
        glGetIntegerv(GL_READ_BUFFER, &savedBuffer_);
        glReadBuffer(buffer);
    }
    ~PlainReading()
    {
        glReadBuffer(static_cast<GLenum>(savedBuffer_));
        for (std::size_t i = 0; i < std::size(transfers); ++i)
        {
            glPixelTransferf(transfers[i].name, savedTransfers_[i]);
        }
        for (std::size_t i = 0; i < std::size(integers); ++i)
        {
            glPixelStorei(integers[i].name, savedIntegers_[i]);
        }
    }
    PlainReading(const PlainReading&) = delete;
    PlainReading& operator=(const PlainReading&) = delete;

private:
    struct Integer
    {
        GLenum name;
        GLint plain;
    };
    static constexpr Integer integers[] = {
        {GL_PACK_SWAP_BYTES, 0}, {GL_PACK_LSB_FIRST, 0},   {GL_PACK_ROW_LENGTH, 0},
        {GL_PACK_SKIP_ROWS, 0},  {GL_PACK_SKIP_PIXELS, 0}, {GL_PACK_ALIGNMENT, 4},
    };
    struct Transfer
    {
        GLenum name;
        GLfloat plain;
    };
    static constexpr Transfer transfers[] = {
        {GL_MAP_COLOR, 0},   {GL_RED_SCALE, 1},   {GL_RED_BIAS, 0},
        {GL_GREEN_SCALE, 1}, {GL_GREEN_BIAS, 0},  {GL_BLUE_SCALE, 1},
        {GL_BLUE_BIAS, 0},   {GL_ALPHA_SCALE, 1}, {GL_ALPHA_BIAS, 0},
    };
    GLint savedIntegers_[std::size(integers)];
    GLfloat savedTransfers_[std::size(transfers)];
    GLint savedBuffer_ = 0;
};

// Everything that pixels pass through when they are drawn, put aside while it lives.
class PlainDrawing
{
public:
    explicit PlainDrawing(GLenum buffer)
    {
        hasRoom_ = HasRoom(GL_ATTRIB_STACK_DEPTH, GL_MAX_ATTRIB_STACK_DEPTH) &&
                   HasRoom(GL_CLIENT_ATTRIB_STACK_DEPTH, GL_MAX_CLIENT_ATTRIB_STACK_DEPTH);
        if (!hasRoom_)
        {
            return;
        }
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        for (const GLenum capability :
             {GL_ALPHA_TEST, GL_BLEND, GL_COLOR_LOGIC_OP, GL_CULL_FACE, GL_DEPTH_TEST, GL_DITHER,
              GL_FOG, GL_LIGHTING, GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_TEXTURE_1D, GL_TEXTURE_2D})
        {
            glDisable(capability);
        }
        glDepthMask(GL_FALSE);
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        glDrawBuffer(buffer);
        glPixelZoom(1, 1);
        glPixelTransferf(GL_MAP_COLOR, 0);
        for (const GLenum scale : {GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE, GL_ALPHA_SCALE})
        {
            glPixelTransferf(scale, 1);
        }
        for (const GLenum bias : {GL_RED_BIAS, GL_GREEN_BIAS, GL_BLUE_BIAS, GL_ALPHA_BIAS})
        {
            glPixelTransferf(bias, 0);
        }
        for (const GLenum store : {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST, GL_UNPACK_ROW_LENGTH,
                                   GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS})
        {
            glPixelStorei(store, 0);
        }
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    }
    ~PlainDrawing()
    {
        if (hasRoom_)
        {
            glPopClientAttrib();
            glPopAttrib();
        }
    }
    PlainDrawing(const PlainDrawing&) = delete;
    PlainDrawing& operator=(const PlainDrawing&) = delete;

    bool HasRoom() const { return hasRoom_; }

private:
    static bool HasRoom(GLenum depthName, GLenum limitName)
    {
        GLint depth = 0;
        GLint limit = 0;
        glGetIntegerv(depthName, &depth);
        glGetIntegerv(limitName, &limit);
        return depth < limit;
    }

    bool hasRoom_;
};

}  // namespace

void ExpandRow(const Bitmap& bitmap, const BYTE* row, BYTE* bgra)
{
    const auto width = static_cast<std::size_t>(bitmap.width);
    if (IsPlain32(bitmap))
    {
        std::memcpy(bgra, row, 4 * width);
        return;
    }
    const Channel red(bitmap.masks[0]);
    const Channel green(bitmap.masks[1]);
    const Channel blue(bitmap.masks[2]);
    for (std::size_t x = 0; x < width; ++x, bgra += 4)
    {
        if (bitmap.bitCount <= 8)
        {
            const std::size_t perByte = 8 / static_cast<std::size_t>(bitmap.bitCount);
            const std::size_t shift =
                (perByte - 1 - x % perByte) * static_cast<std::size_t>(bitmap.bitCount);
            const unsigned index =
                (unsigned{row[x / perByte]} >> shift) & ((1U << bitmap.bitCount) - 1);
            const RGBQUAD& color = bitmap.colors[index];
            bgra[0] = color.rgbBlue;
            bgra[1] = color.rgbGreen;
            bgra[2] = color.rgbRed;
        }
        else if (bitmap.bitCount == 24)
        {
            std::memcpy(bgra, row + 3 * x, 3);
        }
        else
        {
            DWORD pixel = 0;
            const std::size_t bytes = static_cast<std::size_t>(bitmap.bitCount) / 8;
            std::memcpy(&pixel, row + bytes * x, bytes);
            bgra[0] = blue.Expand(pixel);
            bgra[1] = green.Expand(pixel);
            bgra[2] = red.Expand(pixel);
        }
        bgra[3] = 255;
    }
}

void StorePixels(Bitmap& bitmap, const BYTE* bgra, Reduction reduction)
{
    const auto width = static_cast<std::size_t>(bitmap.width);
    const Reducer reducer(MasksOf(bitmap), reduction);
    for (int y = 0; y < bitmap.height; ++y, bgra += 4 * width)
    {
        BYTE* const row = bitmap.Row(y);
        if (IsPlain32(bitmap))
        {
            std::memcpy(row, bgra, 4 * width);
            continue;
        }
        for (std::size_t x = 0; x < width; ++x)
        {
            if (bitmap.bitCount == 24)
            {
                std::memcpy(row + 3 * x, bgra + 4 * x, 3);
            }
            else
            {
                const int column = static_cast<int>(x);
                Put(row, bitmap.bitCount, column, reducer.Pixel(column, y, bgra + 4 * x));
            }
        }
    }
}

std::uint64_t HashOfBits(const Bitmap& bitmap)
{
    std::uint64_t hash = 0;
    std::uint64_t any = 0;
    const std::size_t size = bitmap.Size();  // whole words of four bytes
    for (std::size_t i = 0; i < size; i += sizeof(std::uint64_t))
    {
        std::uint64_t word = 0;
        std::memcpy(&word, bitmap.bits + i, std::min(sizeof word, size - i));
        any |= word;
        hash = std::rotl((hash ^ word) * 0x9E3779B97F4A7C15, 23);
    }
    return any == 0 ? 0 : hash | 1;
}

void ReadBits(Bitmap& bitmap, GLenum buffer)
{
    const PlainReading plain(buffer);
    const auto read = [&](BYTE* pixels) {
        glReadPixels(0, 0, bitmap.width, bitmap.height, GL_BGRA, GL_UNSIGNED_BYTE, pixels);
    };
    if (IsPlain32(bitmap) && !bitmap.isTopDown)
    {
        read(bitmap.bits);
        return;
    }
    std::vector<BYTE> pixels(4 * static_cast<std::size_t>(bitmap.width) *
                             static_cast<std::size_t>(bitmap.height));
    read(pixels.data());
    StorePixels(bitmap, pixels.data(),
                glIsEnabled(GL_DITHER) ? Reduction::Dither : Reduction::Round);
}

bool DrawBits(const Bitmap& bitmap, GLenum buffer)
{
    const PlainDrawing plain(buffer);
    if (!plain.HasRoom())
    {
        return false;
    }
    if (HashOfBits(bitmap) == 0 && bitmap.colors.empty())
    {
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        return true;
    }
    const auto width = static_cast<std::size_t>(bitmap.width);
    std::vector<BYTE> pixels(4 * width * static_cast<std::size_t>(bitmap.height));
    for (int y = 0; y < bitmap.height; ++y)
    {
        ExpandRow(bitmap, bitmap.Row(y), pixels.data() + 4 * width * static_cast<std::size_t>(y));
    }
    glWindowPos2i(0, 0);
    glDrawPixels(bitmap.width, bitmap.height, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
    return true;
}

}  // namespace posix
