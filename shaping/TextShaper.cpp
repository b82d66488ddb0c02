// SPDX-License-Identifier: MIT
#include "shaping/TextShaper.h"

#include "document/OptionRange.h"
#include "shaping/FaceFinder.h"
#include "shaping/LinePlacing.h"
#include "shaping/RunCache.h"

#include <algorithm>

namespace orvane
{

struct TextShaper::Parts
{
    FaceFinder finder;
    RunCache cache{mostCachedBytes};
};

namespace
{

/// A line with its paragraph.
struct FilledLine
{
    const Paragraph* paragraph;
    LineRange range;
    LineExtents extents;
    bool endsParagraph;
};

/// Calls a function for each line of the paragraphs.
/// \param cache for lines that are shaped anew where they are split; null: lines are taken to be as
///        wide as the parts of their paragraph
template <typename Take>
void ForEachLine(const ReadyText& ready, const std::vector<Paragraph>& paragraphs,
                 const LayoutOptions& options, double width, RunCache* cache, Take take)
{
    for (const Paragraph& paragraph : paragraphs)
    {
        const std::size_t size = paragraph.text.size();
        for (std::size_t begin = 0;;)
        {
            LineRange range = FillLine(paragraph, begin, width, options);
            const auto isTooWide = [&] {
                TextLayout scratch;
                return PlaceLine(ready, paragraph, range, options, 0, cache, &scratch) >
                       width + widthTolerance;
            };
            while (cache != nullptr && width > 0 && range.end < size &&
                   paragraph.isSafeStart[range.end] == 0 && isTooWide() &&
                   EarlierBreak(paragraph, range) > begin)
            {
                range.end = EarlierBreak(paragraph, range);
            }
            // A line end inside the paragraph is followed by another line, if only an empty one.
            const bool isLast =
                range.end == size && (size == begin || !EndsLine(paragraph.text[size - 1]));
            take(FilledLine{&paragraph, range, ExtentsOf(ready, paragraph, range), isLast});
            if (isLast)
            {
                break;
            }
            begin = range.end;
        }
    }
}

/// The distance from the baseline of a line to that of the next.
double DistanceOf(const LineExtents& line, const LineExtents& next,
                  const std::optional<double>& lineHeight)
{
    return lineHeight ? *lineHeight * (line.descent + next.gap + next.ascent) : next.size;
}

/// The part of the room beside a line that lies on its left.
double LeftShare(LineAlignment alignment, bool isRightToLeft)
{
    switch (alignment)
    {
        case LineAlignment::Left:
            return 0;
        case LineAlignment::Center:
            return 0.5;
        case LineAlignment::Right:
            return 1;
        case LineAlignment::Start:
        case LineAlignment::Justified:
            break;
    }
    return isRightToLeft ? 1 : 0;
}

TextLayout PlaceLines(const ReadyText& ready, const std::vector<Paragraph>& paragraphs,
                      const LayoutOptions& options, double width, RunCache* cache)
{
    TextLayout layout;
    layout.glyphs.reserve(ready.text.characters.size());
    LineExtents before;
    double baseline = 0;
    const auto place = [&](const FilledLine& filled) {
        const bool isJustified = options.alignment == LineAlignment::Justified &&
                                 !filled.endsParagraph && filled.range.end > 0 &&
                                 !EndsLine(filled.paragraph->text[filled.range.end - 1]);
        TextLine line;
        line.firstGlyph = layout.glyphs.size();
        line.width = PlaceLine(ready, *filled.paragraph, filled.range, options,
                               isJustified ? width : 0, cache, &layout);
        line.glyphCount = layout.glyphs.size() - line.firstGlyph;
        if (!layout.lines.empty())
        {
            baseline -= DistanceOf(before, filled.extents, options.lineHeight);
        }
        before = filled.extents;
        const std::size_t first = filled.paragraph->first;
        line.textBegin = ready.text.offsets[first + filled.range.begin];
        line.textEnd = ready.text.offsets[first + filled.range.end];
        line.baseline = baseline;
        line.ascent = filled.extents.ascent;
        line.descent = filled.extents.descent;
        line.isRightToLeft = filled.paragraph->levels.paragraph % 2 != 0;
        line.endsParagraph = filled.endsParagraph;
        layout.width = std::max(layout.width, line.width);
        layout.lines.push_back(line);
    };
    ForEachLine(ready, paragraphs, options, width, cache, place);
    layout.width = width > 0 ? width : layout.width;
    for (TextLine& line : layout.lines)
    {
        line.left = (layout.width - line.width) * LeftShare(options.alignment, line.isRightToLeft);
        for (std::size_t n = 0; n < line.glyphCount; ++n)
        {
            layout.glyphs[line.firstGlyph + n].x += line.left;
            layout.glyphs[line.firstGlyph + n].y += line.baseline;
        }
    }
    layout.top = layout.lines.front().ascent;
    layout.bottom = layout.lines.back().baseline - layout.lines.back().descent;
    return layout;
}

/// How large a laid out text is.
struct TextSize
{
    double width = 0;  ///< of the widest line
    double height = 0;
};

TextSize MeasureLines(const ReadyText& ready, const std::vector<Paragraph>& paragraphs,
                      const LayoutOptions& options, double width)
{
    TextSize size;
    LineExtents before;
    bool isFirst = true;
    ForEachLine(ready, paragraphs, options, width, nullptr, [&](const FilledLine& line) {
        size.width = std::max(size.width, WidthOf(*line.paragraph, line.range, options));
        size.height +=
            isFirst ? line.extents.ascent : DistanceOf(before, line.extents, options.lineHeight);
        before = line.extents;
        isFirst = false;
    });
    size.height += before.descent;
    return size;
}

/// Whether a text of a width and a height fits into a box of the same unit.
bool FitsInto(const TextSize& text, double width, double height)
{
    return text.width <= width + widthTolerance && text.height <= height * (1 + widthTolerance);
}

}  // namespace

TextShaper::TextShaper() : parts_(std::make_unique<Parts>()) {}

TextShaper::~TextShaper() = default;

TextLayout TextShaper::LayOut(std::string_view utf8, const LayoutOptions& options)
{
    const ReadyText ready = Prepare(utf8, options);
    std::vector<MissingCharacter> missing;
    const std::vector<Paragraph> paragraphs = ShapeParagraphs(
        ready, options.direction, options.width > 0, &parts_->finder, &parts_->cache, &missing);
    TextLayout layout = PlaceLines(ready, paragraphs, options, options.width, &parts_->cache);
    layout.missing = std::move(missing);
    return layout;
}

FittedText TextShaper::FitToBox(std::string_view utf8, const LayoutOptions& options, double width,
                                double height)
{
    constexpr double least = 1e-9;
    constexpr double most = 1e9;
    CheckRange("width", width, least, most);
    CheckRange("height", height, least, most);
    const ReadyText ready = Prepare(utf8, options);
    std::vector<MissingCharacter> missing;
    const std::vector<Paragraph> paragraphs =
        ShapeParagraphs(ready, options.direction, true, &parts_->finder, &parts_->cache, &missing);
    const auto fits = [&](double size) {
        return FitsInto(MeasureLines(ready, paragraphs, options, width / size), width / size,
                        height / size);
    };
    // A line is as high as the fonts say at least, so no size is larger than this.
    const LineExtents first = ExtentsOf(ready, paragraphs.front(), {});
    const double lowest = std::max(first.ascent + first.descent, least);
    double tooLarge = height / lowest * 2;
    double fitting = 0;
    constexpr int steps = 60;
    for (int n = 0; n < steps; ++n)
    {
        const double middle = (fitting + tooLarge) / 2;
        (fits(middle) ? fitting : tooLarge) = middle;
    }
    FittedText fitted;
    // Lines that are shaped anew where they are split may be a little wider than was measured.
    for (int n = 0; n < steps; ++n)
    {
        fitted.size = fitting;
        fitted.layout = PlaceLines(ready, paragraphs, options, width / fitting, &parts_->cache);
        TextSize placed;
        for (const TextLine& line : fitted.layout.lines)
        {
            placed.width = std::max(placed.width, line.width);
        }
        placed.height = fitted.layout.top - fitted.layout.bottom;
        if (FitsInto(placed, width / fitting, height / fitting))
        {
            break;
        }
        fitting *= 0.99;
    }
    fitted.layout.missing = std::move(missing);
    return fitted;
}

std::size_t TextShaper::CachedBytes() const
{
    return parts_->cache.Bytes();
}

}  // namespace orvane
