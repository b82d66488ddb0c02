// SPDX-License-Identifier: MIT
#include "tests/support/PrivateFonts.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace
{

constexpr const char* configurationVariable = "FONTCONFIG_FILE";

int CALLBACK Collect(const LOGFONTA* record, const TEXTMETRICA* metrics, DWORD type, LPARAM data)
{
    EnumeratedFont font;
    std::memcpy(&font.record, record, sizeof font.record);
    std::memcpy(&font.metrics, metrics, sizeof font.metrics);
    font.type = type;
    reinterpret_cast<std::vector<EnumeratedFont>*>(data)->push_back(font);
    return 1;
}

LOGFONTA Describe(const char* faceName, LONG height, LONG weight, bool italic)
{
    LOGFONTA description = {};
    description.lfHeight = height;
    description.lfWeight = weight;
    description.lfItalic = italic ? 255 : 0;
    std::strncpy(description.lfFaceName, faceName, LF_FACESIZE - 1);
    return description;
}

}  // namespace

const MAT2 identityMatrix = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};

PrivateFonts::PrivateFonts(const std::vector<std::string>& files)
{
    std::string name = std::filesystem::temp_directory_path() / "orvane-fonts-XXXXXX";
    if (mkdtemp(name.data()) == nullptr)
    {
        throw std::runtime_error(name + ": no folder could be made");
    }
    folder_ = name;
    std::filesystem::create_directory(folder_ + "/fonts");
    const std::string configuration = folder_ + "/fonts.conf";
    std::ofstream(configuration) << "<?xml version=\"1.0\"?>\n<fontconfig>\n<dir>" << folder_
                                 << "/fonts</dir>\n<cachedir>" << folder_
                                 << "/cache</cachedir>\n</fontconfig>\n";
    if (const char* const previous = std::getenv(configurationVariable))
    {
        previousConfiguration_ = previous;
        configured_ = true;
    }
    setenv(configurationVariable, configuration.c_str(), 1);
    ReloadFonts();
    for (const std::string& file : files)
    {
        Install(file);
    }
}

PrivateFonts::~PrivateFonts()
{
    if (configured_)
    {
        setenv(configurationVariable, previousConfiguration_.c_str(), 1);
    }
    else
    {
        unsetenv(configurationVariable);
    }
    ReloadFonts();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void PrivateFonts::Install(const std::string& file)
{
    Place(file);
    ReloadFonts();
}

std::string PrivateFonts::Place(const std::string& file)
{
    const std::string name = std::filesystem::path(file).filename();
    std::string place = folder_ + "/fonts/" + std::to_string(++installed_) + "-" + name;
    std::filesystem::create_symlink(std::filesystem::absolute(file), place);
    return place;
}

std::vector<EnumeratedFont> EnumerateFonts(const char* family)
{
    std::vector<EnumeratedFont> fonts;
    const HDC dc = CreateCompatibleDC(nullptr);
    EnumFontFamiliesA(dc, family, Collect, reinterpret_cast<LPARAM>(&fonts));
    DeleteDC(dc);
    return fonts;
}

std::vector<EnumeratedFont> EnumerateAsRegistry()
{
    std::vector<EnumeratedFont> registered;
    for (const EnumeratedFont& family : EnumerateFonts(nullptr))
    {
        if ((family.type & TRUETYPE_FONTTYPE) == 0)
        {
            continue;
        }
        for (const EnumeratedFont& font : EnumerateFonts(family.Full().c_str()))
        {
            if (font.type == TRUETYPE_FONTTYPE)
            {
                registered.push_back(font);
            }
        }
    }
    return registered;
}

std::vector<std::string> FullNames(const std::vector<EnumeratedFont>& fonts)
{
    std::vector<std::string> names;
    for (const EnumeratedFont& font : fonts)
    {
        names.push_back(font.Full());
    }
    return names;
}

SelectedFont::SelectedFont(const LOGFONTA& description)
    : font_(CreateFontIndirectA(&description)),
      dc_(CreateCompatibleDC(nullptr)),
      previous_(SelectObject(dc_, font_))
{}

SelectedFont::SelectedFont(const char* faceName, LONG height, LONG weight, bool italic)
    : SelectedFont(Describe(faceName, height, weight, italic))
{}

SelectedFont::~SelectedFont()
{
    SelectObject(dc_, previous_);
    DeleteDC(dc_);
    DeleteObject(font_);
}

std::vector<BYTE> SelectedFont::Outline(UINT character, DWORD* result, GLYPHMETRICS* metrics) const
{
    GLYPHMETRICS box = {};
    const DWORD size =
        GetGlyphOutlineA(dc_, character, GGO_NATIVE, &box, 0, nullptr, &identityMatrix);
    std::vector<BYTE> bytes;
    DWORD got = size;
    if (size != 0 && size != GDI_ERROR)
    {
        bytes.resize(size);
        got =
            GetGlyphOutlineA(dc_, character, GGO_NATIVE, &box, size, bytes.data(), &identityMatrix);
    }
    if (result != nullptr)
    {
        *result = got;
    }
    if (metrics != nullptr)
    {
        *metrics = box;
    }
    return bytes;
}

std::vector<BYTE> SelectedFont::OutlineMetrics() const
{
    std::vector<BYTE> bytes(GetOutlineTextMetricsA(dc_, 0, nullptr));
    if (!bytes.empty())
    {
        // A vector's bytes are aligned for any type.
        GetOutlineTextMetricsA(dc_, static_cast<UINT>(bytes.size()),
                               reinterpret_cast<OUTLINETEXTMETRICA*>(bytes.data()));
    }
    return bytes;
}

std::string SelectedFont::Full() const
{
    const std::vector<BYTE> bytes = OutlineMetrics();
    if (bytes.empty())
    {
        return "";
    }
    const auto* const metrics = reinterpret_cast<const OUTLINETEXTMETRICA*>(bytes.data());
    return reinterpret_cast<const char*>(bytes.data()) +
           reinterpret_cast<std::uintptr_t>(metrics->otmpFaceName);
}
