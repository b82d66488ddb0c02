// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/ProjectionData.h"
#include "platform/Bitmaps.h"
#include "platform/Rendering.h"

#include <functional>
#include <vector>

class ColorVector;
class DrawingParameters;

/// Draws with OpenGL into memory. Consists of a memory device context, a bitmap that is selected
/// into it, and a rendering context that draws into the bitmap.
///
/// A picture can be larger than the bitmap. It is then drawn in bands, each the size of the bitmap.
/// For each band, PrepareNextBand shifts the projection, the caller draws, and CopyBand copies the
/// pixels to where the picture is put together. A band has at most 2048 by 2048 pixels and at most
/// 1 MiB. GetBandingRows and GetBandingColumns are fractions: the last bands reach beyond the
/// picture, and a caller draws ceil(rows) times ceil(columns) bands.
///
/// Create, Resize and PrepareNextBand make the rendering context current on the calling thread.
/// This object owns all that it makes. A copy gets the sizes and a device context of its own, but
/// neither bitmap nor rendering context.
///
/// A picture drawn in bands and the same picture drawn in one piece differ by at most 1 of 255 in a
/// colour, except in single pixels on edges. This holds if CutQuadsAlike (platform/Rendering.h) is
/// called before each drawing.
class ORVANE_API GLMemoryDIB
{
public:
    GLMemoryDIB();
    GLMemoryDIB(const GLMemoryDIB& other);
    GLMemoryDIB& operator=(const GLMemoryDIB& other);
    virtual ~GLMemoryDIB();

    /// Makes the bitmap and the rendering context for a picture of the projection's size.
    /// \param bits per pixel: 4, 8, 16, 24 or 32; 0 means 32, as the screen has.
    /// \return 0 when the bitmap or the context cannot be made; the object can then only be
    /// destroyed.
    virtual int Create(const ProjectionData& newProjection, int bits);

    /// Makes the bitmap and the rendering context again, for a picture of another size with the
    /// same view (see ProjectionData::ResizeAndMaintainView). Returns 0 before Create, or when the
    /// bitmap or the context cannot be made. Two differences from Create are required: back faces
    /// are not culled afterwards (see ResizeDoesNotCullBackFaces), and there is no fallback when no
    /// pixel format fits.
    int Resize(int width, int height);

    /// Shifts the projection to a band and loads it into OpenGL.
    /// \param parameters of the caller's draw, may be null. They borrow the projection. Their
    /// ApplyProjection flag must be clear, otherwise the view would load its own projection.
    void PrepareNextBand(double row, double column, DrawingParameters* parameters);

    /// Copies the band into a device context.
    /// \param x where the picture begins in the target, in pixels, like \p y.
    /// \return 1 when all lines were copied, otherwise 0.
    int CopyBand(HDC target, int x, int y, double row, double column);

    /// Draws a picture of several bands, after Create, and keeps all of it: afterwards the bitmap
    /// has the picture's size, and there is no rendering context. Bands begin at multiples of four
    /// pixels, so that the dithering pattern goes on from one to the next.
    /// \param drawBand is called for each band. It draws the part of the picture that begins at
    /// (x, y), in pixels from the picture's lower left corner, at the lower left corner of the
    /// window.
    /// \return 0 when there is no rendering context, which changes nothing, or too little memory
    /// for the bitmap; the object can then only be destroyed.
    int DrawInOneBitmap(const std::function<void(int x, int y, int width, int height)>& drawBand);

    /// Deletes the rendering context and the device context; the bitmap stays. Returns 0 when
    /// either is missing.
    int Release();

    /// The pixels, borrowed. Call GdiFlush before reading what OpenGL drew.
    void* GetDIBBits() const { return dibBits; }
    BITMAPINFO* GetDIBInfo() const { return dibInfo; }
    HDC GetMemoryDC() const { return memoryDC; }
    ProjectionData GetProjection() const { return projection; }
    /// The size of a band, in pixels.
    double GetDIBWidth() const { return projection.GetViewWidth(); }
    double GetDIBHeight() const { return projection.GetViewHeight(); }
    double GetBandingRows() const { return bandingRows; }
    double GetBandingColumns() const { return bandingColumns; }

    /// The colour of the first pixel of an 8-bit bitmap, as 0x00BBGGRR. 0 for other bit counts.
    unsigned long LookupBackgroundColor() const;
    /// See FindNearestPaletteColor.
    int FindNearestColor(ColorVector* color) const;

    PIXELFORMATDESCRIPTOR describedPixelFormat = {};  ///< the format that OpenGL gave
    PIXELFORMATDESCRIPTOR requestedPixelFormat = {};
    int pixelFormatIndex = 0;
    int colorBits = 0;             ///< bits per pixel, as given to Create
    int maximumBandWidth = 2048;   ///< in pixels
    int maximumBandHeight = 2048;  ///< in pixels

protected:
    /// Computes the size and number of the bands, and places the projection at the first one.
    void CalculateDIBInfo();
    /// Makes the bitmap's record, with room for its colours. Returns 1.
    int GenerateDIBInfo();
    /// Makes a bitmap of the band's size. Returns null when that fails.
    HBITMAP CreateDIBRectangleSection();

public:
    ProjectionData projection;
    HGLRC renderingContext = nullptr;
    HDC memoryDC;
    HGDIOBJ previousBitmap = nullptr;
    HBITMAP dibSection = nullptr;
    double bandingRows = 0;     ///< the picture's height divided by the band's
    double bandingColumns = 0;  ///< the picture's width divided by the band's
    void* dibBits = nullptr;
    BITMAPINFO* dibInfo = nullptr;  ///< lies in infoStorage_

private:
    int SelectNewSection();
    void DeleteSection();
    /// Deletes the bitmap, the device context and the rendering context, and makes a new device
    /// context.
    void ReplaceDeviceContext();
    void RequestPixelFormat(DWORD flags);
    int CreateContext();
    void LoadProjection();
    /// The bits per pixel of the bitmap.
    int GetBitCount() const;

    std::vector<DWORD> infoStorage_;
};
