// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Pictures on disk, for tests.

#include "tests/support/BmpFile.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/TemporaryFile.h"

#include <fstream>
#include <string>

/// A BMP file of 24 bits, its lowest row first, deleted with this object.
class PictureFile
{
public:
    /// The picture has the colour that \p colorAt gives for each x and y, y from the top.
    template <typename ColorAt>
    PictureFile(const std::string& name, int width, int height, ColorAt colorAt)
        : file_("orvane-" + name + ".bmp"), path_(file_.Path())
    {
        RecordBytes pixels;
        for (int y = height - 1; y >= 0; --y)
        {
            for (int x = 0; x < width; ++x)
            {
                const Rgb color = colorAt(x, y);
                pixels.Byte(static_cast<BYTE>(color.blue));
                pixels.Byte(static_cast<BYTE>(color.green));
                pixels.Byte(static_cast<BYTE>(color.red));
            }
            for (int padding = width * 3; padding % 4 != 0; ++padding)
            {
                pixels.Byte(0);
            }
        }
        BmpFile bmp;
        bmp.width = width;
        bmp.height = height;
        bmp.pixels = pixels;
        const Bytes bytes = bmp.File();
        std::ofstream(path_, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
    const char* Path() const { return path_.c_str(); }

private:
    TemporaryName file_;
    std::string path_;
};
