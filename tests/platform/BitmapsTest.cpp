// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"

#include "platform/Errors.h"
#include "platform/Fonts.h"
#include "tests/support/Bitmaps.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

HBITMAP Create(const BitmapDescription& description)
{
    return CreateDIBSection(nullptr, description.Info(), DIB_RGB_COLORS, nullptr, nullptr, 0);
}

TEST(Bitmaps, RowsArePaddedToFourBytes)
{
    const struct
    {
        int bitCount;
        LONG rowBytes;
    } cases[] = {{1, 4}, {4, 4}, {8, 8}, {16, 12}, {24, 16}, {32, 20}};
    for (const auto& [bitCount, rowBytes] : cases)
    {
        SCOPED_TRACE(bitCount);
        const SelectedBitmap selected(BitmapDescription(5, 3, bitCount));
        ASSERT_NE(selected.bitmap, nullptr);
        DIBSECTION section{};
        EXPECT_EQ(GetObjectA(selected.bitmap, sizeof section, &section),
                  static_cast<int>(sizeof section));
        EXPECT_EQ(section.dsBm.bmWidth, 5);
        EXPECT_EQ(section.dsBm.bmHeight, 3);
        EXPECT_EQ(section.dsBm.bmWidthBytes, rowBytes);
        EXPECT_EQ(section.dsBm.bmBitsPixel, bitCount);
        EXPECT_EQ(section.dsBm.bmBits, selected.bits);
        EXPECT_EQ(section.dsBmih.biSizeImage, static_cast<DWORD>(3 * rowBytes));
        EXPECT_EQ(selected.Bytes(0, 3 * rowBytes), std::vector<int>(3 * rowBytes, 0));
    }
}

TEST(Bitmaps, SixteenBitsAreFivePerChannelWithoutMasks)
{
    DIBSECTION section{};
    const SelectedBitmap plain(BitmapDescription(2, 2, 16));
    GetObjectA(plain.bitmap, sizeof section, &section);
    EXPECT_EQ(section.dsBitfields[0], 0x7C00U);
    EXPECT_EQ(section.dsBitfields[1], 0x03E0U);
    EXPECT_EQ(section.dsBitfields[2], 0x001FU);

    BitmapDescription description(2, 2, 16);
    description.SetMasks(0xF800, 0x07E0, 0x001F);
    const SelectedBitmap masked(description);
    GetObjectA(masked.bitmap, sizeof section, &section);
    EXPECT_EQ(section.dsBitfields[1], 0x07E0U);
}

TEST(Bitmaps, ATopDownBitmapKeepsItsNegativeHeight)
{
    const SelectedBitmap selected(BitmapDescription(4, -3, 24));
    DIBSECTION section{};
    GetObjectA(selected.bitmap, sizeof section, &section);
    EXPECT_EQ(section.dsBm.bmHeight, 3);
    EXPECT_EQ(section.dsBmih.biHeight, -3);
}

TEST(Bitmaps, InvalidBitmapDescriptionsAreRefused)
{
    EXPECT_EQ(Create(BitmapDescription(0, 1, 24)), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Create(BitmapDescription(-1, 1, 24)), nullptr);
    EXPECT_EQ(Create(BitmapDescription(1, 0, 24)), nullptr);
    EXPECT_EQ(Create(BitmapDescription(1, std::numeric_limits<LONG>::min(), 24)), nullptr);
    EXPECT_EQ(Create(BitmapDescription(1, 1, 2)), nullptr);
    EXPECT_EQ(Create(BitmapDescription(1, 1, 0)), nullptr);
    EXPECT_EQ(Create(BitmapDescription(0x7FFFFFFF, 0x7FFFFFFF, 32)), nullptr);
    BitmapDescription masked(1, 1, 24);
    masked.SetMasks(1, 2, 4);
    EXPECT_EQ(Create(masked), nullptr);
    BitmapDescription packed(1, 1, 8);
    packed.header.biCompression = 1;
    EXPECT_EQ(Create(packed), nullptr);
    BitmapDescription old(1, 1, 24);
    old.header.biSize = 12;
    EXPECT_EQ(Create(old), nullptr);
    EXPECT_EQ(CreateDIBSection(nullptr, nullptr, DIB_RGB_COLORS, nullptr, nullptr, 0), nullptr);
    const BitmapDescription good(1, 1, 24);
    EXPECT_EQ(CreateDIBSection(nullptr, good.Info(), 1, nullptr, nullptr, 0), nullptr);
}

