// SPDX-License-Identifier: MIT
#include "geometry/ProjectionData.h"
#include "geometry/Truncate.h"
#include "host/CWnd.h"
#include "imaging/BitmapLayout.h"
#include "imaging/GLMemoryDIB.h"
#include "imaging/MemoryMappedDIB.h"
#include "imaging/TextureOwnership.h"
#include "imaging/TextureSettings.h"
#include "imaging/TextureSize.h"
#include "platform/Messages.h"
#include "platform/OpenGL.h"
#include "platform/Rendering.h"
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

using orvane::BackgroundPlacement;
using orvane::PixelSize;

namespace
{

/// The number of colour bits of the device context that OpenGL draws to; 24 when no context is
/// current.
int CurrentColorBits()
{
    PIXELFORMATDESCRIPTOR format{};
    const HDC dc = wglGetCurrentDC();
    const int index = dc != nullptr ? GetPixelFormat(dc) : 0;
    return index != 0 && DescribePixelFormat(dc, index, sizeof format, &format) != 0
               ? format.cColorBits
               : 24;
}

/// Shows a text in the message window of the parameters. Waits at most 100 ms for the window, so
/// that a window that does not answer cannot stop the drawing.
void Notify(const DrawingParameters& parameters, const char* text)
{
    const HWND window =
        parameters.GetMessageWindowHandle() != nullptr ? parameters.GetMessageWindowHandle()
        : parameters.GetMessageWindow() != nullptr ? parameters.GetMessageWindow()->GetSafeHwnd()
                                                   : nullptr;
    if (window != nullptr)
    {
        DWORD_PTR result = 0;
        SendMessageTimeoutA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text), SMTO_NORMAL, 100,
                            &result);
    }
}

/// A bitmap that can be drawn, scaled, into rectangles of a device context.
struct Image
{
    HDC dc;
    const BITMAPINFO* info;
    const void* bits;

    int Width() const { return info->bmiHeader.biWidth; }
    int Height() const { return std::abs(info->bmiHeader.biHeight); }

    void DrawTo(int x, int y, int width, int height) const
    {
        StretchDIBits(dc, x, y, width, height, 0, 0, Width(), Height(), bits, info, DIB_RGB_COLORS,
                      SRCCOPY);
    }
};

/// The size of an image that lies once in the middle of a view: that of the placement, or \p own.
PixelSize FitImage(const Image& image, PixelSize view, PixelSize own, DWORD placement)
{
    const bool covers = placement == static_cast<DWORD>(BackgroundPlacement::Cover);
    if (!covers && placement != static_cast<DWORD>(BackgroundPlacement::Contain))
    {
        return own;
    }
    const double acrossScale = static_cast<double>(view.width) / image.Width();
    const double downScale = static_cast<double>(view.height) / image.Height();
    const double scale = covers == (acrossScale > downScale) ? acrossScale : downScale;
    const auto scaled = [scale](int side) {
        return std::max(1, static_cast<int>(std::lround(side * scale)));
    };
    return {scaled(image.Width()), scaled(image.Height())};
}

/// Returns where the first tile begins on one axis, in pixels from the left or upper edge of the
/// part of the picture that is drawn: 0 or less. \p offset is the position of that edge in the
/// picture, \p anchor is the position of any one tile border in the picture, and \p tile is the
/// size of a tile; all are in pixels.
int FirstTile(double offset, int anchor, int tile)
{
    const double index = std::floor((offset - anchor) / tile);
    return WholePixels(anchor + index * tile - offset);
}

/// The tiles of one axis, in pixels from the left or upper edge of the part of the picture that is
/// drawn.
struct TileAxis
{
    int first;  ///< where the first tile begins, 0 or less
    int tile;   ///< the size of a tile
    int view;   ///< the size of the part that is drawn

    /// How many tiles cover the part, counting a tile that is cut off.
    std::int64_t Count() const { return (std::int64_t{view} - first + tile - 1) / tile; }
    bool IsTileLarger() const { return tile > view; }
};

/// The bitmap that tiles are drawn with. When there are few tiles, it is the image, scaled to one
/// tile. Drawing a tile has a fixed cost, however small the tile is, and a picture of one pixel
/// has nearly a million tiles in a view of 1280 by 720. When there are many, the bitmap is
/// therefore a copy of several tiles side by side, which looks the same. A run-length coded image
/// is copied when there are more than four tiles, because it is decoded anew for each. On an axis
/// on which a tile is larger than the part of the picture that is drawn, the copy has only that
/// part: a small file may name millions of pixels.
class Mosaic
{
public:
    Mosaic(const Image& image, const TileAxis& x, const TileAxis& y) : image_(image), x_(x), y_(y)
    {
        if (x.Count() * y.Count() > (IsPackedBitmap(image.info) ? 4 : maxSingleTiles))
        {
            CopyTiles();
        }
    }

