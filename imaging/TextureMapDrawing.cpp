// SPDX-License-Identifier: MIT
#include "imaging/TextureMap.h"
#include "imaging/TextureOwnership.h"
#include "imaging/TextureSettings.h"
#include "imaging/TextureSize.h"
#include "imaging/TextureUpload.h"
#include "platform/Limits.h"
#include "platform/OpenGL.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <memory>
#include <new>

using orvane::FitTexture;
using orvane::PixelSize;
using orvane::TextureQuality;

namespace
{

// The largest width and height of a texture, in pixels. Larger textures cost memory and time
// without a visible gain on a letter.
constexpr GLint largestTexture = 256;

// The next power of two, after the limit is applied.
GLsizei TextureExtent(int pixels, GLint limit)
{
    return static_cast<GLsizei>(std::bit_ceil(static_cast<unsigned>(std::min(pixels, limit))));
}

void SetFilters(TextureQuality quality)
{
    const bool mipmapped = quality == TextureQuality::Mipmap;
    const GLint magnification =
        mipmapped || quality == TextureQuality::Linear ? GL_LINEAR : GL_NEAREST;
    const GLint minification = mipmapped ? GL_LINEAR_MIPMAP_NEAREST : magnification;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, magnification);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, minification);
}

// gluScaleImage pads the rows that it writes to OpenGL's pack alignment, which is 1, 2, 4 or 8
// bytes. The buffer has room for the largest alignment.
constexpr GLsizei largestAlignment = 8;

std::size_t RoomToScale(GLsizei width, GLsizei height)
{
    return static_cast<std::size_t>(width * 3 + largestAlignment - 1) * height;
}

// Scales the pixels and removes the padding between the rows.
void ScaleImage(const _RGBImageRecord& image, GLsizei width, GLsizei height, BYTE* pixels)
{
    // Rows of a multiple of four bytes get padding only at an alignment of 8, which no program that
    // draws with the library sets. So OpenGL is asked for the alignment only for other rows.
    const GLsizei rowBytes = width * 3;
    GLint alignment = 1;
    if (rowBytes % 4 != 0)
    {
        glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
        alignment = std::clamp(alignment, 1, largestAlignment);
    }
    gluScaleImage(GL_RGB, image.sizeX, image.sizeY, GL_UNSIGNED_BYTE, image.data, width, height,
                  GL_UNSIGNED_BYTE, pixels);
    const GLsizei stride = (rowBytes + alignment - 1) / alignment * alignment;
    for (GLsizei row = 1; stride != rowBytes && row < height; ++row)
    {
        std::copy_n(pixels + row * stride, rowBytes, pixels + row * rowBytes);
    }
}

/// A smaller copy, in which each pixel is the nearest one of the image. Null when there is too
/// little memory.
std::unique_ptr<_RGBImageRecord> Reduced(const _RGBImageRecord& image, PixelSize size)
{
    const auto nearest = [](int i, int from, int to) {
        return static_cast<std::size_t>((2 * std::int64_t{i} + 1) * from / (2 * std::int64_t{to}));
    };
    const std::size_t pixels =
        static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    std::unique_ptr<BYTE[]> data(new (std::nothrow) BYTE[3 * pixels]);
    if (data == nullptr)
    {
        return nullptr;
    }
    BYTE* out = data.get();
    for (int y = 0; y < size.height; ++y)
    {
        const BYTE* const row = image.data + 3 * nearest(y, image.sizeY, size.height) *
                                                 static_cast<std::size_t>(image.sizeX);
        for (int x = 0; x < size.width; ++x, out += 3)
        {
            std::copy_n(row + 3 * nearest(x, image.sizeX, size.width), 3, out);
        }
    }
    auto reduced = std::make_unique<_RGBImageRecord>(size.width, size.height, data.get());
    static_cast<void>(data.release());  // the record owns it
    return reduced;
}

/// \param format OpenGL's name of what it keeps of a pixel
int SpecifyTexture(const _RGBImageRecord& image, TextureQuality quality, GLint format)
{
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    SetFilters(quality);
    GLint limit = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limit);
    if (limit <= 0)
    {
        return 0;  // no context is current, and GLU would end the process
    }
    limit = std::min(limit, largestTexture);
    if (quality == TextureQuality::Mipmap)
    {
        gluBuild2DMipmaps(GL_TEXTURE_2D, format, image.sizeX, image.sizeY, GL_RGB, GL_UNSIGNED_BYTE,
                          image.data);
        return 1;
    }
    const GLsizei width = TextureExtent(image.sizeX, limit);
    const GLsizei height = TextureExtent(image.sizeY, limit);
    const std::unique_ptr<BYTE[]> pixels(new (std::nothrow) BYTE[RoomToScale(width, height)]());
    if (pixels == nullptr)
    {
        return 0;
    }
    ScaleImage(image, width, height, pixels.get());
    glTexImage2D(GL_TEXTURE_2D, 0, format, width, height, 0, GL_RGB, GL_UNSIGNED_BYTE,
                 pixels.get());
    return 1;
}

int GenerateMaps(TextureMap& texture, GLint format)
{
    const TextureOwnership ownership(texture);
    if (!ownership.IsOwned() || !texture.ShouldTexture())
    {
        return 0;
    }
    const _RGBImageRecord* const pixels = texture.GetImage();
    if (pixels == nullptr)
    {
        texture.textureFlags &= ~TextureMap::Valid;
        return 0;
    }
    const auto quality = static_cast<TextureQuality>(texture.GetQuality());
    // Pictures from files fit already; an application may have set others.
    const PixelSize whole = {pixels->sizeX, pixels->sizeY};
    const PixelSize size = FitTexture(whole, orvane::limits::maxTexturePixels);
    if (size == whole)
    {
        return SpecifyTexture(*pixels, quality, format);
    }
    const std::unique_ptr<_RGBImageRecord> reduced = Reduced(*pixels, size);
    return reduced != nullptr && SpecifyTexture(*reduced, quality, format) != 0;
}

void RepeatPicture()
{
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
}

}  // namespace

bool orvane::UploadTexture(TextureMap& texture)
{
    if (GenerateMaps(texture, GL_RGB) == 0)
    {
        return false;
    }
    RepeatPicture();
    return true;
}

int TextureMap::GenerateTextureMaps()
{
    return GenerateMaps(*this, 3);
}

int TextureMap::PrepareTextureMap()
{
    const TextureOwnership ownership(*this);
    if (!ShouldTexture())
    {
        glDisable(GL_TEXTURE_2D);
        return 0;
    }
    glEnable(GL_TEXTURE_2D);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    RepeatPicture();
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, modulate != 0 ? GL_MODULATE : GL_DECAL);
    return 1;
}

int TextureMap::EnableTextureMap()
{
    if (GetOwnership() == nullptr)
    {
        return 0;
    }
    if (!ShouldTexture())
    {
        ReleaseOwnership();
        return 0;
    }
    glEnable(GL_TEXTURE_2D);
    return 1;
}

int TextureMap::DisableTextureMap()
{
    glDisable(GL_TEXTURE_2D);
    ReleaseOwnership();
    return 1;
}
