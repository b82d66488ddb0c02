// SPDX-License-Identifier: MIT
#include "apps/cli/Picture.h"

#include "apps/cli/Errors.h"
#include "apps/cli/OutputFile.h"

#include <png.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <exception>
#include <filesystem>

namespace
{

// libpng is C: an exception must not pass through it. It is kept here while libpng jumps out.
struct PngTarget
{
    OutputFile& file;
    std::exception_ptr error;
    std::string complaint;
};

// Instead of libpng's own, which prints.
void JumpOut(png_structp png, png_const_charp complaint)
{
    static_cast<PngTarget*>(png_get_error_ptr(png))->complaint = complaint;
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

void WritePngBytes(png_structp png, png_bytep bytes, png_size_t count)
{
    PngTarget& target = *static_cast<PngTarget*>(png_get_io_ptr(png));
    try
    {
        target.file.Write(bytes, count);
    }
    catch (...)
    {
        target.error = std::current_exception();
    }
    if (target.error != nullptr)
    {
        png_error(png, "the file cannot be written");
    }
}

void SavePng(const Picture& picture, OutputFile& file)
{
    PngTarget target{file, nullptr, {}};
    std::vector<png_bytep> rows;
    rows.reserve(picture.height);
    for (int y = 0; y < picture.height; ++y)
    {
        rows.push_back(const_cast<png_bytep>(picture.Row(y)));
    }
    png_structp png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, &target, JumpOut, IgnoreWarning);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (info == nullptr)
    {
        png_destroy_write_struct(&png, nullptr);
        throw Failure("PNG writer: out of memory");
    }
    if (setjmp(png_jmpbuf(png)) != 0)
    {
        png_destroy_write_struct(&png, &info);
        if (target.error != nullptr)
        {
            std::rethrow_exception(target.error);
        }
        throw Failure("PNG writer: " + target.complaint);
    }
    png_set_write_fn(png, &target, WritePngBytes, nullptr);
    png_set_IHDR(png, info, picture.width, picture.height, 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
}

void SaveBmp(const Picture& picture, OutputFile& file)
{
    const std::size_t stride = (std::size_t{3} * picture.width + 3) / 4 * 4;
    const std::size_t imageSize = stride * picture.height;
    std::vector<std::uint8_t> header(54);
    const auto put = [&header](std::size_t at, std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
        {
            header[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
        }
    };
    header[0] = 'B';
    header[1] = 'M';
    put(2, static_cast<std::uint32_t>(header.size() + imageSize), 4);
    put(10, static_cast<std::uint32_t>(header.size()), 4);
    put(14, 40, 4);
    put(18, picture.width, 4);
    put(22, picture.height, 4);
    put(26, 1, 2);
    put(28, 24, 2);
    put(34, static_cast<std::uint32_t>(imageSize), 4);
    file.Write(header.data(), header.size());

    std::vector<std::uint8_t> line(stride);
    for (int y = picture.height - 1; y >= 0; --y)
    {
        const std::uint8_t* const row = picture.Row(y);
        for (int x = 0; x < picture.width; ++x)
        {
            line[3 * x] = row[3 * x + 2];
            line[3 * x + 1] = row[3 * x + 1];
            line[3 * x + 2] = row[3 * x];
        }
        file.Write(line.data(), line.size());
    }
}

}  // namespace

PictureFormat FormatOf(const std::string& path)
{
    if (path == "-")
    {
        return PictureFormat::Png;
    }
    std::string ending = std::filesystem::path(path).extension();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (ending == ".png")
    {
        return PictureFormat::Png;
    }
    if (ending == ".bmp")
    {
        return PictureFormat::Bmp;
    }
    throw UsageError("--output: expected a name that ends in .png or .bmp, found \"" + path + "\"");
}

void SavePicture(const Picture& picture, PictureFormat format, OutputFile& file)
{
    if (format == PictureFormat::Png)
    {
        SavePng(picture, file);
    }
    else
    {
        SaveBmp(picture, file);
    }
    file.Commit();
}
