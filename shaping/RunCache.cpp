// SPDX-License-Identifier: MIT
#include "shaping/RunCache.h"

#include "platform/Limits.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace orvane
{
namespace
{

void Append(std::u32string& key, std::string_view text)
{
    key += static_cast<char32_t>(text.size());
    key.append(text.begin(), text.end());
}

/// Everything that the glyphs of a run depend on.
std::u32string KeyOf(const ShapingFace& face, const ShapingRun& run)
{
    const std::size_t before = std::min(run.begin, contextSize);
    const std::size_t after = std::min(run.textSize - run.end, contextSize);
    std::u32string key;
    key += static_cast<char32_t>(face.Id());
    key += static_cast<char32_t>(face.Id() >> 32);
    key += static_cast<char32_t>(run.script);
    key += static_cast<char32_t>(before << 8 | after << 1 | (run.isRightToLeft ? 1U : 0U));
    Append(key, run.language);
    key += static_cast<char32_t>(run.features.size());
    for (const FontFeature& feature : run.features)
    {
        Append(key, feature.tag);
        key += static_cast<char32_t>(feature.value);
    }
    key.append(run.text + run.begin - before, run.text + run.end + after);
    return key;
}

std::vector<ShapedGlyph> ShapeRun(const ShapingFace& face, const ShapingRun& run)
{
    try
    {
        return face.Shape(run);
    }
    catch (const std::length_error&)
    {
        throw TooManyGlyphs(face, run.end - run.begin);
    }
}

}  // namespace

Error TooManyGlyphs(const ShapingFace& face, std::size_t characters)
{
    return Error(face.File().file, "makes more than " +
                                       std::to_string(limits::MaxGlyphs(characters)) +
                                       " glyphs of " + std::to_string(characters) + " characters");
}

RunGlyphs RunCache::Shape(const ShapingFace& face, const ShapingRun& run)
{
    std::u32string key = KeyOf(face, run);
    if (const auto known = byKey_.find(key); known != byKey_.end())
    {
        entries_.splice(entries_.begin(), entries_, known->second);
        return known->second->glyphs;
    }
    std::vector<ShapedGlyph> glyphs = ShapeRun(face, run);
    if (run.begin > 0)
    {
        for (ShapedGlyph& glyph : glyphs)
        {
            glyph.cluster -= static_cast<std::uint32_t>(run.begin);
        }
    }
    // The memory of an entry beside its characters and glyphs: the list, the table, the counts.
    constexpr std::size_t entryBytes = 256;
    const std::size_t bytes =
        entryBytes + key.size() * sizeof(char32_t) + glyphs.size() * sizeof(ShapedGlyph);
    auto shared = std::make_shared<const std::vector<ShapedGlyph>>(std::move(glyphs));
    if (bytes > mostBytes_)
    {
        return shared;
    }
    while (bytes_ + bytes > mostBytes_)
    {
        bytes_ -= entries_.back().bytes;
        byKey_.erase(entries_.back().key);
        entries_.pop_back();
    }
    entries_.push_front({std::move(key), shared, bytes});
    bytes_ += bytes;
    byKey_.emplace(entries_.front().key, entries_.begin());
    return shared;
}

void RunCache::Clear()
{
    byKey_.clear();
    entries_.clear();
    bytes_ = 0;
}

}  // namespace orvane
