// SPDX-License-Identifier: MIT
#include "geometry/ProjectionData.h"
#include "imaging/GLMemoryDIB.h"
#include "imaging/MemoryMappedDIB.h"
#include "imaging/TextureMap.h"
#include "imaging/TextureOwnership.h"
#include "platform/OpenGL.h"

#include <cstdlib>
#include <memory>
#include <new>

_RGBImageRecord* TextureMap::DIBImageLoad(const char* filename)
{
    MemoryMappedDIB bitmap;
    if (bitmap.OpenAsTrueColor(filename) != MemoryMappedDIB::opened)
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
    const HDC savedDC = wglGetCurrentDC();
    const HGLRC savedContext = wglGetCurrentContext();
    ProjectionData projection;
    projection.SetScaledSize(pixels->sizeX, pixels->sizeY);

    auto dithered = std::make_unique<GLMemoryDIB>();
    const int created = dithered->Create(projection, 8);
    if (created)
    {
        glTranslatef(0, 0, -5);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glViewport(0, 0, pixels->sizeX, pixels->sizeY);
        glMatrixMode(GL_MODELVIEW);
        glClear(GL_DEPTH_BUFFER_BIT);

        // Draw the pixels from the lower left corner of the window on.
        GLdouble modelview[16];
        GLdouble volume[16];
        GLint viewport[4];
        GLdouble corner[3] = {};
        glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
        glGetDoublev(GL_PROJECTION_MATRIX, volume);
        glGetIntegerv(GL_VIEWPORT, viewport);
        gluUnProject(0, 0, 0, modelview, volume, viewport, &corner[0], &corner[1], &corner[2]);
        glRasterPos3dv(corner);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glDrawPixels(pixels->sizeX, pixels->sizeY, GL_RGB, GL_UNSIGNED_BYTE, pixels->data);
        ditheredImage = dithered.release();
    }
    // If Create failed, the bitmap is destroyed here, which leaves no context current. So it is
    // destroyed before the earlier context is made current again.
    dithered.reset();
    wglMakeCurrent(savedDC, savedContext);
    return created;
}
