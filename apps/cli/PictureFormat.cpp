// SPDX-License-Identifier: MIT
#include "apps/cli/PictureFormat.h"

#include "apps/cli/Arguments.h"
#include "apps/cli/Errors.h"

PictureFormat FormatOf(const std::string& path)
{
    if (path == "-" || HasEnding(path, ".png"))
    {
        return PictureFormat::Png;
    }
    if (HasEnding(path, ".bmp"))
    {
        return PictureFormat::Bmp;
    }
    throw UsageError("--output: expected a name that ends in .png or .bmp, found \"" + path + "\"");
}
