// SPDX-License-Identifier: MIT
#pragma once

#include "document/OutputFile.h"
#include "pictures/PictureWriter.h"
#include "tests/support/TemporaryFile.h"

#include <cstring>
#include <string>
#include <vector>

/// Pixels that differ from their neighbours: a gradient with a number that a rule, and not chance,
/// adds to every channel. Alpha is included where the rows have it.
inline orvane::Bytes MakeRows(int width, int height, orvane::RowFormat format)
{
    const int channels = format.Channels();
    orvane::Bytes rows;
    std::uint32_t number = 1;
    for (int y = 0; y < height; ++y)
    {
        for (int i = 0; i < width * channels; ++i)
        {
            number = number * 1664525 + 1013904223;
            const unsigned value =
                static_cast<unsigned>(i * 300 + y * 700) + (number >> 24 & 7) * 256;
            const auto wide = static_cast<std::uint16_t>(value);
            if (format.channelBits == 16)
            {
                std::uint8_t bytes[2];
                std::memcpy(bytes, &wide, 2);
                rows.insert(rows.end(), bytes, bytes + 2);
            }
            else
            {
                rows.push_back(static_cast<std::uint8_t>(wide >> 8));
            }
        }
    }
    return rows;
}

/// How many rows are handed over at a time.
enum class Portions
{
    AllAtOnce,
    ByThrees
};

/// Writes a picture and returns the bytes of its file.
inline std::string Write(orvane::PictureFormat format, const orvane::PictureFileSettings& settings,
                         const orvane::Bytes& rows, Portions portions = Portions::AllAtOnce)
{
    const TemporaryName name("written-picture");
    const std::string path = static_cast<const char*>(name.Path());
    orvane::OutputFile output(path);
    const auto writer = orvane::MakePictureWriter(format, settings, output, path);
    const std::size_t stride = settings.rows.RowBytes(settings.width);
    const int step = portions == Portions::AllAtOnce ? settings.height : 3;
    for (int y = 0; y < settings.height; y += step)
    {
        writer->WriteRows(rows.data() + static_cast<std::size_t>(y) * stride, stride,
                          std::min(step, settings.height - y));
    }
    writer->Finish();
    output.Commit();
    const std::vector<BYTE> bytes = name.Read();
    return {bytes.begin(), bytes.end()};
}

inline orvane::PictureFileSettings Settings(int width, int height, orvane::PixelKind kind,
                                            int channelBits = 8)
{
    orvane::PictureFileSettings settings;
    settings.width = width;
    settings.height = height;
    settings.rows = {kind, channelBits};
    return settings;
}
