// SPDX-License-Identifier: MIT
#include "geometry/ProjectionData.h"
#include "imaging/GLMemoryDIB.h"
#include "imaging/MemoryMappedDIB.h"
#include "imaging/PictureBitmap.h"
#include "imaging/TextureMap.h"
#include "imaging/TextureOwnership.h"
#include "platform/OpenGL.h"

#include <cstdlib>
#include <memory>
#include <new>

namespace
{

/// Sets up a context so that glDrawPixels draws from the lower left corner of the window on.
/// \param width, height of the picture, in pixels
void PlaceRasterAtCorner(int width, int height)
{
    glTranslatef(0, 0, -5);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glViewport(0, 0, width, height);
    glMatrixMode(GL_MODELVIEW);
    glClear(GL_DEPTH_BUFFER_BIT);

    GLdouble modelview[16];
    GLdouble volume[16];
    GLint viewport[4];
    GLdouble corner[3] = {};
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    glGetDoublev(GL_PROJECTION_MATRIX, volume);
    glGetIntegerv(GL_VIEWPORT, viewport);
    gluUnProject(0, 0, 0, modelview, volume, viewport, &corner[0], &corner[1], &corner[2]);
    glRasterPos3dv(corner);
}

/// Makes the context that was current at the beginning current again at the end.
class KeptRendering
{
public:
    KeptRendering() = default;
    ~KeptRendering()
    {
        if (!isRestored_)
        {
            Restore();
        }
    }
    KeptRendering(const KeptRendering&) = delete;
    KeptRendering& operator=(const KeptRendering&) = delete;

    /// FALSE when the system refuses; no context is current then.
    BOOL Restore()
    {
        isRestored_ = true;
        return wglMakeCurrent(dc_, context_);
    }

private:
    bool isRestored_ = false;
    HDC dc_ = wglGetCurrentDC();
    HGLRC context_ = wglGetCurrentContext();
};

}  // namespace

_RGBImageRecord* TextureMap::DIBImageLoad(const char* filename)
{
    MemoryMappedDIB bitmap;
    const int status = bitmap.OpenAsTexture(filename);
    if (status != MemoryMappedDIB::opened &&
        (status != MemoryMappedDIB::notBitmap || !orvane::ReadAsBitmap(filename, bitmap).empty()))
    {
        return nullptr;
    }
    const std::size_t width = static_cast<std::size_t>(bitmap.GetDIBWidth());
    const std::size_t height = static_cast<std::size_t>(std::abs(bitmap.GetDIBHeight()));
    std::unique_ptr<BYTE[]> pixels(new (std::nothrow) BYTE[width * height * 3]);
    if (pixels == nullptr)
    {
        return nullptr;
    }
    GdiFlush();
    const std::size_t rowBytes = (width * 3 + 3) / 4 * 4;
    BYTE* out = pixels.get();
    for (std::size_t y = 0; y < height; ++y)
    {
        const BYTE* in = static_cast<const BYTE*>(bitmap.GetDIBBits()) + y * rowBytes;
        for (std::size_t x = 0; x < width; ++x, in += 3, out += 3)
        {
            out[0] = in[2];
            out[1] = in[1];
            out[2] = in[0];
        }
    }
    return new _RGBImageRecord(static_cast<int>(width), static_cast<int>(height), pixels.release());
}

int TextureMap::GenerateDitheredImage()
{
    const TextureOwnership owned(*this);
    FreeDitheredImage();
    const _RGBImageRecord* const pixels = GetImage();
    if (pixels == nullptr)
    {
        return 0;
    }
    KeptRendering kept;
    ProjectionData projection;
    projection.SetScaledSize(pixels->sizeX, pixels->sizeY);

    auto dithered = std::make_unique<GLMemoryDIB>();
    int made = dithered->Create(projection, 8);
    if (made)
    {
        PlaceRasterAtCorner(pixels->sizeX, pixels->sizeY);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        if (dithered->GetBandingRows() > 1 || dithered->GetBandingColumns() > 1)
        {
            glPixelStorei(GL_UNPACK_ROW_LENGTH, pixels->sizeX);
            made = dithered->DrawInOneBitmap([pixels](int x, int y, int width, int height) {
                // The depth that the band before has left would hide this one.
                glClear(GL_DEPTH_BUFFER_BIT);
                const std::size_t first =
                    static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels->sizeX) +
                    static_cast<std::size_t>(x);
                glDrawPixels(width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels->data + 3 * first);
            });
        }
        else
        {
            glDrawPixels(pixels->sizeX, pixels->sizeY, GL_RGB, GL_UNSIGNED_BYTE, pixels->data);
        }
    }
    // If the bitmap could not be made, the object is destroyed here, which leaves no context
    // current. So it is destroyed before the earlier context is made current again.
    if (!made)
    {
        dithered.reset();
    }
    if (!kept.Restore())
    {
        return 0;
    }
    ditheredImage = dithered.release();
    return made;
}
