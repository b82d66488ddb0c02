// SPDX-License-Identifier: MIT
#include "shapedtext/TextFonts.h"

#include "host/CFile.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shapedtext/EmbeddedFont.h"

#include <zlib.h>

#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>

namespace orvane
{

namespace
{

/// What takes the place of fonts that are not there.
constexpr const char* standardPattern = "sans-serif";

std::string NameOf(const FontQuery& query)
{
    return !query.name.empty() ? query.name : !query.pattern.empty() ? query.pattern : query.file;
}

/// Opens a font. No value when it is not there. Throws OptionError for a query that makes no sense.
std::optional<ChosenFont> TryToOpen(const FontQuery& query)
{
    try
    {
        return OpenFont(query);
    }
    catch (const OptionError&)
    {
        throw;
    }
    catch (const Error&)
    {
        return std::nullopt;
    }
}

/// A query with the axes and the looks of another one.
FontQuery WithName(const FontQuery& query, const std::string& name)
{
    FontQuery named = query;
    named.name = name;
    named.pattern.clear();
    named.file.clear();
    named.index = 0;
    named.instance.clear();
    return named;
}

/// The face of a stored text's font, found by its names.
std::optional<ChosenFont> FindKnownFace(const ShapedFont& font)
{
    for (const std::string& name : {font.face.fullName, font.face.family})
    {
        if (name.empty())
        {
            continue;
        }
        if (std::optional<ChosenFont> found = TryToOpen(WithName(font.query, name)))
        {
            return found;
        }
    }
    return std::nullopt;
}

std::shared_ptr<const ShapingFace> OpenStandardFace()
{
    FontQuery query;
    query.pattern = standardPattern;
    const std::optional<ChosenFont> found = TryToOpen(query);
    return found ? found->face : nullptr;
}

bool IsFaceOf(const ShapingFace& face, const FaceIdentity& stored)
{
    return face.FamilyName() == stored.family && face.StyleName() == stored.style;
}

/// Opens stored fonts one after another.
class StoredFontOpener
{
public:
    StoredFontOpener(const FontFileFinder& findFile, TextFonts& fonts)
        : findFile_(findFile), fonts_(fonts)
    {}

    void Open(const ShapedFont& font)
    {
        FontQuery query = font.query;
        if (!query.file.empty())
        {
            query.file = findFile_(query.file);
        }
        const bool hasFile = font.query.file.empty() || !query.file.empty();
        std::optional<ChosenFont> found = hasFile ? TryToOpen(query) : std::nullopt;
        const bool isOpened = found.has_value();
        if (!found)
        {
            found = FindKnownFace(font);
        }
        if (!found)
        {
            found = ChosenFont{fonts_.standard, {}};
        }
        bool isMeant = found->face != nullptr &&
                       (font.face.family.empty() ? isOpened : IsFaceOf(*found->face, font.face));
        if (!isMeant && font.embedded != nullptr)
        {
            if (auto embedded = font.embedded->Open(font.face))
            {
                found = ChosenFont{std::move(embedded), {}};
                isMeant = true;
            }
        }
        const ShapingFace* const face = found->face.get();
        fonts_.faces.push_back(found->face);
        fonts_.notices.insert(fonts_.notices.end(), found->notices.begin(), found->notices.end());
        isMeant ? CompareFiles(font, *face) : TellSubstitute(font, face);
    }

private:
    void TellSubstitute(const ShapedFont& font, const ShapingFace* face)
    {
        const std::string name = NameOf(font.query);
        const std::string used = face != nullptr ? face->FullName() : std::string();
        fonts_.substituted.push_back({name, used});
        fonts_.notices.push_back(
            "font \"" + name + "\" is not installed; " +
            (used.empty() ? "no other font is, either" : "\"" + used + "\" is used instead"));
    }

    void CompareFiles(const ShapedFont& font, const ShapingFace& face)
    {
        if (font.face.checksum != 0 && ChecksumOf(face.File().file) != font.face.checksum)
        {
            fonts_.notices.push_back("font \"" + NameOf(font.query) +
                                     "\" is another version than the one the text was made with");
        }
    }

    const FontFileFinder& findFile_;
    TextFonts& fonts_;
};

std::uint32_t ReadChecksum(const std::string& file)
{
    uLong checksum = crc32(0, nullptr, 0);
    try
    {
        CFile opened(file.c_str(), CFile::modeRead);
        std::vector<Bytef> part(std::size_t{1} << 16);
        while (const UINT count = opened.Read(part.data(), static_cast<UINT>(part.size())))
        {
            checksum = crc32(checksum, part.data(), count);
        }
    }
    catch (const CFileException&)
    {
        return 0;
    }
    return static_cast<std::uint32_t>(checksum);
}

}  // namespace

TextFonts OpenTextFonts(const std::vector<ShapedFont>& fonts)
{
    TextFonts opened;
    if (fonts.empty())
    {
        opened.standard = OpenStandardFace();
    }
    for (const ShapedFont& font : fonts)
    {
        const ChosenFont chosen = OpenFont(font.query);
        opened.faces.push_back(chosen.face);
        opened.notices.insert(opened.notices.end(), chosen.notices.begin(), chosen.notices.end());
    }
    return opened;
}

TextFonts OpenStoredFonts(const std::vector<ShapedFont>& fonts, const FontFileFinder& findFile)
{
    TextFonts opened;
    opened.standard = OpenStandardFace();
    StoredFontOpener opener(findFile, opened);
    for (const ShapedFont& font : fonts)
    {
        opener.Open(font);
    }
    return opened;
}

FaceIdentity IdentityOf(const ShapingFace& face)
{
    FaceIdentity identity;
    identity.family = face.FamilyName();
    identity.style = face.StyleName();
    identity.fullName = face.FullName();
    identity.fileName = std::filesystem::path(face.File().file).filename().string();
    identity.index = face.File().index;
    identity.axes = face.AxisValues();
    return identity;
}

std::uint32_t ChecksumOf(const std::string& file)
{
    struct Known
    {
        std::uintmax_t size;
        std::filesystem::file_time_type time;
        std::uint32_t checksum;
    };
    static std::mutex mutex;
    static std::map<std::string, Known> knownFiles;

    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    const auto time =
        error ? std::filesystem::file_time_type() : std::filesystem::last_write_time(file, error);
    if (error)
    {
        return 0;
    }
    const std::lock_guard<std::mutex> lock(mutex);
    const auto known = knownFiles.find(file);
    if (known != knownFiles.end() && known->second.size == size && known->second.time == time)
    {
        return known->second.checksum;
    }
    if (knownFiles.size() == limits::maxTextFonts)
    {
        knownFiles.clear();
    }
    const std::uint32_t checksum = ReadChecksum(file);
    knownFiles[file] = {size, time, checksum};
    return checksum;
}

}  // namespace orvane
