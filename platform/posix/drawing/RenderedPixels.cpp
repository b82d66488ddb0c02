// SPDX-License-Identifier: MIT
// For glWindowPos2i, which GL/gl.h does not declare otherwise.
#define GL_GLEXT_PROTOTYPES

#include "platform/posix/drawing/RenderedPixels.h"

#include "platform/posix/drawing/BitmapPixels.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

namespace posix
{
namespace
{

/// Sets everything that affects reading pixels to OpenGL's initial values and restores it at its
/// end. It does not push attributes, because the stack could be full.
class PlainReading
{
public:
    explicit PlainReading(GLenum buffer)
    {
        for (std::size_t i = 0; i < std::size(integers); ++i)
        {
            glGetIntegerv(integers[i].name, &savedIntegers_[i]);
            glPixelStorei(integers[i].name, integers[i].plain);
        }
        for (std::size_t i = 0; i < std::size(transfers); ++i)
        {
            glGetFloatv(transfers[i].name, &savedTransfers_[i]);
            glPixelTransferf(transfers[i].name, transfers[i].plain);
        }
        glGetIntegerv(GL_READ_BUFFER, &savedBuffer_);
        glReadBuffer(buffer);
    }
    ~PlainReading()
    {
        glReadBuffer(static_cast<GLenum>(savedBuffer_));
        for (std::size_t i = 0; i < std::size(transfers); ++i)
        {
            glPixelTransferf(transfers[i].name, savedTransfers_[i]);
        }
        for (std::size_t i = 0; i < std::size(integers); ++i)
        {
            glPixelStorei(integers[i].name, savedIntegers_[i]);
        }
    }
    PlainReading(const PlainReading&) = delete;
    PlainReading& operator=(const PlainReading&) = delete;

private:
    struct Integer
    {
        GLenum name;
        GLint plain;
    };
    static constexpr Integer integers[] = {
        {GL_PACK_SWAP_BYTES, 0}, {GL_PACK_LSB_FIRST, 0},   {GL_PACK_ROW_LENGTH, 0},
        {GL_PACK_SKIP_ROWS, 0},  {GL_PACK_SKIP_PIXELS, 0}, {GL_PACK_ALIGNMENT, 4},
    };
    struct Transfer
    {
        GLenum name;
        GLfloat plain;
    };
    static constexpr Transfer transfers[] = {
        {GL_MAP_COLOR, 0},   {GL_RED_SCALE, 1},   {GL_RED_BIAS, 0},
        {GL_GREEN_SCALE, 1}, {GL_GREEN_BIAS, 0},  {GL_BLUE_SCALE, 1},
        {GL_BLUE_BIAS, 0},   {GL_ALPHA_SCALE, 1}, {GL_ALPHA_BIAS, 0},
    };
    GLint savedIntegers_[std::size(integers)];
    GLfloat savedTransfers_[std::size(transfers)];
    GLint savedBuffer_ = 0;
};

/// Switches off everything that affects drawing pixels and restores it at its end.
class PlainDrawing
{
public:
    explicit PlainDrawing(GLenum buffer)
    {
        hasRoom_ = HasRoom(GL_ATTRIB_STACK_DEPTH, GL_MAX_ATTRIB_STACK_DEPTH) &&
                   HasRoom(GL_CLIENT_ATTRIB_STACK_DEPTH, GL_MAX_CLIENT_ATTRIB_STACK_DEPTH);
        if (!hasRoom_)
        {
            return;
        }
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        for (const GLenum capability :
             {GL_ALPHA_TEST, GL_BLEND, GL_COLOR_LOGIC_OP, GL_CULL_FACE, GL_DEPTH_TEST, GL_DITHER,
              GL_FOG, GL_LIGHTING, GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_TEXTURE_1D, GL_TEXTURE_2D})
        {
            glDisable(capability);
        }
        glDepthMask(GL_FALSE);
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        if (buffer != currentBuffer)
        {
            glDrawBuffer(buffer);
        }
        glPixelZoom(1, 1);
        glPixelTransferf(GL_MAP_COLOR, 0);
        for (const GLenum scale : {GL_RED_SCALE, GL_GREEN_SCALE, GL_BLUE_SCALE, GL_ALPHA_SCALE})
        {
            glPixelTransferf(scale, 1);
        }
        for (const GLenum bias : {GL_RED_BIAS, GL_GREEN_BIAS, GL_BLUE_BIAS, GL_ALPHA_BIAS})
        {
            glPixelTransferf(bias, 0);
        }
        for (const GLenum store : {GL_UNPACK_SWAP_BYTES, GL_UNPACK_LSB_FIRST, GL_UNPACK_ROW_LENGTH,
                                   GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS})
        {
            glPixelStorei(store, 0);
        }
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    }
    ~PlainDrawing()
    {
        if (hasRoom_)
        {
            glPopClientAttrib();
            glPopAttrib();
        }
    }
    PlainDrawing(const PlainDrawing&) = delete;
    PlainDrawing& operator=(const PlainDrawing&) = delete;

