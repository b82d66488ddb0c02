// SPDX-License-Identifier: MIT
#include "tests/support/FontFigures.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

namespace
{

/// From an element on, a line of figures has width and height of the black box, the origin, and the
/// advance.
GLYPHMETRICS MetricsFrom(const Json& line, std::size_t first)
{
    return {line.at(first).get<UINT>(),
            line.at(first + 1).get<UINT>(),
            {line.at(first + 2).get<LONG>(), line.at(first + 3).get<LONG>()},
            line.at(first + 4).get<SHORT>(),
            line.at(first + 5).get<SHORT>()};
}

std::vector<std::string> FileNames()
{
    std::vector<std::string> names;
    for (const char* const family : {"Sans", "SansMono", "Serif"})
    {
        names.push_back("DejaVu" + std::string(family) + ".ttf");
        names.push_back("DejaVu" + std::string(family) + "-Bold.ttf");
    }
    for (const char* const family : {"Mono", "Sans", "SansNarrow", "Serif"})
    {
        for (const char* const style : {"Regular", "Bold", "Italic", "BoldItalic"})
        {
            names.push_back("Liberation" + std::string(family) + '-' + style + ".ttf");
        }
    }
    return names;
}

}  // namespace

const Json& FontFigures()
{
    static const Json figures = [] {
        std::ifstream file(ORVANE_TEST_DATA "/font-figures.json");
        return Json::parse(file);
    }();
    return figures;
}

std::vector<GlyphFigures> GlyphsOf(const std::string& face)
{
    std::vector<GlyphFigures> glyphs;
    for (const Json& line : FontFigures().at("glyphs").at(face))
    {
        glyphs.push_back({line.at(0).get<UINT>(), line.at(1).get<UINT>(), line.at(2).get<DWORD>(),
                          MetricsFrom(line, 3), line.at(9).get<std::string>()});
    }
    return glyphs;
}

GlyphFigures AWithMacronOf(const std::string& face)
{
    const Json& line = FontFigures().at("aWithMacron").at(face);
    return {0, line.at(0).get<UINT>(), line.at(1).get<DWORD>(), MetricsFrom(line, 2),
            line.at(8).get<std::string>()};
}

std::string Crc32Of(const std::vector<BYTE>& bytes)
{
    std::uint32_t sum = ~0u;
    for (const BYTE byte : bytes)
    {
        sum ^= byte;
        for (int bit = 0; bit < 8; ++bit)
        {
            sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320u : 0);
        }
    }
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08X", ~sum);
    return digits;
}

std::vector<std::string> RegistryNames()
{
    return FontFigures().at("registry").get<std::vector<std::string>>();
}

std::string FontFilePath(const std::string& name)
{
    static const std::map<std::string, std::string> installed = [] {
        std::map<std::string, std::string> paths;
        for (const char* const root : {"/usr/share/fonts", "/usr/local/share/fonts"})
        {
            std::error_code none;
            for (const auto& entry : std::filesystem::recursive_directory_iterator(root, none))
            {
                paths.emplace(entry.path().filename(), entry.path());
            }
        }
        return paths;
    }();
    const auto found = installed.find(name);
    if (found == installed.end())
    {
        throw std::runtime_error(name +
                                 ": is not installed (packages fonts-dejavu-core and "
                                 "fonts-liberation)");
    }
    return found->second;
}

std::vector<std::string> FontFiles()
{
    std::vector<std::string> files;
    for (const std::string& name : FileNames())
    {
        files.push_back(FontFilePath(name));
    }
    return files;
}
