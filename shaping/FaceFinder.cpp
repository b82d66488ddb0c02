// SPDX-License-Identifier: MIT
#include "shaping/FaceFinder.h"

#include "platform/FontMatching.h"

#include <algorithm>

namespace orvane
{

FoundFace FaceFinder::Find(const FontChain& chain, std::u32string_view cluster,
                           const std::string& language)
{
    for (const std::shared_ptr<const ShapingFace>& face : chain.faces)
    {
        if (face->Covers(cluster.data(), cluster.size()))
        {
            return {face, true};
        }
    }
    FoundFace installed;
    if (chain.usesInstalledFonts)
    {
        installed = FindInstalled(*chain.faces.front(), cluster, language);
        if (installed.face && installed.hasAll)
        {
            return installed;
        }
    }
    // The letter without some of its marks is better than no letter.
    for (const std::shared_ptr<const ShapingFace>& face : chain.faces)
    {
        if (face->Covers(cluster.data(), 1))
        {
            return {face, false};
        }
    }
    return installed.face ? installed : FoundFace{chain.faces.front(), false};
}

bool FaceFinder::LookIntoFace(const ShapingFace& face, char32_t character)
{
    // The planes with letters.
    constexpr char32_t rememberedCharacters = 0x20000;
    if (lastFace_ != face.Id())
    {
        isInLastFace_.assign(rememberedCharacters, 0);
        lastFace_ = face.Id();
    }
    if (character >= rememberedCharacters)
    {
        return face.GlyphOf(character) != 0;
    }
    if (isInLastFace_[character] == 0 && face.GlyphOf(character) != 0)
    {
        isInLastFace_[character] = 1;
    }
    return isInLastFace_[character] != 0;
}

FoundFace FaceFinder::FindInstalled(const ShapingFace& first, std::u32string_view cluster,
                                    const std::string& language)
{
    constexpr std::size_t mostEntries = 4'096;
    constexpr std::size_t mostCandidates = 8;
    FontLooks looks;
    looks.weight = first.Weight();
    looks.isItalic = first.IsItalic();
    std::string key(reinterpret_cast<const char*>(cluster.data()),
                    cluster.size() * sizeof(char32_t));
    key += std::to_string(looks.weight) + (looks.isItalic ? "i" : "n") + language;
    if (const auto known = found_.find(key); known != found_.end())
    {
        return known->second;
    }
    FoundFace best;
    const auto visible = std::find_if(cluster.begin(), cluster.end(),
                                      [](char32_t character) { return !IsIgnorable(character); });
    const char32_t character = visible != cluster.end() ? *visible : cluster.front();
    for (const InstalledFont& font : FindFallbackFonts(character, language, looks, mostCandidates))
    {
        std::shared_ptr<const ShapingFace> face = ShapingFace::Open(font.file, nullptr);
        if (face && face->Covers(cluster.data(), cluster.size()))
        {
            best = {std::move(face), true};
            break;
        }
        if (face && !best.face && face->Covers(&character, 1))
        {
            best = {std::move(face), false};
        }
    }
    if (found_.size() >= mostEntries)
    {
        found_.clear();
    }
    found_.emplace(std::move(key), best);
    return best;
}

}  // namespace orvane
