// SPDX-License-Identifier: MIT
// A PNG of the rows of a drawn poster, on all cores, against the same rows packed by libpng with
// zlib's usual level, 6.

#include "bench/Scenes.h"
#include "bench/ScratchFile.h"
#include "bench/Summary.h"
#include "document/OutputFile.h"
#include "document/poster/Poster.h"
#include "document/poster/PosterTarget.h"
#include "orvane.h"
#include "pictures/PictureWriter.h"

#include <png.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace
{

constexpr int side = 8192;
constexpr std::size_t rowBytes = std::size_t{3} * side;

/// The rows of a drawn poster, from the top. Blue and red are exchanged, which changes nothing for
/// those who pack them.
orvane::Bytes DrawRows()
{
    Showcase showcase(side, side);
    const ScratchFile picture(".bmp");
    orvane::PosterSettings settings;
    settings.output = picture.Path();
    settings.size = {side, side};
    settings.options.samples = 2;
    DrawPoster(showcase.view, settings, *MakeTarget(settings));
    orvane::Bytes rows(rowBytes * side);
    std::ifstream file(picture.Path(), std::ios::binary);
    constexpr std::streamoff headBytes = 56;
    file.seekg(headBytes);
    file.read(reinterpret_cast<char*>(rows.data()), static_cast<std::streamsize>(rows.size()));
    if (!file)
    {
        std::fprintf(stderr, "bench: pictures: the poster cannot be read\n");
        std::exit(1);
    }
    return rows;
}

void WriteOurs(const orvane::Bytes& rows, const char* path)
{
    orvane::PictureFileSettings settings;
    settings.width = side;
    settings.height = side;
    orvane::OutputFile output(path);
    const auto writer = MakePictureWriter(orvane::PictureFormat::Png, settings, output, path);
    writer->WriteRows(rows.data(), rowBytes, side);
    writer->Finish();
    output.Commit();
}

void WriteByLibpng(const orvane::Bytes& rows, const char* path)
{
    std::FILE* const file = std::fopen(path, "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    constexpr int zlibLevel = 6;
    png_set_compression_level(png, zlibLevel);
    png_set_IHDR(png, info, side, side, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int y = 0; y < side; ++y)
    {
        png_write_row(png, rows.data() + rowBytes * static_cast<std::size_t>(y));
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
}

double MebibytesOf(const char* path)
{
    return static_cast<double>(std::filesystem::file_size(path)) / (1 << 20);
}

void Measure()
{
    const orvane::Bytes rows = DrawRows();
    const ScratchFile ours(".png");
    const ScratchFile others(".png");
    constexpr int turns = 3;
    const Paired times = TimeInTurns(
        turns, [&] { WriteOurs(rows, ours.Path()); }, [&] { WriteByLibpng(rows, others.Path()); });
    char figure[160];
    std::snprintf(figure, sizeof figure,
                  "%.2f s, %.3f x libpng with zlib level 6 (%.2f s), %.3f x its processor time, "
                  "%.1f and %.1f MiB",
                  times.ours, times.ratio, times.floor, times.processorRatio,
                  MebibytesOf(ours.Path()), MebibytesOf(others.Path()));
    AddSummary("packing a .png of 8192 x 8192", figure);
}
const SummaryPart part("pictures", Measure);

}  // namespace
