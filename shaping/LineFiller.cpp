// SPDX-License-Identifier: MIT
#include "shaping/LineFiller.h"

#include <algorithm>
#include <cmath>

namespace orvane
{
namespace
{

/// Adds up the widths of characters along a line.
class LinePen
{
public:
    LinePen(const Paragraph& paragraph, const LayoutOptions& options)
        : paragraph_(paragraph), options_(options)
    {}

    void Add(std::size_t character)
    {
        const char32_t c = paragraph_.text[character];
        x_ = c == '\t' ? NextTabStop(options_, x_) : x_ + paragraph_.advances[character];
        if (!HangsAtLineEnd(c) && paragraph_.advances[character] != 0)
        {
            width_ = x_;
        }
    }

    /// The width up to the last character that is no space.
    double Width() const { return width_; }

private:
    const Paragraph& paragraph_;
    const LayoutOptions& options_;
    double x_ = 0;
    double width_ = 0;
};

/// Whether the letters before a character can be separated from it.
bool StartsCluster(const Paragraph& paragraph, std::size_t character)
{
    return paragraph.advances[character] != 0 || paragraph.isSafeStart[character] != 0;
}

}  // namespace

double NextTabStop(const LayoutOptions& options, double x)
{
    const auto stop =
        std::upper_bound(options.tabStops.begin(), options.tabStops.end(), x + widthTolerance);
    if (stop != options.tabStops.end())
    {
        return *stop;
    }
    const double start = options.tabStops.empty() ? 0 : options.tabStops.back();
    const double interval = options.tabInterval;
    return start + (std::floor((x + widthTolerance - start) / interval) + 1) * interval;
}

LineRange FillLine(const Paragraph& paragraph, std::size_t begin, double width,
                   const LayoutOptions& options)
{
    if (width <= 0)
    {
        const auto end = std::find_if(paragraph.text.begin() + static_cast<std::ptrdiff_t>(begin),
                                      paragraph.text.end(), EndsLine);
        const auto n = static_cast<std::size_t>(end - paragraph.text.begin());
        return {begin, std::min(n + 1, paragraph.text.size())};
    }
    LinePen pen(paragraph, options);
    std::size_t fitting = begin;  // the end of the words that fit
    for (std::size_t n = begin; n < paragraph.text.size(); ++n)
    {
        pen.Add(n);
        const bool isTooWide = pen.Width() > width + widthTolerance;
        if (isTooWide && fitting > begin)
        {
            return {begin, fitting};
        }
        if (isTooWide && options.breaksWords && n > begin && StartsCluster(paragraph, n))
        {
            return {begin, n};
        }
        const bool mayEnd = paragraph.breaks[n];
        if (EndsLine(paragraph.text[n]) || (mayEnd && isTooWide))
        {
            return {begin, n + 1};
        }
        if (mayEnd)
        {
            fitting = n + 1;
        }
    }
    return {begin, paragraph.text.size()};
}

std::size_t EarlierBreak(const Paragraph& paragraph, const LineRange& line)
{
    std::size_t end = line.end;
    while (end > line.begin + 1)
    {
        --end;
        if (paragraph.breaks[end - 1])
        {
            return end;
        }
    }
    return line.begin;
}

double WidthOf(const Paragraph& paragraph, const LineRange& line, const LayoutOptions& options)
{
    LinePen pen(paragraph, options);
    for (std::size_t n = line.begin; n < line.end; ++n)
    {
        pen.Add(n);
    }
    return pen.Width();
}

}  // namespace orvane
