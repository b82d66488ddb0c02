// SPDX-License-Identifier: MIT
// Reads the input as a picture of all directions, and tests what every such picture promises.
#include "fuzz/Check.h"
#include "fuzz/InputFile.h"
#include "orvane/Error.h"
#include "studio/HdrFile.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static InputFile file("input.hdr");
    try
    {
        const orvane::LightMap map = orvane::ReadHdrFile(file.Fill(bytes, count));
        Check(map.width > 0 && map.width <= 512 && map.height > 0 && map.height <= 256,
              "a picture is reduced to what is needed");
        Check(map.pixels.size() == static_cast<std::size_t>(map.width * map.height),
              "a picture has all its pixels");
        for (const orvane::Light& light : map.pixels)
        {
            for (const float each : light)
            {
                Check(std::isfinite(each) && each >= 0, "light is a number");
            }
        }
    }
    catch (const orvane::Error&)
    {}
    return 0;
}
