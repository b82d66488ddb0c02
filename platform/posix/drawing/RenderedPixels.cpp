// SPDX-License-Identifier: MIT
// For glWindowPos2i and newer functions, which GL/gl.h does not declare otherwise.
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
    PlainReading(GLenum buffer, ContextProfile profile)
        : hasTransfers_(profile == ContextProfile::FixedFunctions)
    {
        for (std::size_t i = 0; i < std::size(integers); ++i)
        {
            glGetIntegerv(integers[i].name, &savedIntegers_[i]);
            glPixelStorei(integers[i].name, integers[i].plain);
        }
        for (std::size_t i = 0; hasTransfers_ && i < std::size(transfers); ++i)
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
        for (std::size_t i = 0; hasTransfers_ && i < std::size(transfers); ++i)
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
    const bool hasTransfers_;
    GLint savedIntegers_[std::size(integers)];
    GLfloat savedTransfers_[std::size(transfers)];
    GLint savedBuffer_ = 0;
};

/// The integers of OpenGL's state that copying pixels changes. Restores them at its end.
class KeptBindings
{
public:
    KeptBindings()
    {
        for (std::size_t i = 0; i < std::size(stores); ++i)
        {
            glGetIntegerv(stores[i], &savedStores_[i]);
            glPixelStorei(stores[i], stores[i] == GL_UNPACK_ALIGNMENT ? 4 : 0);
        }
        glGetIntegerv(GL_PIXEL_UNPACK_BUFFER_BINDING, &unpackBuffer_);
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture_);
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &readFramebuffer_);
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &drawFramebuffer_);
        hasScissor_ = glIsEnabled(GL_SCISSOR_TEST) != GL_FALSE;
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
        glDisable(GL_SCISSOR_TEST);
    }
    ~KeptBindings()
    {
        if (hasScissor_)
        {
            glEnable(GL_SCISSOR_TEST);
        }
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(drawFramebuffer_));
        glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(readFramebuffer_));
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture_));
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, static_cast<GLuint>(unpackBuffer_));
        for (std::size_t i = 0; i < std::size(stores); ++i)
        {
            glPixelStorei(stores[i], savedStores_[i]);
        }
    }
    KeptBindings(const KeptBindings&) = delete;
    KeptBindings& operator=(const KeptBindings&) = delete;

private:
    static constexpr GLenum stores[] = {GL_UNPACK_SWAP_BYTES,  GL_UNPACK_LSB_FIRST,
                                        GL_UNPACK_ROW_LENGTH,  GL_UNPACK_SKIP_ROWS,
                                        GL_UNPACK_SKIP_PIXELS, GL_UNPACK_ALIGNMENT};
    GLint savedStores_[std::size(stores)];
    GLint unpackBuffer_ = 0;
    GLint texture_ = 0;
    GLint readFramebuffer_ = 0;
    GLint drawFramebuffer_ = 0;
    bool hasScissor_ = false;
};

/// Does what DrawPixels does in a core profile, which has no glDrawPixels: makes a texture of the
/// pixels and copies it to the surface.
void CopyPixels(int x, int y, int width, int height, const BYTE* bgra, GLenum buffer)
{
    const KeptBindings kept;
    GLuint texture = 0;
    GLuint framebuffer = 0;
    glGenTextures(1, &texture);
    glGenFramebuffers(1, &framebuffer);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_BGRA, GL_UNSIGNED_BYTE, bgra);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
    GLint drawBuffer = 0;
    glGetIntegerv(GL_DRAW_BUFFER, &drawBuffer);
    glDrawBuffer(buffer);
    glBlitFramebuffer(0, 0, width, height, x, y, x + width, y + height, GL_COLOR_BUFFER_BIT,
                      GL_NEAREST);
    glDrawBuffer(static_cast<GLenum>(drawBuffer));
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteTextures(1, &texture);
}

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

void ReadBits(Bitmap& bitmap, GLenum buffer, ContextProfile profile)
{
    const PlainReading plain(buffer, profile);
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

bool DrawPixels(int x, int y, int width, int height, const BYTE* bgra, GLenum buffer,
                ContextProfile profile)
{
    if (profile == ContextProfile::Core)
    {
        CopyPixels(x, y, width, height, bgra, buffer);
        return true;
    }
    const PlainDrawing plain(buffer);
    if (!plain.HasRoom())
    {
        return false;
    }
    glWindowPos2i(x, y);
    glDrawPixels(width, height, GL_BGRA, GL_UNSIGNED_BYTE, bgra);
    return true;
}

bool DrawBits(const Bitmap& bitmap, GLenum buffer, ContextProfile profile)
{
    if (profile == ContextProfile::FixedFunctions && HashOfBits(bitmap) == 0 &&
        bitmap.colors.empty())
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
    return DrawPixels(0, 0, bitmap.width, bitmap.height, pixels.data(), buffer, profile);
}

}  // namespace posix
