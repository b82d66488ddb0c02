// SPDX-License-Identifier: MIT
#include "tests/support/OtherPrograms.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

std::optional<std::string> OutputOf(const std::string& command)
{
    FILE* const pipe = popen((command + " 2>/dev/null").c_str(), "r");
    if (pipe == nullptr)
    {
        return std::nullopt;
    }
    std::string output;
    for (int character; (character = std::fgetc(pipe)) != EOF;)
    {
        output += static_cast<char>(character);
    }
    return pclose(pipe) == 0 ? std::optional(output) : std::nullopt;
}

bool IsInstalled(const PictureReader& reader)
{
    return OutputOf(reader.test).has_value();
}

DecodedPicture ReadByOther(const PictureReader& reader, const std::string& path)
{
    DecodedPicture picture;
    std::istringstream file(
        OutputOf(reader.before + ("'" + path + "'") + reader.behind).value_or(""));
    std::string mark;
    int most = 0;
    file >> mark >> picture.width >> picture.height >> most;
    file.get();  // the one space behind the numbers
    if (!file || mark != "P6" || most != 255)
    {
        return {};
    }
    picture.pixels.resize(static_cast<std::size_t>(picture.width) * picture.height);
    for (Rgb& pixel : picture.pixels)
    {
        pixel.red = file.get();
        pixel.green = file.get();
        pixel.blue = file.get();
    }
    return file ? picture : DecodedPicture();
}

std::size_t CountFarther(const DecodedPicture& a, const DecodedPicture& b, int levels)
{
    if (a.width != b.width || a.height != b.height)
    {
        return std::max(a.pixels.size(), b.pixels.size());
    }
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i)
    {
        const Rgb& p = a.pixels[i];
        const Rgb& q = b.pixels[i];
        const int difference = std::max(
            {std::abs(p.red - q.red), std::abs(p.green - q.green), std::abs(p.blue - q.blue)});
        count += difference > levels ? 1 : 0;
    }
    return count;
}
