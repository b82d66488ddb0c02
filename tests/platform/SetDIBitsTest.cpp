// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"
#include "platform/Errors.h"
#include "tests/support/Bitmaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace
{

using Values = std::vector<int>;

// Pixels that lie just so in memory that reading behind them is found.
std::unique_ptr<BYTE[]> Exactly(const Values& values)
{
    auto bytes = std::make_unique<BYTE[]>(values.size());
    std::copy(values.begin(), values.end(), bytes.get());
    return bytes;
}

// What pixels become in a bitmap of 24 bits of the same size: blue, green, red by pixel from the
// lowest row, without padding.
Values Converted(const BitmapDescription& description, const Values& pixels)
{
    const int width = description.header.biWidth;
    const int height = std::abs(description.header.biHeight);
    const SelectedBitmap target(BitmapDescription(width, height, 24));
    std::fill_n(target.bits, (3 * width + 3) / 4 * 4 * height, BYTE{0xEE});
    const auto bits = Exactly(pixels);
    EXPECT_EQ(SetDIBits(target.dc, target.bitmap, 0, static_cast<UINT>(height), bits.get(),
                        description.Info(), DIB_RGB_COLORS),
              height);
    Values result;
    for (int y = 0; y < height; ++y)
    {
        const Values row = target.Bytes((3 * width + 3) / 4 * 4 * y, 3 * width);
        result.insert(result.end(), row.begin(), row.end());
    }
    return result;
}

constexpr RGBQUAD black = {0, 0, 0, 0};
constexpr RGBQUAD white = {255, 255, 255, 0};
constexpr RGBQUAD orange = {0x10, 0x80, 0xF0, 0};

BitmapDescription Indexed(int width, int height, int bitCount)
{
    BitmapDescription description(width, height, bitCount);
    description.colors[0] = black;
    description.colors[1] = white;
    description.colors[2] = orange;
    description.colors[15] = {1, 2, 3, 0};
    return description;
}

BitmapDescription RunLength(int width, int height, int bitCount, std::size_t bytes)
{
    BitmapDescription description = Indexed(width, height, bitCount);
    description.header.biCompression = bitCount == 8 ? BI_RLE8 : BI_RLE4;
    description.header.biSizeImage = static_cast<DWORD>(bytes);
    return description;
}

Values Unpacked(int width, int height, int bitCount, const Values& packed)
{
    const Values pixels = Converted(RunLength(width, height, bitCount, packed.size()), packed);
    // Back to indices.
    Values indices;
    for (std::size_t i = 0; i < pixels.size(); i += 3)
    {
        indices.push_back(pixels[i] == 0 ? 0 : pixels[i] == 255 ? 1 : pixels[i] == 0x10 ? 2 : 15);
    }
    return indices;
}

TEST(SetDIBits, OneBitTakesTheHighestBitFirst)
{
    EXPECT_EQ(Converted(Indexed(3, 1, 1), {0xA0, 0, 0, 0}),
              (Values{255, 255, 255, 0, 0, 0, 255, 255, 255}));
}

TEST(SetDIBits, FourBitsTakeTheHighHalfFirst)
{
    EXPECT_EQ(Converted(Indexed(3, 1, 4), {0x21, 0xF0, 0, 0}),
              (Values{0x10, 0x80, 0xF0, 255, 255, 255, 1, 2, 3}));
}

TEST(SetDIBits, EightBitsAreIndicesOfTheColourTable)
{
    EXPECT_EQ(Converted(Indexed(2, 2, 8), {2, 0, 9, 9, 1, 15, 9, 9}),
              (Values{0x10, 0x80, 0xF0, 0, 0, 0, 255, 255, 255, 1, 2, 3}));
}

TEST(SetDIBits, IndicesBeyondTheColourTableAreBlack)
{
    BitmapDescription description = Indexed(2, 1, 8);
    description.header.biClrUsed = 2;
    EXPECT_EQ(Converted(description, {1, 2, 0, 0}), (Values{255, 255, 255, 0, 0, 0}));
}

TEST(SetDIBits, SixteenBitPixelsWithoutMasksAreFivePerChannel)
{
    // Red 31, green 16, blue 0: 16 of 31 is 131 of 255, rounded down. The highest bit is nothing.
    EXPECT_EQ(Converted(BitmapDescription(2, 1, 16), {0x00, 0x7E, 0x00, 0x80}),
              (Values{0, 131, 255, 0, 0, 0}));
}

TEST(SetDIBits, SixteenBitsFollowTheirMasks)
{
    BitmapDescription description(2, 1, 16);
    description.SetMasks(0xF800, 0x07E0, 0x001F);
    EXPECT_EQ(Converted(description, {0xE0, 0x07, 0x1F, 0xF8}), (Values{0, 255, 0, 255, 0, 255}));
}

TEST(SetDIBits, TwentyFourBitsAreCopied)
{
    EXPECT_EQ(Converted(BitmapDescription(1, 2, 24), {1, 2, 3, 0, 4, 5, 6, 0}),
              (Values{1, 2, 3, 4, 5, 6}));
}

TEST(SetDIBits, ThirtyTwoBitsLoseTheirLastByte)
{
    EXPECT_EQ(Converted(BitmapDescription(2, 1, 32), {1, 2, 3, 200, 4, 5, 6, 0}),
              (Values{1, 2, 3, 4, 5, 6}));
}

TEST(SetDIBits, ARowOfAnyLengthLosesTheLastByteOfEachPixel)
{
    for (int width = 1; width <= 13; ++width)
    {
        Values pixels;
        Values expected;
        for (int i = 0; i < 4 * width; ++i)
        {
            pixels.push_back(255 - 3 * i);
            if (i % 4 != 3)
            {
                expected.push_back(255 - 3 * i);
            }
        }
        EXPECT_EQ(Converted(BitmapDescription(width, 1, 32), pixels), expected) << width;
    }
}

TEST(SetDIBits, ThirtyTwoBitsFollowTheirMasks)
{
    BitmapDescription description(1, 1, 32);
    description.SetMasks(0x000003FF, 0x000FFC00, 0x3FF00000);  // ten bits each
    // Red 1023, green 512, blue 0: 512 of 1023 is 127 of 255, rounded down.
    EXPECT_EQ(Converted(description, {0xFF, 0x03, 0x08, 0x00}), (Values{0, 127, 255}));
}

TEST(SetDIBits, TopDownRowsAreReversed)
{
    EXPECT_EQ(Converted(BitmapDescription(1, -2, 24), {1, 2, 3, 0, 4, 5, 6, 0}),
              (Values{4, 5, 6, 1, 2, 3}));
}

TEST(SetDIBits, MasksInsideALongerHeaderAreUsed)
{
    // A header of 52 bytes ends with them.
    BitmapDescription description(1, 1, 16);
    description.SetMasks(0x001F, 0x07E0, 0xF800);
    description.header.biSize = 52;
    EXPECT_EQ(Converted(description, {0x1F, 0x00, 0, 0}), (Values{0, 0, 255}));
}

TEST(SetDIBits, RunsAndSinglePixelsOfEightBits)
{
    // Three times 2; then 1, 15 and 2 one by one with a byte of padding; the picture ends.
    EXPECT_EQ(Unpacked(6, 1, 8, {3, 2, 0, 3, 1, 15, 2, 0, 0, 1}), (Values{2, 2, 2, 1, 15, 2}));
}

TEST(SetDIBits, RunsAndSinglePixelsOfFourBits)
{
    // Five pixels that take turns between 2 and 1; then 15, 1 and 2 one by one: two bytes, which
    // need no padding.
    EXPECT_EQ(Unpacked(8, 1, 4, {5, 0x21, 0, 3, 0xF1, 0x20, 0, 1}),
              (Values{2, 1, 2, 1, 2, 15, 1, 2}));
    // Five one by one take three bytes and a fourth of padding.
    EXPECT_EQ(Unpacked(6, 1, 4, {0, 5, 0xF1, 0x2F, 0x10, 0, 1, 0x22}),
              (Values{15, 1, 2, 15, 1, 2}));
}

TEST(SetDIBits, RowsEndAndPixelsAreSkippedInPackedPictures)
{
    // A pixel, the row's end, one to the right and one up, a pixel.
    EXPECT_EQ(Unpacked(3, 3, 8, {1, 2, 0, 0, 0, 2, 1, 1, 1, 1, 0, 1}),
              (Values{2, 0, 0, 0, 0, 0, 0, 1, 0}));
}

TEST(SetDIBits, PackedPicturesAreNotReadPastTheirSize)
{
    EXPECT_EQ(Unpacked(3, 1, 8, {1, 2, 5}), (Values{2, 0, 0}));        // half a run
    EXPECT_EQ(Unpacked(3, 1, 8, {0, 3, 2}), (Values{2, 0, 0}));        // one of three pixels
    EXPECT_EQ(Unpacked(3, 1, 8, {1, 2, 0, 2, 1}), (Values{2, 0, 0}));  // half a skip
    EXPECT_EQ(Unpacked(3, 1, 4, {0, 3, 0x21}), (Values{2, 1, 0}));
}

TEST(SetDIBits, PackedPixelsBeyondTheEdgeChangeNothing)
{
    EXPECT_EQ(Unpacked(2, 2, 8, {200, 2, 0, 0, 1, 1, 0, 0, 9, 1}), (Values{2, 2, 1, 0}));
    EXPECT_EQ(Unpacked(2, 1, 8, {0, 2, 255, 0, 9, 2}), (Values{0, 0}));
    EXPECT_EQ(Unpacked(2, 1, 8, {0, 2, 0, 255, 9, 2}), (Values{0, 0}));
}

TEST(SetDIBits, PackedPicturesNeverBeginWithTheHighestRow)
{
    const SelectedBitmap target(BitmapDescription(1, 1, 24));
    const Values packed = {1, 1, 0, 1};
    BitmapDescription description = RunLength(1, -1, 8, packed.size());
    EXPECT_EQ(SetDIBits(nullptr, target.bitmap, 0, 1, Exactly(packed).get(), description.Info(),
                        DIB_RGB_COLORS),
              0);
}

TEST(SetDIBits, ABitmapWithATableGetsTheNearestColourTheFirstOfEqualOnes)
{
    BitmapDescription table(4, 1, 4);
    table.colors[1] = white;
    table.colors[2] = orange;
    table.colors[3] = white;
    const SelectedBitmap target(table);
    const Values pixels = {0x11, 0x81, 0xEF, 250, 251, 252, 5, 5, 5, 255, 255, 255};
    EXPECT_EQ(SetDIBits(nullptr, target.bitmap, 0, 1, Exactly(pixels).get(),
                        BitmapDescription(4, 1, 24).Info(), DIB_RGB_COLORS),
              1);
    EXPECT_EQ(target.Bytes(0, 2), (Values{0x21, 0x01}));

    BitmapDescription two(9, 1, 1);
    two.colors[1] = white;
    const SelectedBitmap bits(two);
    const BitmapDescription source = Indexed(9, 1, 8);
    EXPECT_EQ(
        SetDIBits(nullptr, bits.bitmap, 0, 1, Exactly({1, 0, 1, 0, 0, 0, 0, 1, 1, 0, 0, 0}).get(),
                  source.Info(), DIB_RGB_COLORS),
        1);
    EXPECT_EQ(bits.Bytes(0, 2), (Values{0xA1, 0x80}));
}

TEST(SetDIBits, FewerBitsAreRounded)
{
    const SelectedBitmap target(BitmapDescription(2, 1, 16));
    // 255 is 31, 127 of 255 is 15.4 of 31, 128 is 15.56.
    EXPECT_EQ(SetDIBits(nullptr, target.bitmap, 0, 1, Exactly({127, 128, 255, 0, 0, 0, 0, 0}).get(),
                        BitmapDescription(2, 1, 24).Info(), DIB_RGB_COLORS),
              1);
    EXPECT_EQ(target.Bytes(0, 4), (Values{0x0F, 0x7E, 0, 0}));  // 31, 16, 15
}

TEST(SetDIBits, PixelsOfTheSameKindKeepTheirIndices)
{
    BitmapDescription twins(2, 1, 8);  // all black
    const SelectedBitmap target(twins);
    EXPECT_EQ(SetDIBits(nullptr, target.bitmap, 0, 1, Exactly({7, 9, 0, 0}).get(), twins.Info(),
                        DIB_RGB_COLORS),
              1);
    EXPECT_EQ(target.Bytes(0, 2), (Values{7, 9}));
}

TEST(SetDIBits, RowsGoToTheRowsAskedFor)
{
    const auto rows = [](int height, UINT first, UINT count, int expected) {
        const SelectedBitmap target(BitmapDescription(1, 4, 8));
        EXPECT_EQ(
            SetDIBits(nullptr, target.bitmap, first, count, Exactly({1, 0, 0, 0, 2, 0, 0, 0}).get(),
                      BitmapDescription(1, height, 8).Info(), DIB_RGB_COLORS),
            expected);
        Values result;
        for (int y = 0; y < 4; ++y)
        {
            result.push_back(target.bits[4 * y]);
        }
        return result;
    };
    EXPECT_EQ(rows(2, 1, 2, 2), (Values{0, 1, 2, 0}));
    EXPECT_EQ(rows(-2, 1, 2, 2), (Values{0, 2, 1, 0}));
    EXPECT_EQ(rows(4, 2, 1, 1), (Values{0, 0, 1, 0}));
    EXPECT_EQ(rows(2, 0, 9, 2), (Values{1, 2, 0, 0}));  // there are no more
    EXPECT_EQ(rows(2, 3, 2, 1), (Values{0, 0, 0, 1}));  // the second lies above
    EXPECT_EQ(rows(2, 4, 2, 0), (Values{0, 0, 0, 0}));
    EXPECT_EQ(rows(2, 0, 0, 0), (Values{0, 0, 0, 0}));
}

TEST(SetDIBits, WiderAndNarrowerPicturesAreCutAtTheRight)
{
    const SelectedBitmap target(BitmapDescription(2, 1, 8));
    EXPECT_EQ(SetDIBits(nullptr, target.bitmap, 0, 1, Exactly({1, 2, 3, 4}).get(),
                        BitmapDescription(4, 1, 8).Info(), DIB_RGB_COLORS),
              1);
    EXPECT_EQ(target.Bytes(0, 4), (Values{1, 2, 0, 0}));
    EXPECT_EQ(SetDIBits(nullptr, target.bitmap, 0, 1, Exactly({5, 0, 0, 0}).get(),
                        BitmapDescription(1, 1, 8).Info(), DIB_RGB_COLORS),
              1);
    EXPECT_EQ(target.Bytes(0, 4), (Values{5, 2, 0, 0}));
}

TEST(SetDIBits, InvalidPicturesAndBitmapsAreRefused)
{
    const SelectedBitmap target(BitmapDescription(1, 1, 24));
    const auto bits = Exactly({0, 0, 0, 0});
    const auto set = [&](const BitmapDescription& description, UINT usage = DIB_RGB_COLORS) {
        return SetDIBits(nullptr, target.bitmap, 0, 1, bits.get(), description.Info(), usage);
    };
    EXPECT_EQ(set(BitmapDescription(1, 1, 24)), 1);
    EXPECT_EQ(set(BitmapDescription(1, 1, 24), 1), 0);
    EXPECT_EQ(set(BitmapDescription(0, 1, 24)), 0);
    EXPECT_EQ(set(BitmapDescription(1, 1, 2)), 0);
    BitmapDescription compressed(1, 1, 24);
    compressed.header.biCompression = 4;
    EXPECT_EQ(set(compressed), 0);
    compressed.header.biCompression = BI_RLE8;
    EXPECT_EQ(set(compressed), 0);
    EXPECT_EQ(SetDIBits(nullptr, target.bitmap, 0, 1, nullptr, BitmapDescription(1, 1, 24).Info(),
                        DIB_RGB_COLORS),
              0);
    EXPECT_EQ(SetDIBits(nullptr, target.bitmap, 0, 1, bits.get(), nullptr, DIB_RGB_COLORS), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(SetDIBits(nullptr, nullptr, 0, 1, bits.get(), BitmapDescription(1, 1, 24).Info(),
                        DIB_RGB_COLORS),
              0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

}  // namespace
