// SPDX-License-Identifier: MIT
#include "tests/support/DecodedPicture.h"

#include <png.h>

#include <algorithm>
#include <ostream>

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
    const std::size_t bits = bytes.size() < headers ? 0 : byte(28);
    if ((bits != 8 && bits != 16 && bits != 24 && bits != 32) || bytes.substr(0, 2) != "BM" ||
        number(2) != bytes.size() || number(14) != 40 || byte(26) != 1 || number(30) != 0)
    {
        return {};
    }
    const auto colorAt = [&](std::size_t at) -> Rgb {
        if (bits == 8)
        {
            const std::size_t color = headers + std::size_t{4} * byte(at);
            return {byte(color + 2), byte(color + 1), byte(color)};
        }
        if (bits == 16)
        {
            const int pixel = byte(at) | byte(at + 1) << 8;
            return {(pixel >> 10 & 31) * 255 / 31, (pixel >> 5 & 31) * 255 / 31,
                    (pixel & 31) * 255 / 31};
        }
        return {byte(at + 2), byte(at + 1), byte(at)};
    };
    DecodedPicture picture;
    picture.width = static_cast<int>(number(18));
    picture.height = static_cast<int>(number(22));
    const std::size_t stride = (picture.width * bits / 8 + 3) / 4 * 4;
    for (int y = 0; y < picture.height; ++y)
    {
        for (int x = 0; x < picture.width; ++x)
        {
            picture.pixels.push_back(
                colorAt(number(10) + stride * (picture.height - 1 - y) + bits / 8 * x));
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
