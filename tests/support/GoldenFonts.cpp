// SPDX-License-Identifier: MIT
#include "tests/support/GoldenFonts.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <stdexcept>

namespace
{

template <typename Record>
void Append(std::vector<BYTE>& bytes, const Record& record)
{
    const std::size_t end = bytes.size();
    bytes.resize(end + sizeof record);
    std::memcpy(&bytes[end], &record, sizeof record);
}

/// "XXXXXXXXYYYYYYYY": two numbers in 16.16.
POINTFX Point(const std::string& digits)
{
    const auto fixed = [](const std::string& eight) {
        const auto bits = static_cast<std::uint32_t>(std::stoul(eight, nullptr, 16));
        return FIXED{static_cast<WORD>(bits), static_cast<SHORT>(bits >> 16)};
    };
    return {fixed(digits.substr(0, 8)), fixed(digits.substr(8, 8))};
}

}  // namespace

std::size_t GoldenLine::After(const std::string& key) const
{
    const std::string quoted = '"' + key + "\":";
    const std::size_t found = text_.find(quoted);
    return found == std::string::npos ? found : found + quoted.size();
}

bool GoldenLine::Has(const std::string& key) const
{
    return After(key) != std::string::npos;
}

long GoldenLine::Number(const std::string& key) const
{
    return std::stol(text_.substr(After(key)));
}

std::string GoldenLine::String(const std::string& key) const
{
    const std::size_t start = After(key);
    if (start == std::string::npos || text_[start] != '"')
    {
        throw std::runtime_error("no text " + key + " in " + text_);
    }
    return text_.substr(start + 1, text_.find('"', start + 1) - start - 1);
}

GoldenLine GoldenLine::Object(const std::string& key) const
{
    const std::size_t start = After(key);
    std::size_t end = start;
    int depth = 0;
    do
    {
        depth += text_.at(end) == '{' ? 1 : text_[end] == '}' ? -1 : 0;
        ++end;
    } while (depth != 0);
    return GoldenLine(text_.substr(start, end - start));
}

std::vector<long> GoldenLine::Numbers(const std::string& key) const
{
    std::vector<long> numbers;
    const char* at = text_.c_str() + After(key);
    while (*at != ']')
    {
        char* end = nullptr;
        numbers.push_back(std::strtol(at + 1, &end, 10));
        at = end;
    }
    return numbers;
}

std::vector<BYTE> GoldenLine::Polygons() const
{
    // {"cb":N,"type":24,"start":"...","curves":[[type,count,"... ..."],...]}
    std::vector<BYTE> bytes;
    std::size_t polygon = text_.find("{\"cb\":");
    while (polygon != std::string::npos)
    {
        const std::size_t next = text_.find("{\"cb\":", polygon + 1);
        const GoldenLine line(text_.substr(polygon, next - polygon));
        Append(bytes, TTPOLYGONHEADER{static_cast<DWORD>(line.Number("cb")),
                                      static_cast<DWORD>(line.Number("type")),
                                      Point(line.String("start"))});
        std::size_t curve = line.After("curves") + 1;
        while (line.text_.at(curve) == '[')
        {
            const std::size_t comma = line.text_.find(',', curve);
            const std::size_t quote = line.text_.find('"', curve);
            const std::size_t end = line.text_.find('"', quote + 1);
            Append(bytes, static_cast<WORD>(std::stoi(line.text_.substr(curve + 1))));
            Append(bytes, static_cast<WORD>(std::stoi(line.text_.substr(comma + 1))));
            for (std::size_t point = quote + 1; point < end; point += 17)
            {
                Append(bytes, Point(line.text_.substr(point, 16)));
            }
            curve = end + 2;                               // behind the bracket
            curve += line.text_.at(curve) == ',' ? 1 : 0;  // to the next curve
        }
        polygon = next;
    }
    return bytes;
}

std::string GoldenFolder()
{
    const std::string folder = ORVANE_SHARED "/golden";
    return std::filesystem::is_directory(folder) ? folder : "";
}

std::vector<GoldenLine> ReadGolden(const std::string& name)
{
    std::ifstream file(GoldenFolder() + '/' + name);
    if (!file)
    {
        throw std::runtime_error(name + ": cannot be read");
    }
    std::vector<GoldenLine> lines;
    for (std::string line; std::getline(file, line);)
    {
        lines.emplace_back(line);
    }
    return lines;
}

std::string GoldenChecksum(const std::vector<BYTE>& bytes)
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

std::vector<std::string> GoldenRegistry()
{
    std::vector<std::string> names;
    std::ifstream list(GoldenFolder() + "/registry.txt");
    for (std::string name; std::getline(list, name);)
    {
        names.push_back(name);
    }
    return names;
}

std::vector<std::string> ReferenceFiles()
{
    std::set<std::string> wanted;
    for (const char* family : {"Sans", "SansMono", "Serif"})
    {
        wanted.insert("DejaVu" + std::string(family) + ".ttf");
        wanted.insert("DejaVu" + std::string(family) + "-Bold.ttf");
    }
    for (const char* family : {"Mono", "Sans", "SansNarrow", "Serif"})
    {
        for (const char* style : {"Regular", "Bold", "Italic", "BoldItalic"})
        {
            wanted.insert("Liberation" + std::string(family) + '-' + style + ".ttf");
        }
    }
    std::map<std::string, std::string> found;
    for (const char* root : {"/usr/share/fonts", "/usr/local/share/fonts"})
    {
        std::error_code none;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root, none))
        {
            if (wanted.count(entry.path().filename()) != 0)
            {
                found.emplace(entry.path().filename(), entry.path());
            }
        }
    }
    std::vector<std::string> files;
    for (const auto& [name, path] : found)
    {
        files.push_back(path);
    }
    return files;
}

std::string ReferenceFile(const std::string& name)
{
    for (const std::string& file : ReferenceFiles())
    {
        if (std::filesystem::path(file).filename() == name)
        {
            return file;
        }
    }
    return "";
}