TEST(Bitmaps, GetObjectFillsTheLargestRecordThatFits)
{
    const SelectedBitmap selected(BitmapDescription(4, 3, 24));
    BITMAP record{};
    EXPECT_EQ(GetObjectA(selected.bitmap, sizeof record, &record), static_cast<int>(sizeof record));
    EXPECT_EQ(record.bmWidth, 4);
    EXPECT_EQ(GetObjectA(selected.bitmap, 0, nullptr), static_cast<int>(sizeof record));
    EXPECT_EQ(GetObjectA(selected.bitmap, 3, &record), 0);
    EXPECT_EQ(GetObjectA(selected.dc, sizeof record, &record), 0);
}

TEST(DeviceContexts, ASelectedBitmapCannotBeDeleted)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = Create(BitmapDescription(4, 4, 24));
    const HGDIOBJ first = SelectObject(dc, bitmap);
    EXPECT_NE(first, nullptr);
    EXPECT_FALSE(DeleteObject(bitmap));
    EXPECT_EQ(SelectObject(dc, first), bitmap);
    EXPECT_TRUE(DeleteObject(bitmap));
    EXPECT_FALSE(DeleteObject(bitmap));
    EXPECT_TRUE(DeleteDC(dc));
    EXPECT_FALSE(DeleteDC(dc));
}

TEST(DeviceContexts, ABitmapCanBeDeletedAfterItsDeviceContext)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = Create(BitmapDescription(4, 4, 24));
    SelectObject(dc, bitmap);
    SelectObject(dc, bitmap);  // once more changes nothing
    DeleteDC(dc);
    EXPECT_TRUE(DeleteObject(bitmap));
}

TEST(DeviceContexts, ABitmapIsSelectedIntoOnlyOneContextAtATime)
{
    const SelectedBitmap one(BitmapDescription(4, 4, 24));
    const HDC other = CreateCompatibleDC(nullptr);
    EXPECT_EQ(SelectObject(other, one.bitmap), nullptr);
    // The first bitmap is in every new context.
    EXPECT_EQ(SelectObject(other, one.previous), one.previous);
    DeleteDC(other);
}

TEST(DeviceContexts, DefaultObjectsAreNotDeleted)
{
    const SelectedBitmap selected(BitmapDescription(4, 4, 24));
    EXPECT_TRUE(DeleteObject(selected.previous));
    EXPECT_EQ(SelectObject(selected.dc, selected.previous), selected.bitmap);
}

TEST(DeviceContexts, SelectingAFontLeavesTheBitmapSelected)
{
    const SelectedBitmap selected(BitmapDescription(4, 4, 24));
    const HDC other = CreateCompatibleDC(nullptr);
    LOGFONTA description{};
    const HFONT font = CreateFontIndirectA(&description);
    const HGDIOBJ firstFont = SelectObject(selected.dc, font);
    EXPECT_NE(firstFont, nullptr);
    EXPECT_NE(firstFont, selected.bitmap);
    // A font may be in several contexts.
    EXPECT_EQ(SelectObject(other, font), firstFont);
    EXPECT_FALSE(DeleteObject(font));
    EXPECT_EQ(SelectObject(selected.dc, firstFont), font);
    EXPECT_FALSE(DeleteObject(font));
    DeleteDC(other);
    EXPECT_TRUE(DeleteObject(font));
}

TEST(DeviceContexts, WrongHandlesAreRefused)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(SelectObject(dc, nullptr), nullptr);
    EXPECT_EQ(SelectObject(dc, dc), nullptr);
    EXPECT_EQ(SelectObject(nullptr, dc), nullptr);
    EXPECT_FALSE(DeleteObject(dc));
    EXPECT_FALSE(DeleteObject(nullptr));
    EXPECT_FALSE(DeleteDC(nullptr));
    EXPECT_TRUE(GdiFlush());
    DeleteDC(dc);
}

TEST(Errors, TheLastErrorOfAThreadHasANumberAndAText)
{
    SetLastError(0);
    EXPECT_EQ(GetLastErrorText(), "");
    DeleteDC(nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(GetLastErrorText(), "the handle names no object of the expected kind");
    SetLastError(12345);
    EXPECT_EQ(GetLastErrorText(), "error 12345");
}

}  // namespace