    /// Where the bitmap is drawn: at first, and again at each step, up to the end of the view.
    const TileAxis& X() const { return x_; }
    const TileAxis& Y() const { return y_; }
    void DrawTo(int x, int y) const { image_.DrawTo(x, y, x_.tile, y_.tile); }

private:
    static constexpr int maxSingleTiles = 4096;
    /// The copy has about this width and height, or those of one tile if they are larger.
    static constexpr int sidePixels = 256;

    /// The axis of a copy of tiles: several of them, or the part that is drawn.
    static TileAxis CopyOf(const TileAxis& axis)
    {
        return axis.IsTileLarger()
                   ? TileAxis{0, axis.view, axis.view}
                   : TileAxis{axis.first, axis.tile * std::max(1, sidePixels / axis.tile),
                              axis.view};
    }

    void CopyTiles()
    {
        const TileAxis copyX = CopyOf(x_);
        const TileAxis copyY = CopyOf(y_);
        if (!copy_.Create(copyX.tile, copyY.tile, 0, 0, 24, CString()))
        {
            return;
        }
        const Image tile{copy_.memoryDC, image_.info, image_.bits};
        // The first row of tiles is copied to the others, unless only a part of it is there.
        const int rowEnd = y_.IsTileLarger() ? copyY.tile : 1;
        for (std::int64_t y = y_.IsTileLarger() ? y_.first : 0; y < rowEnd; y += y_.tile)
        {
            for (std::int64_t x = x_.IsTileLarger() ? x_.first : 0; x < copyX.tile; x += x_.tile)
            {
                tile.DrawTo(static_cast<int>(x), static_cast<int>(y), x_.tile, y_.tile);
            }
        }
        image_ = {image_.dc, copy_.GetDIBInfo(), copy_.GetDIBBits()};
        for (int y = y_.tile; y < copyY.tile; y += y_.tile)
        {
            StretchDIBits(copy_.memoryDC, 0, y, copyX.tile, y_.tile, 0, 0, copyX.tile, y_.tile,
                          image_.bits, image_.info, DIB_RGB_COLORS, SRCCOPY);
        }
        x_ = copyX;
        y_ = copyY;
    }

    Image image_;
    TileAxis x_;
    TileAxis y_;
    MemoryMappedDIB copy_;
};

}  // namespace

int SceneObject::DrawBackground(DrawingParameters* parameters)
{
    if (parameters->IsSelecting())
    {
        return 1;
    }
    if (parameters->ShouldShowBackgroundTexture())
    {
        // This thread holds the texture's mutex until the texture is drawn, because the application
        // may change the texture in another thread.
        TextureMap& texture = TextureOrNone();
        const TextureOwnership ownership(texture);
        if ((texture.textureFlags & TextureMap::Valid) != 0)
        {
            return DrawBackgroundTexture(parameters);
        }
    }
    ClearToBackgroundColor(*parameters);
    return 1;
}

void SceneObject::ClearToBackgroundColor(const DrawingParameters& parameters)
{
    const ColorVector color = parameters.ShouldForceSolidBackground()
                                  ? parameters.GetSolidBackgroundColor()
                                  : backgroundColor;
    glClearColor(color.red, color.green, color.blue, color.alpha);
    glClear(GL_COLOR_BUFFER_BIT);
    glFlush();
}

int SceneObject::DrawBackgroundTexture(DrawingParameters* parameters)
{
    if (CurrentColorBits() > 8)
    {
        return DrawFileBackgroundTexture(parameters);
    }
    Notify(*parameters, "Dithering Background Bitmap ...");
    int result = 0;
    {
        TextureMap& texture = TextureOrNone();
        const TextureOwnership ownership(texture);
        GLMemoryDIB* const dithered = ownership.IsOwned() ? texture.GetDitheredImage() : nullptr;
        if (dithered != nullptr)
        {
            result =
                DrawBackgroundTexture(parameters, dithered->GetDIBInfo(), dithered->GetDIBBits());
        }
        else
        {
            parameters->LoseBackgroundPicture();
        }
    }
    Notify(*parameters, "");
    return result;
}

