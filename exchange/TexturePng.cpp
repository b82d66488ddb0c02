// SPDX-License-Identifier: MIT
#include "exchange/TexturePng.h"

#include "imaging/TextureMap.h"
#include "orvane/Error.h"

#include <png.h>

#include <memory>

namespace orvane
{

std::vector<unsigned char> EncodeAsPng(const TextureMap& texture)
{
    const std::string file = static_cast<const char*>(texture.filename);
    const std::unique_ptr<_RGBImageRecord> pixels(TextureMap::DIBImageLoad(file.c_str()));
    if (pixels == nullptr)
    {
        throw Error(file, "the picture of a texture cannot be read");
    }
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(pixels->sizeX);
    image.height = static_cast<png_uint_32>(pixels->sizeY);
    image.format = PNG_FORMAT_RGB;
    // The texture's rows begin at the bottom, which libpng takes as a negative distance.
    const png_int_32 rowStride = -3 * pixels->sizeX;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<unsigned char> bytes(size);
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels->data, rowStride,
                                  nullptr) == 0)
    {
        throw Error(file, image.message);
    }
    bytes.resize(size);
    return bytes;
}

std::string TextureFileName(const std::string& stem, std::size_t index)
{
    return stem + "-" + std::to_string(index) + ".png";
}

}  // namespace orvane
