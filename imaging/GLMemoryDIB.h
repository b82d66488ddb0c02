// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/ProjectionData.h"
#include "platform/Bitmaps.h"
#include "platform/Rendering.h"

#include <vector>

class ColorVector;
class DrawingParameters;

/// OpenGL into memory: a memory device context, a bitmap selected into it and a rendering context
/// that draws there. A picture larger than the bitmap is drawn in bands: for each row and column
/// PrepareNextBand shifts the projection, the caller draws, and CopyBand copies the band out.
///
/// The band is at most 2048 by 2048 pixels and 1 MiB. Band counts are fractional: a caller draws
/// ceil(rows) times ceil(columns) bands. Create, Resize and PrepareNextBand make the context
/// current on the calling thread. Owns everything it holds; a copy has the sizes and a device
/// context of its own, and nothing to draw into.
///
/// Bands agree with the picture drawn at once within a level, but for single pixels on edges, when
/// both are drawn after CutQuadsAlike (platform/Rendering.h).
class ORVANE_API GLMemoryDIB
{
public:
    GLMemoryDIB();
    GLMemoryDIB(const GLMemoryDIB& other);
    GLMemoryDIB& operator=(const GLMemoryDIB& other);
    virtual ~GLMemoryDIB();

    /// Makes bitmap and context for a picture of the projection's size.
    /// \param bits per pixel: 4, 8, 16, 24 or 32; 0 takes the screen's 32.
    /// \return 0 when any of them cannot be had; the object is then only good to be destroyed.
    virtual int Create(const ProjectionData& newProjection, int bits);

    /// Makes both anew for another size, keeping the view (ProjectionData::ResizeAndMaintainView).
    /// Unlike after Create, back faces are not culled, and there is no fallback format; that is
    /// meant, see ResizeDoesNotCullBackFaces. 0 when there is nothing to resize or no context.
    int Resize(int width, int height);

    /// Shifts the projection to a band, lends it to the parameters (may be null) and loads it. The
    /// parameters' ApplyProjection bit is to be clear, so that a view keeps it.
    void PrepareNextBand(double row, double column, DrawingParameters* parameters);

    /// Copies the band into a device context whose picture begins at (x, y). 1 when every line was.
    int CopyBand(HDC target, int x, int y, double row, double column);

    /// Lets go of context and device context. 0 when either is missing.
    int Release();

    /// The pixels, borrowed. Call GdiFlush before reading what OpenGL drew.
    void* GetDIBBits() const { return dibBits; }
    BITMAPINFO* GetDIBInfo() const { return dibInfo; }
    HDC GetMemoryDC() const { return memoryDC; }
    ProjectionData GetProjection() const { return projection; }
    /// The size of a band, pixels.
    double GetDIBWidth() const { return projection.GetViewWidth(); }
    double GetDIBHeight() const { return projection.GetViewHeight(); }
    double GetBandingRows() const { return bandingRows; }
    double GetBandingColumns() const { return bandingColumns; }

    /// The colour of the first pixel of an 8-bit bitmap as 0x00BBGGRR; 0 for any other.
    unsigned long LookupBackgroundColor() const;
    /// See FindNearestPaletteColor.
    int FindNearestColor(ColorVector* color) const;

    PIXELFORMATDESCRIPTOR describedPixelFormat = {};  ///< the format obtained
    PIXELFORMATDESCRIPTOR requestedPixelFormat = {};
    int pixelFormatIndex = 0;
    int colorBits = 0;
    int maximumBandWidth = 2048;
    int maximumBandHeight = 2048;

protected:
    /// Sizes the band and places it at the picture's corner.
    void CalculateDIBInfo();
    /// Makes the bitmap's record, with room for its colours. Always 1.
    int GenerateDIBInfo();
    /// The bitmap, of the band's size; null when there is none to be had.
    HBITMAP CreateDIBRectangleSection();

public:
    ProjectionData projection;
    HGLRC renderingContext = nullptr;
    HDC memoryDC;
    HGDIOBJ previousBitmap = nullptr;
    HBITMAP dibSection = nullptr;
    double bandingRows = 0;
    double bandingColumns = 0;
    void* dibBits = nullptr;
    BITMAPINFO* dibInfo = nullptr;  ///< in infoStorage_

private:
    int SelectNewSection_();
    void DeleteSection_();
    /// Lets bitmap, device context and rendering context go, and makes a new device context.
    void BeginAnew_();
    void RequestPixelFormat_(DWORD flags);
    int CreateContext_();
    void LoadProjection_();
    int BitCount_() const;

    std::vector<DWORD> infoStorage_;
};
