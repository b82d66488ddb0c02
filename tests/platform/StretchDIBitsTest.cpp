// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"
#include "tests/support/Bitmaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <tuple>

namespace
{

struct Rectangle
{
    int x;
    int y;
    int width;
    int height;
};

BitmapDescription Greys(int width, int height)
{
    BitmapDescription description(width, height, 8);
    for (int i = 0; i < 256; ++i)
    {
        const BYTE level = static_cast<BYTE>(i);
        description.colors[i] = {level, level, level, 0};
    }
    return description;
}

// A bitmap of 8 bits whose pixels are letters; 0 is a dot.
class Letters
{
public:
    explicit Letters(const std::vector<std::string>& rows)
        : width_(static_cast<int>(rows[0].size())),
          height_(static_cast<int>(rows.size())),
          selected_(Greys(width_, height_))
    {
        for (int y = 0; y < height_; ++y)
        {
            for (int x = 0; x < width_; ++x)
            {
                const char letter = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
                Row(y)[x] = static_cast<BYTE>(letter == '.' ? 0 : letter);
            }
        }
    }

    // Draws a part of another one into a part of this one.
    int Take(const Letters& picture, Rectangle to, Rectangle from)
    {
        return StretchDIBits(selected_.dc, to.x, to.y, to.width, to.height, from.x, from.y,
                             from.width, from.height, picture.selected_.bits,
                             Greys(picture.width_, picture.height_).Info(), DIB_RGB_COLORS,
                             SRCCOPY);
    }

    std::vector<std::string> Rows() const
    {
        std::vector<std::string> rows;
        for (int y = 0; y < height_; ++y)
        {
            std::string row(Row(y), Row(y) + width_);
            std::replace(row.begin(), row.end(), '\0', '.');
            rows.push_back(row);
        }
        return rows;
    }

private:
    BYTE* Row(int y) const { return selected_.bits + (width_ + 3) / 4 * 4 * (height_ - 1 - y); }

