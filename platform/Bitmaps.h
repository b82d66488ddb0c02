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

// Two-byte packing: records are read in place in mapped files, where the header lies 14 bytes
// behind the start. No size depends on it, save the file header's.
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
    LONG biHeight;  ///< positive: the lowest row comes first; negative: the highest
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;  ///< bytes; may be 0 when not compressed
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;  ///< 0: all that the bit count allows
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

/// The colours, or with BI_BITFIELDS three masks, follow the header; only the first is declared.
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

/// A bitmap whose bits the caller may read and write, after GdiFlush when OpenGL draws into it.
/// Rows are padded to four bytes. 1, 4, 8, 16, 24 and 32 bits, at most 4 GiB; 16 bits are 5-5-5
/// without masks. Bits in memory are zero at first.
/// \param dc not looked at; may be null.
/// \param bits receives the address of the bits; may be null.
/// \param section null for bits in memory, else a writable file mapping (CreateFileMappingA) that
/// holds them from \p offset on, a multiple of 4. Its handle may be closed before the bitmap.
/// \return null when the description is not that of such a bitmap, when it does not lie inside the
/// mapping, or when there is no memory.
ORVANE_API HBITMAP CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits,
                                    HANDLE section, DWORD offset);

/// Describes a bitmap: fills a BITMAP, or a DIBSECTION where \p size allows it. With a null
/// \p buffer, the size of a BITMAP. Returns the bytes filled, 0 for anything but a bitmap.
ORVANE_API int GetObjectA(HGDIOBJ object, int size, LPVOID buffer);

/// Converts rows of pixels of any depth, also packed ones, into a bitmap. Pixels that a packed
/// picture leaves out get its first colour; it is decoded as far as biSizeImage goes. A bitmap with
/// a colour table gets the nearest colours, the first of equally near ones.
/// \param first the bitmap's row, from the bottom, that the lowest row of \p bits becomes.
/// \param count how many rows \p bits has; what lies outside the bitmap is left out.
/// \return the rows converted, 0 when bitmap or description are no good.
ORVANE_API int SetDIBits(HDC dc, HBITMAP bitmap, UINT first, UINT count, const void* bits,
                         const BITMAPINFO* info, UINT usage);

/// Draws a rectangle of a picture, scaled and clipped, into the bitmap that a device context has
/// selected; through OpenGL when a context draws into it, which loses none of its state. Positions
/// count from the top left, in both.
///
/// A destination pixel takes the source pixel that its centre falls on, rounded down: pixel i of w
/// takes pixel floor((2 i + 1) s / (2 w)) of s. It is counted from the rectangle's edge, drawn or
/// not, so that bands drawn side by side join exactly. A negative width or height reaches to the
/// left or up, and mirrors; what lies outside the source is left as it is.
/// \param operation SRCCOPY; no other is offered.
/// \return the number of source rows, also when some are clipped; 0 when it was refused.
ORVANE_API int StretchDIBits(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                             int sourceWidth, int sourceHeight, const void* bits,
                             const BITMAPINFO* info, UINT usage, DWORD operation);

#endif