    bool HasRoom() const { return hasRoom_; }

private:
    static bool HasRoom(GLenum depthName, GLenum limitName)
    {
        GLint depth = 0;
        GLint limit = 0;
        glGetIntegerv(depthName, &depth);
        glGetIntegerv(limitName, &limit);
        return depth < limit;
    }

    bool hasRoom_;
};

}  // namespace

void ReadBits(Bitmap& bitmap, GLenum buffer)
{
    const PlainReading plain(buffer);
    const auto read = [&bitmap](int first, int count, BYTE* pixels) {
        glReadPixels(0, first, bitmap.width, count, GL_BGRA, GL_UNSIGNED_BYTE, pixels);
    };
    if (IsPlain32(bitmap) && !bitmap.isTopDown)
    {
        read(0, bitmap.height, bitmap.bits);
        return;
    }
    // A few rows at a time, so that they are still in the processor's cache when they are
    // converted.
    constexpr int pieceBytes = 131072;
    const int rowBytes = 4 * bitmap.width;
    const int rows = std::clamp(pieceBytes / rowBytes, 1, bitmap.height);
    const auto pixels = std::make_unique_for_overwrite<BYTE[]>(static_cast<std::size_t>(rows) *
                                                               static_cast<std::size_t>(rowBytes));
    PixelWriter writer(bitmap, glIsEnabled(GL_DITHER) ? Reduction::Dither : Reduction::Round,
                       Colors::OpenGL);
    for (int first = 0; first < bitmap.height; first += rows)
    {
        const int count = std::min(rows, bitmap.height - first);
        read(first, count, pixels.get());
        for (int i = 0; i < count; ++i)
        {
            writer.Write(0, first + i, bitmap.width, pixels.get() + i * rowBytes);
        }
    }
}

bool DrawPixels(int x, int y, int width, int height, const BYTE* bgra, GLenum buffer)
{
    const PlainDrawing plain(buffer);
    if (!plain.HasRoom())
    {
        return false;
    }
    glWindowPos2i(x, y);
    glDrawPixels(width, height, GL_BGRA, GL_UNSIGNED_BYTE, bgra);
    return true;
}

bool DrawBits(const Bitmap& bitmap, GLenum buffer)
{
    if (HashOfBits(bitmap) == 0 && bitmap.colors.empty())
    {
        const PlainDrawing plain(buffer);
        if (plain.HasRoom())
        {
            glClearColor(0, 0, 0, 0);
            glClear(GL_COLOR_BUFFER_BIT);
        }
        return plain.HasRoom();
    }
    const auto width = static_cast<std::size_t>(bitmap.width);
    std::vector<BYTE> pixels(4 * width * static_cast<std::size_t>(bitmap.height));
    for (int y = 0; y < bitmap.height; ++y)
    {
        ExpandPixels(bitmap, bitmap.Row(y), 0, bitmap.width,
                     pixels.data() + 4 * width * static_cast<std::size_t>(y));
    }
    return DrawPixels(0, 0, bitmap.width, bitmap.height, pixels.data(), buffer);
}

}  // namespace posix