int SceneObject::DrawFileBackgroundTexture(DrawingParameters* parameters)
{
    TextureMap& texture = TextureOrNone();
    const TextureOwnership ownership(texture);
    if (!ownership.IsOwned())
    {
        return 0;
    }
    MemoryMappedDIB picture;
    const int status = picture.Open(texture.filename);
    const MemoryMappedDIB* const bitmap =
        status == MemoryMappedDIB::notBitmap ? texture.GetBitmap() : nullptr;
    if (bitmap != nullptr)
    {
        return DrawBackgroundTexture(parameters, bitmap->GetDIBInfo(), bitmap->GetDIBBits());
    }
    if (status != MemoryMappedDIB::opened)
    {
        parameters->LoseBackgroundPicture();
        return 0;
    }
    const int result =
        DrawBackgroundTexture(parameters, picture.GetDIBInfo(), picture.GetDIBBits());
    // Another program may have cut the file off meanwhile. The rest of the picture is black then.
    const bool isWhole = !picture.HasLostBytes();
    picture.Close();
    if (!isWhole)
    {
        parameters->LoseBackgroundPicture();
        return 0;
    }
    return result;
}

int SceneObject::DrawBackgroundTexture(DrawingParameters* parameters, const BITMAPINFO* bitmapInfo,
                                       const void* bits)
{
    const HDC dc = wglGetCurrentDC();
    const ProjectionData* const projection = parameters->GetProjection();
    const TextureMap& texture = TextureOrNone();
    if (!parameters->ShouldShowBackgroundTexture() ||
        (texture.textureFlags & TextureMap::Valid) == 0 || dc == nullptr || projection == nullptr ||
        bitmapInfo == nullptr || bits == nullptr || BitmapPixelBytes(bitmapInfo) == 0)
    {
        return 1;
    }
    const Image image{dc, bitmapInfo, bits};
    const double offsetX = projection->GetViewXOffset();
    const double offsetY = projection->GetViewYOffset();
    const auto scaled = [](int size, double scale) {
        return std::max(WholePixels(size * scale), 1);
    };
    const int tileWidth = scaled(image.Width(), projection->GetScaleX());
    const int tileHeight = scaled(image.Height(), projection->GetScaleY());

    if (texture.placement == static_cast<DWORD>(BackgroundPlacement::Stretch))
    {
        const int left = WholePixels(texture.GetHorizontalLocation());
        const int top = WholePixels(texture.GetVerticalLocation());
        image.DrawTo(WholePixels(left - offsetX), WholePixels(top - offsetY),
                     WholePixels(projection->GetWidth() - left),
                     WholePixels(projection->GetHeight() - top));
    }
    else if (texture.placement == static_cast<DWORD>(BackgroundPlacement::Tile))
    {
        const int anchorX = WholePixels(texture.GetHorizontalLocation() * projection->GetScaleX());
        const int anchorY = WholePixels(texture.GetVerticalLocation() * projection->GetScaleY());
        const int viewWidth = WholePixels(projection->GetViewWidth());
        const int viewHeight = WholePixels(projection->GetViewHeight());
        if (viewWidth < 1 || viewHeight < 1)
        {
            return 1;
        }
        const Mosaic mosaic(image, {FirstTile(offsetX, anchorX, tileWidth), tileWidth, viewWidth},
                            {FirstTile(offsetY, anchorY, tileHeight), tileHeight, viewHeight});
        const TileAxis& columns = mosaic.X();
        const TileAxis& rows = mosaic.Y();
        for (std::int64_t y = rows.first; y < viewHeight; y += rows.tile)
        {
            // There may be many tiles, so the drawing can be stopped after each row.
            if (y != rows.first && ShouldTerminateDrawing(parameters))
            {
                return 0;
            }
            for (std::int64_t x = columns.first; x < viewWidth; x += columns.tile)
            {
                mosaic.DrawTo(static_cast<int>(x), static_cast<int>(y));
            }
        }
    }
    else  // BackgroundPlacement::Cover, Contain, Center and every unknown number
    {
        // These are coordinates of the whole picture, not of the band that is drawn, so that a band
        // beside a small image is cleared too.
        const int viewWidth = WholePixels(projection->GetWidth());
        const int viewHeight = WholePixels(projection->GetHeight());
        const auto [width, height] =
            FitImage(image, {viewWidth, viewHeight}, {tileWidth, tileHeight}, texture.placement);
        const int left = (viewWidth - width) / 2;
        const int top = (viewHeight - height) / 2;
        if (left > 0 || top > 0)
        {
            if (parameters->ShouldForceSolidBackground())
            {
                glDisable(GL_DITHER);
            }
            ClearToBackgroundColor(*parameters);
        }
        image.DrawTo(left - WholePixels(offsetX), top - WholePixels(offsetY), width, height);
    }
    return 1;
}
