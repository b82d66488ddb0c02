// SPDX-License-Identifier: MIT
#include "document/OptionRange.h"
#include "orvane/Error.h"
#include "shaping/Paragraph.h"

#include <algorithm>

namespace orvane
{
namespace
{

constexpr double leastSize = 0.001;
constexpr double mostSize = 1'000;
constexpr double mostLength = 1e6;

ReadyStyle Check(const TextStyle& style)
{
    ReadyStyle ready;
    ready.style = &style;
    const std::vector<std::shared_ptr<const ShapingFace>>& faces = style.fonts.faces;
    if (faces.empty() || std::find(faces.begin(), faces.end(), nullptr) != faces.end())
    {
        throw OptionError("fonts", "at least one face, each not null",
                          faces.empty() ? "none" : "a null");
    }
    CheckRange("size", style.size, leastSize, mostSize);
    CheckRange("rise", style.rise, -mostSize, mostSize);
    CheckName("language", style.language);
    if (!style.script.empty())
    {
        ready.script = ParseScript(style.script);
        if (!ready.script)
        {
            throw OptionError("script", "four letters (ISO 15924), such as \"Latn\"",
                              "\"" + style.script + "\"");
        }
    }
    for (const std::string& text : style.features)
    {
        const std::optional<FontFeature> feature = ParseFontFeature(text);
        if (!feature)
        {
            throw OptionError("features", "an OpenType feature such as \"smcp\" or \"liga=0\"",
                              "\"" + text + "\"");
        }
        ready.features.push_back(*feature);
    }
    return ready;
}

bool ShapeAlike(const TextStyle& left, const TextStyle& right)
{
    return left.size == right.size && left.rise == right.rise && left.language == right.language &&
           left.script == right.script && left.features == right.features;
}

/// The number of the character that begins at a byte, or of the end of the text.
std::size_t CharacterAt(const CheckedText& text, std::size_t byte)
{
    const auto at = std::lower_bound(text.offsets.begin(), text.offsets.end(), byte);
    if (at == text.offsets.end() || *at != byte)
    {
        throw OptionError("spans", "offsets of characters in the text",
                          "byte " + std::to_string(byte));
    }
    return static_cast<std::size_t>(at - text.offsets.begin());
}

void CheckLines(const LayoutOptions& options)
{
    CheckRange("width", options.width, 0, mostLength);
    CheckRange("lineHeight", options.lineHeight.value_or(1), 0, 100);
    CheckRange("tabInterval", options.tabInterval, leastSize, mostSize);
    double before = 0;
    for (const double stop : options.tabStops)
    {
        CheckRange("tabStops", stop, 0, mostLength);
        if (stop <= before)
        {
            throw OptionError("tabStops", "each more than the one before", std::to_string(stop));
        }
        before = stop;
    }
}

}  // namespace

ReadyText Prepare(std::string_view utf8, const LayoutOptions& options)
{
    CheckLines(options);
    ReadyText ready;
    ready.text = ReadUtf8(utf8);
    ready.userLanguage = UserLanguage();
    ready.styleOf.assign(ready.text.characters.size(), 0);
    ready.styles.push_back(Check(options.style));
    std::size_t before = 0;
    for (const StyledSpan& span : options.spans)
    {
        const std::size_t begin = CharacterAt(ready.text, span.begin);
        const std::size_t end = CharacterAt(ready.text, span.end);
        if (begin < before || end <= begin)
        {
            throw OptionError(
                "spans", "spans in the order of the text, without overlaps",
                "bytes " + std::to_string(span.begin) + " to " + std::to_string(span.end));
        }
        before = end;
        ReadyStyle style = Check(span.style);
        style.alike = ready.styles.size();
        for (std::size_t n = 0; n < ready.styles.size(); ++n)
        {
            if (ready.styles[n].alike == n && ShapeAlike(*ready.styles[n].style, span.style))
            {
                style.alike = n;
                break;
            }
        }
        std::fill(ready.styleOf.begin() + static_cast<std::ptrdiff_t>(begin),
                  ready.styleOf.begin() + static_cast<std::ptrdiff_t>(end),
                  static_cast<std::uint32_t>(ready.styles.size()));
        ready.styles.push_back(std::move(style));
    }
    return ready;
}

}  // namespace orvane
