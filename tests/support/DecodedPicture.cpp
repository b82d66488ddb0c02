// SPDX-License-Identifier: MIT
#include "tests/support/DecodedPicture.h"

#include <algorithm>
#include <ostream>
#include <png.h>

std::size_t DecodedPicture::Count(const std::function<bool(const Rgb&)>& wanted) const
{
    return std::count_if(pixels.begin(), pixels.end(), wanted);
}

void PrintTo(const DecodedPicture& picture, std::ostream* out)
{
    *out << "a picture of " << picture.width << " x " << picture.height;
}

DecodedPicture DecodePng(const std::string& bytes)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0)
    {
        return {};
    }
    image.format = PNG_FORMAT_RGB;
    std::vector<png_byte> rows(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, rows.data(), 0, nullptr) == 0)
    {
        return {};
    }
    DecodedPicture picture;
    picture.width = static_cast<int>(image.width);
    picture.height = static_cast<int>(image.height);
    for (std::size_t i = 0; i < rows.size(); i += 3)
    {
        picture.pixels.push_back({rows[i], rows[i + 1], rows[i + 2]});
    }
    return picture;
}

DecodedPicture DecodeBmp(const std::string& bytes)
{
    const auto byte = [&bytes](std::size_t at) { return static_cast<unsigned char>(bytes.at(at)); };
    const auto number = [&byte](std::size_t at) {
        return static_cast<std::size_t>(byte(at) | byte(at + 1) << 8 | byte(at + 2) << 16 |
                                        byte(at + 3) << 24);
    };
    constexpr std::size_t headers = 54;
    if (bytes.size() < headers || bytes.substr(0, 2) != "BM" || number(2) != bytes.size() ||
        number(14) != 40 || byte(26) != 1 || byte(28) != 24 || number(30) != 0)
    {
        return {};
    }
    DecodedPicture picture;
    picture.width = static_cast<int>(number(18));
    picture.height = static_cast<int>(number(22));
    const std::size_t stride = (picture.width * std::size_t{3} + 3) / 4 * 4;
    for (int y = 0; y < picture.height; ++y)
    {
        for (int x = 0; x < picture.width; ++x)
        {
            const std::size_t at =
                number(10) + stride * (picture.height - 1 - y) + std::size_t{3} * x;
            picture.pixels.push_back({byte(at + 2), byte(at + 1), byte(at)});
        }
    }
    return picture;
}

PixelBox BoxOfContent(const DecodedPicture& picture, int firstRow, int lastRow)
{
    PixelBox box{picture.width, picture.height, -1, -1};
    for (int y = firstRow; y <= lastRow; ++y)
    {
        for (int x = 0; x < picture.width; ++x)
        {
            if (!(picture.At(x, y) == picture.pixels.front()))
            {
                box.left = std::min(box.left, x);
                box.right = std::max(box.right, x);
                box.top = std::min(box.top, y);
                box.bottom = std::max(box.bottom, y);
            }
        }
    }
    return box;
}

PixelBox BoxOfContent(const DecodedPicture& picture)
{
    return BoxOfContent(picture, 0, picture.height - 1);
}
