// SPDX-License-Identifier: MIT
// Reads the input as a PNG, JPEG, WebP or TIFF picture and tests what every picture promises.
#include "fuzz/Check.h"
#include "orvane/Error.h"
#include "pictures/Deflate.h"
#include "pictures/PictureReader.h"
#include "platform/Limits.h"

#include <algorithm>
#include <string>

namespace
{

/// Puts right the check sums of a PNG. Few changed inputs would come past them.
void RepairCheckSums(orvane::Bytes& png)
{
    for (std::size_t at = 8; png.size() - at >= 12;)
    {
        const std::size_t length = std::size_t{png[at]} << 24 | std::size_t{png[at + 1]} << 16 |
                                   std::size_t{png[at + 2]} << 8 | png[at + 3];
        if (length > png.size() - at - 12)
        {
            return;
        }
        orvane::Bytes sum;
        orvane::AppendBigEndian(sum, orvane::Crc32(0, &png[at + 4], length + 4));
        std::copy(sum.begin(), sum.end(),
                  png.begin() + static_cast<std::ptrdiff_t>(at + 8 + length));
        at += 12 + length;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    orvane::Bytes input(bytes, bytes + count);
    if (orvane::FormatOfContent(bytes, count) == orvane::PictureFormat::Png)
    {
        RepairCheckSums(input);
    }
    try
    {
        const orvane::ReadPicture picture = orvane::ReadPictureBytes(input.data(), count, "input");
        Check(picture.width > 0 && picture.height > 0, "a picture has pixels");
        Check(picture.width <= orvane::limits::maxTextureSide &&
                  picture.height <= orvane::limits::maxTextureSide,
              "a picture is no larger than a texture");
        const auto pixels =
            static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
        Check(pixels <= orvane::limits::MaxTexturePixels(count),
              "the file pays for the pixels of its picture");
        Check(picture.rows.size() == pixels * (picture.hasAlpha ? 4 : 3), "every pixel is there");
    }
    catch (const orvane::Error&)
    {}
    return 0;
}
