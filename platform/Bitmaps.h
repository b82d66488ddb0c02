// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Device-independent bitmaps. The records are laid out as in BMP files.

#include "platform/DeviceContexts.h"
#include "platform/Export.h"
#include "platform/Types.h"

#if !defined(_WIN32)

constexpr DWORD BI_RGB = 0;
constexpr DWORD BI_RLE8 = 1;
constexpr DWORD BI_RLE4 = 2;
constexpr DWORD BI_BITFIELDS = 3;
constexpr UINT DIB_RGB_COLORS = 0;
constexpr DWORD SRCCOPY = 0x00CC0020;

// Packed to two bytes because records are read in place in mapped files, where the second header
// lies 14 bytes after the start of the file. Only BITMAPFILEHEADER changes its size by that.
#pragma pack(push, 2)
struct BITMAPFILEHEADER
{
    WORD bfType;  ///< 0x4D42, "BM"
    DWORD bfSize;
    WORD bfReserved1;
    WORD bfReserved2;
    DWORD bfOffBits;  ///< bytes from the file's start to the pixels
};
static_assert(sizeof(BITMAPFILEHEADER) == 14);

struct BITMAPINFOHEADER
{
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;  ///< rows; positive when the lowest comes first, negative when the highest does
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;  ///< bytes of the pixels; may be 0 for pixels that are not compressed
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;  ///< colours in the table; 0 means as many as the bit count allows
    DWORD biClrImportant;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

struct RGBQUAD
{
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};
static_assert(sizeof(RGBQUAD) == 4);

/// A header, followed by the colour table or, with BI_BITFIELDS, by three masks. Only the first
/// colour is declared; the others follow it in memory.
struct BITMAPINFO
{
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};
#pragma pack(pop)
static_assert(sizeof(BITMAPINFO) == 44);
static_assert(alignof(BITMAPINFO) == 2);

struct BITMAP
{
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    LPVOID bmBits;
};

struct DIBSECTION
{
    BITMAP dsBm;
    BITMAPINFOHEADER dsBmih;
    DWORD dsBitfields[3];
    HANDLE dshSection;
    DWORD dsOffset;
};

/// Makes a bitmap whose bits the caller may read and write; if OpenGL draws into it, the caller
/// must call GdiFlush first. A pixel has 1, 4, 8, 16, 24 or 32 bits. Without masks, 16 bits are 5
/// each for red, green and blue. Rows are padded to four bytes, and all bits take at most 4 GiB.
/// Bits in memory are zero at first.
/// \param dc is ignored and may be null.
/// \param bits receives the address of the bits; may be null.
/// \param section null for bits in memory. Otherwise a writable file mapping (CreateFileMappingA);
/// its bytes from \p offset on, a multiple of 4, become the bits. The mapping's handle may be
/// closed before the bitmap is deleted.
/// \return null when no bitmap can have this description, when its bits do not lie inside the
/// mapping, or when there is too little memory.
ORVANE_API HBITMAP CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits,
                                    HANDLE section, DWORD offset);

/// Describes a bitmap: fills \p buffer with a DIBSECTION if \p size bytes hold one, otherwise with
/// a BITMAP. Returns the number of bytes filled or, when \p buffer is null, the size of a BITMAP.
/// Returns 0 when \p object is no bitmap.
ORVANE_API int GetObjectA(HGDIOBJ object, int size, LPVOID buffer);

/// Converts rows of pixels of any bit count, also run-length coded pixels, into a bitmap. Coded
/// rows are read up to biSizeImage bytes, and pixels that they leave out get the first colour of
/// the table. In a bitmap with a colour table, each pixel gets the nearest colour of the table; of
/// equally near colours, the first.
/// \param first the row of the bitmap, counted from the bottom, into which the lowest row of \p
/// bits goes.
/// \param count the number of rows in \p bits; rows outside the bitmap are left out.
/// \return the number of rows converted; 0 when the bitmap or the description is not valid.
ORVANE_API int SetDIBits(HDC dc, HBITMAP bitmap, UINT first, UINT count, const void* bits,
                         const BITMAPINFO* info, UINT usage);

/// Draws a rectangle of a picture, scaled and clipped, into the bitmap that a device context has
/// selected. When an OpenGL context draws into that bitmap, the pixels go through OpenGL, whose
/// state stays as it was. Positions count from the top left, in the picture and in the bitmap.
///
/// A destination pixel takes the source pixel that its centre falls on, rounded down: pixel i of w
/// takes pixel floor((2 i + 1) s / (2 w)) of s. Pixels are counted from the edge of the whole
/// rectangle, even if the rectangle is clipped, so that bands drawn side by side join exactly. A
/// negative width or height reaches to the left or up and mirrors the picture. Destination pixels
/// that fall outside the source stay as they are.
/// \param operation must be SRCCOPY.
/// \return the number of source rows, clipped ones included; 0 when nothing was drawn because the
/// call was refused.
ORVANE_API int StretchDIBits(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                             int sourceWidth, int sourceHeight, const void* bits,
                             const BITMAPINFO* info, UINT usage, DWORD operation);

#endif
