// SPDX-License-Identifier: MIT
#include "imaging/PictureBitmap.h"

#include "host/CString.h"
#include "imaging/MemoryMappedDIB.h"
#include "orvane/Error.h"
#include "pictures/PictureReader.h"

#include <cstddef>
#include <new>

namespace orvane
{

namespace
{

/// A channel in front of white.
BYTE OverWhite(unsigned color, unsigned alpha)
{
    return static_cast<BYTE>((color * alpha + 255 * (255 - alpha) + 127) / 255);
}

void CopyRow(const std::uint8_t* in, bool hasAlpha, int width, BYTE* out)
{
    const int bytes = hasAlpha ? 4 : 3;
    for (int x = 0; x < width; ++x, in += bytes, out += 3)
    {
        const unsigned alpha = hasAlpha ? in[3] : 255;
        out[0] = OverWhite(in[2], alpha);
        out[1] = OverWhite(in[1], alpha);
        out[2] = OverWhite(in[0], alpha);
    }
}

}  // namespace

std::string ReadAsBitmap(const CString& name, MemoryMappedDIB& bitmap)
{
    try
    {
        const ReadPicture picture = ReadPictureFile(static_cast<const char*>(name));
        if (!bitmap.Create(picture.width, picture.height, 0, 0, 24, CString()))
        {
            return name.Text() + ": there is too little memory for the picture's pixels";
        }
        const auto width = static_cast<std::size_t>(picture.width);
        const auto height = static_cast<std::size_t>(picture.height);
        const std::size_t inBytes = width * (picture.hasAlpha ? 4 : 3);
        const std::size_t outBytes = (width * 3 + 3) / 4 * 4;
        auto* const bits = static_cast<BYTE*>(bitmap.GetDIBBits());
        for (std::size_t y = 0; y < height; ++y)
        {
            CopyRow(picture.rows.data() + y * inBytes, picture.hasAlpha, picture.width,
                    bits + (height - 1 - y) * outBytes);
        }
        return {};
    }
    catch (const Error& error)
    {
        return error.what();
    }
    catch (const std::bad_alloc&)
    {
        return name.Text() + ": there is too little memory for the picture's pixels";
    }
}

}  // namespace orvane