    int width_;
    int height_;
    SelectedBitmap selected_;
};

using Picture = std::vector<std::string>;

std::string Line(const std::string& source, int length)
{
    Letters target(Picture{std::string(static_cast<std::size_t>(length), '.')});
    const int width = static_cast<int>(source.size());
    EXPECT_EQ(target.Take(Letters(Picture{source}), {0, 0, length, 1}, {0, 0, width, 1}), 1);
    return target.Rows()[0];
}

TEST(StretchDIBits, PositionsCountFromTheTopLeft)
{
    const Letters source({"abc", "def", "ghi"});
    Letters target({"....", "....", "....", "...."});
    EXPECT_EQ(target.Take(source, {2, 1, 2, 2}, {0, 0, 2, 2}), 2);
    EXPECT_EQ(target.Rows(), (Picture{"....", "..ab", "..de", "...."}));
    EXPECT_EQ(target.Take(source, {0, 3, 2, 1}, {1, 2, 2, 1}), 1);
    EXPECT_EQ(target.Rows(), (Picture{"....", "..ab", "..de", "hi.."}));
}

TEST(StretchDIBits, APixelTakesTheSourcePixelUnderItsCentre)
{
    EXPECT_EQ(Line("ab", 3), "abb");   // (2 i + 1) 2 / 6: 1/3, 1, 5/3
    EXPECT_EQ(Line("abc", 2), "ac");   // (2 i + 1) 3 / 4: 3/4, 9/4
    EXPECT_EQ(Line("abcd", 2), "bd");  // 1, 3
    EXPECT_EQ(Line("abcde", 1), "c");  // 5/2
    EXPECT_EQ(Line("abc", 3), "abc");
    EXPECT_EQ(Line("ab", 5), "aabbb");  // 1/5, 3/5, 1, 7/5, 9/5
}

TEST(StretchDIBits, BandsJoinExactly)
{
    const Letters source({"abcdefg", "hijklmn", "opqrstu"});
    const Picture empty(11, std::string(23, '.'));
    Letters whole(empty);
    EXPECT_EQ(whole.Take(source, {-2, 0, 25, 11}, {0, 0, 7, 3}), 3);
    Picture joined(11);
    for (int y = 0; y < 11; ++y)
    {
        for (int x = 0; x < 23; x += 5)
        {
            const int width = std::min(5, 23 - x);
            Letters band(Picture{std::string(static_cast<std::size_t>(width), '.')});
            EXPECT_EQ(band.Take(source, {-2 - x, -y, 25, 11}, {0, 0, 7, 3}), 3);
            joined[static_cast<std::size_t>(y)] += band.Rows()[0];
        }
    }
    EXPECT_EQ(joined, whole.Rows());
}

TEST(StretchDIBits, ClippedRowsAreCounted)
{
    const Letters source({"ab", "cd"});
    Letters target({"..", ".."});
    EXPECT_EQ(target.Take(source, {1, -1, 2, 2}, {0, 0, 2, 2}), 2);
    EXPECT_EQ(target.Rows(), (Picture{".c", ".."}));
    EXPECT_EQ(target.Take(source, {5, 5, 2, 2}, {0, 0, 2, 2}), 2);
    EXPECT_EQ(target.Rows(), (Picture{".c", ".."}));
}

TEST(StretchDIBits, PixelsOutsideTheSourceStayAsTheyAre)
{
    const Letters source({"ab", "cd"});
    Letters target({"xxxx", "xxxx"});
    EXPECT_EQ(target.Take(source, {0, 0, 4, 2}, {-1, 1, 4, 2}), 2);
    EXPECT_EQ(target.Rows(), (Picture{"xcdx", "xxxx"}));
}

TEST(StretchDIBits, NegativeLengthsMirror)
{
    const Letters source({"abc", "def"});
    Letters target({"...", "..."});
    target.Take(source, {3, 0, -3, 2}, {0, 0, 3, 2});
    EXPECT_EQ(target.Rows(), (Picture{"cba", "fed"}));
    target.Take(source, {0, 2, 3, -2}, {0, 0, 3, 2});
    EXPECT_EQ(target.Rows(), (Picture{"def", "abc"}));
    target.Take(source, {3, 2, -3, -2}, {3, 2, -3, -2});
    EXPECT_EQ(target.Rows(), (Picture{"abc", "def"}));
}

TEST(StretchDIBits, EmptyRectanglesDrawNothing)
{
    const Letters source({"ab"});
    Letters target({".."});
    target.Take(source, {0, 0, 0, 1}, {0, 0, 2, 1});
    target.Take(source, {0, 0, 2, 0}, {0, 0, 2, 1});
    target.Take(source, {0, 0, 2, 1}, {0, 0, 2, 0});
    EXPECT_EQ(target.Rows(), (Picture{".."}));
}

TEST(StretchDIBits, HugeRectanglesAreDrawnInPart)
{
    const Letters source({"ab"});
    Letters target({"...."});
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    EXPECT_EQ(target.Take(source, {-1073741823 + 1, 0, most, 1}, {0, 0, 2, 1}), 1);
    EXPECT_EQ(target.Rows(), (Picture{"abbb"}));  // the middle is pixel 1073741823
    target.Take(source, {least, least, least, least}, {least, least, least, least});
    target.Take(source, {most, most, most, most}, {most, most, most, most});
    EXPECT_EQ(target.Rows(), (Picture{"abbb"}));
}

TEST(StretchDIBits, DepthsAndTablesAreConverted)
{
    BitmapDescription source(2, -1, 8);
    source.colors[3] = {10, 20, 30, 0};
    const BYTE pixels[] = {3, 0, 0, 0};
    const SelectedBitmap target(BitmapDescription(4, 2, 32));
    EXPECT_EQ(StretchDIBits(target.dc, 0, 0, 4, 2, 0, 0, 2, 1, pixels, source.Info(),
                            DIB_RGB_COLORS, SRCCOPY),
              1);
    EXPECT_EQ(target.Bytes(16, 12),
              (std::vector<int>{10, 20, 30, 255, 10, 20, 30, 255, 0, 0, 0, 255}));
}

TEST(StretchDIBits, RunLengthCodedPicturesAreDrawnLikeUncodedOnes)
{
    // 5 by 4, from the lowest row: runs; single pixels; a row that is skipped; a run after a skip.
    const BYTE code[] = {2, 10, 3, 20, 0, 0, 0, 5, 1, 2, 3, 4, 5, 0, 0, 0, 0, 2, 2, 1, 9, 30, 0, 1};
    const BYTE pixels[] = {10, 10, 20, 20, 20, 0, 0, 0, 1, 2, 3,  4,  5,  0, 0, 0,
                           0,  0,  0,  0,  0,  0, 0, 0, 0, 0, 30, 30, 30, 0, 0, 0};
    BitmapDescription uncoded = Greys(5, 4);
    BitmapDescription coded = uncoded;
    coded.header.biCompression = BI_RLE8;
    coded.header.biSizeImage = sizeof code;
    const std::pair<Rectangle, Rectangle> transfers[] = {
        {{0, 0, 5, 4}, {0, 0, 5, 4}},        // unscaled
        {{0, 0, 12, 12}, {0, 0, 5, 4}},      // enlarged
        {{1, 1, 2, 2}, {0, 0, 5, 4}},        // reduced
        {{12, 12, -12, -12}, {0, 0, 5, 4}},  // mirrored
        {{0, 0, 4, 3}, {1, 1, 3, 2}},        // a part
    };
    for (const int bitCount : {8, 24})
    {
        for (const auto& [to, from] : transfers)
        {
            const SelectedBitmap expected(bitCount == 8 ? Greys(12, 12)
                                                        : BitmapDescription(12, 12, 24));
            const SelectedBitmap drawn(bitCount == 8 ? Greys(12, 12)
                                                     : BitmapDescription(12, 12, 24));
            for (const auto& [target, bits, info] :
                 {std::tuple(&expected, pixels, &uncoded), std::tuple(&drawn, code, &coded)})
            {
                EXPECT_EQ(StretchDIBits(target->dc, to.x, to.y, to.width, to.height, from.x, from.y,
                                        from.width, from.height, bits, info->Info(), DIB_RGB_COLORS,
                                        SRCCOPY),
                          from.height);
            }
            EXPECT_EQ(drawn.Bytes(0, 12 * 12 * bitCount / 8),
                      expected.Bytes(0, 12 * 12 * bitCount / 8))
                << bitCount << " bits, " << to.width << " by " << to.height;
        }
    }
}

TEST(StretchDIBits, PixelsOfTheSameKindAreCopiedByteByByte)
{
    const BYTE pixels[] = {1, 2, 3, 77};
    const SelectedBitmap target(BitmapDescription(1, 1, 32));
    EXPECT_EQ(StretchDIBits(target.dc, 0, 0, 1, 1, 0, 0, 1, 1, pixels,
                            BitmapDescription(1, 1, 32).Info(), DIB_RGB_COLORS, SRCCOPY),
              1);
    EXPECT_EQ(target.Bytes(0, 4), (std::vector<int>{1, 2, 3, 77}));
}

TEST(StretchDIBits, OperationsThatAreNotOfferedAreRefused)
{
    const SelectedBitmap target(BitmapDescription(1, 1, 32));
    const BYTE pixels[4] = {};
    const BitmapDescription source(1, 1, 32);
    const auto draw = [&](HDC dc, const void* bits, UINT usage, DWORD operation) {
        return StretchDIBits(dc, 0, 0, 1, 1, 0, 0, 1, 1, bits, source.Info(), usage, operation);
    };
    EXPECT_EQ(draw(target.dc, pixels, DIB_RGB_COLORS, SRCCOPY), 1);
    EXPECT_EQ(draw(target.dc, pixels, DIB_RGB_COLORS, 0x00EE0086), 0);
    EXPECT_EQ(draw(target.dc, pixels, 1, SRCCOPY), 0);
    EXPECT_EQ(draw(target.dc, nullptr, DIB_RGB_COLORS, SRCCOPY), 0);
    EXPECT_EQ(draw(nullptr, pixels, DIB_RGB_COLORS, SRCCOPY), 0);
}

}  // namespace
