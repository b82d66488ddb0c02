// SPDX-License-Identifier: MIT
#include "shaping/LinePlacing.h"

#include <algorithm>

namespace orvane
{
namespace
{

/// A part of an item that lies on one line.
struct Piece
{
    const TextItem* item = nullptr;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::uint8_t level = 0;
    RunGlyphs glyphs;  ///< null except for text
    std::size_t firstGlyph = 0;
    std::size_t lastGlyph = 0;       ///< the one after the last
    std::size_t firstCharacter = 0;  ///< from which the glyphs' clusters are counted
    double width = 0;
};

bool IsWidenedSpace(char32_t c)
{
    return c == ' ' || c == 0xA0;
}

class LinePlacer
{
public:
    LinePlacer(const ReadyText& ready, const Paragraph& paragraph, const LineRange& line,
               const LayoutOptions& options, RunCache* cache, TextLayout* layout)
        : ready_(ready),
          paragraph_(paragraph),
          line_(line),
          options_(options),
          cache_(*cache),
          layout_(*layout),
          textEnd_(line.end)
    {
        while (textEnd_ > line.begin && IsTrailing(paragraph.text[textEnd_ - 1]))
        {
            --textEnd_;
        }
    }

    /// Returns the width without the spaces at the end.
    double Place(double justifiedWidth)
    {
        CollectPieces();
        MeasurePieces(justifiedWidth);
        std::vector<std::uint8_t> levels(pieces_.size());
        std::transform(pieces_.begin(), pieces_.end(), levels.begin(),
                       [](const Piece& piece) { return piece.level; });
        // Spaces that hang on the left stand before the first letter.
        double x = paragraph_.levels.paragraph % 2 != 0 ? width_ - x_ : 0;
        for (const std::size_t n : VisualOrder(levels))
        {
            PlacePiece(pieces_[n], &x);
        }
        return width_;
    }

private:
    bool IsTrailing(char32_t c) const { return HangsAtLineEnd(c) || IsIgnorable(c) || EndsLine(c); }

    /// Splits the line's items where spaces at its end take on the paragraph's direction.
    void CollectPieces()
    {
        const std::size_t space = LineEndSpace(paragraph_.text, line_.begin, line_.end);
        const auto first =
            std::partition_point(paragraph_.items.begin(), paragraph_.items.end(),
                                 [this](const TextItem& item) { return item.end <= line_.begin; });
        for (auto item = first; item != paragraph_.items.end() && item->begin < line_.end; ++item)
        {
            const std::size_t begin = std::max(item->begin, line_.begin);
            const std::size_t end = std::min(item->end, line_.end);
            const bool isSplit =
                item->level != paragraph_.levels.paragraph && space > begin && space < end;
            const std::size_t middle = isSplit ? space : end;
            AddPiece(*item, begin, middle, begin >= space);
            if (isSplit)
            {
                AddPiece(*item, middle, end, true);
            }
        }
    }

    void AddPiece(const TextItem& item, std::size_t begin, std::size_t end, bool isSpace)
    {
        Piece piece;
        piece.item = &item;
        piece.begin = begin;
        piece.end = end;
        piece.level = isSpace ? paragraph_.levels.paragraph : item.level;
        if (item.kind == ItemKind::Text)
        {
            FindGlyphs(&piece);
        }
        pieces_.push_back(std::move(piece));
    }

    /// The glyphs of a piece: those of its item or, where the item must not be split, glyphs that
    /// are shaped anew.
    void FindGlyphs(Piece* piece)
    {
        const TextItem& item = *piece->item;
        const bool isSafe =
            (piece->begin == item.begin || paragraph_.isSafeStart[piece->begin] != 0) &&
            (piece->end == item.end || paragraph_.isSafeStart[piece->end] != 0);
        if (!isSafe)
        {
            piece->glyphs =
                cache_.Shape(*item.face, RunOf(ready_, paragraph_, item, piece->begin, piece->end));
            piece->firstCharacter = piece->begin;
            piece->lastGlyph = piece->glyphs->size();
            return;
        }
        piece->glyphs = item.glyphs;
        piece->firstCharacter = item.begin;
        const std::size_t begin = piece->begin - item.begin;
        const std::size_t end = piece->end - item.begin;
        const std::vector<ShapedGlyph>& glyphs = *item.glyphs;
        const auto boundary = [&](auto isBefore) {
            return static_cast<std::size_t>(
                std::partition_point(glyphs.begin(), glyphs.end(), isBefore) - glyphs.begin());
        };
        if (item.IsRightToLeft())
        {
            piece->firstGlyph =
                boundary([end](const ShapedGlyph& glyph) { return glyph.cluster >= end; });
            piece->lastGlyph =
                boundary([begin](const ShapedGlyph& glyph) { return glyph.cluster >= begin; });
        }
        else
        {
            piece->firstGlyph =
                boundary([begin](const ShapedGlyph& glyph) { return glyph.cluster < begin; });
            piece->lastGlyph =
                boundary([end](const ShapedGlyph& glyph) { return glyph.cluster < end; });
        }
    }

    double SizeOf(const Piece& piece) const { return ready_.styles[piece.item->style].style->size; }

    /// Finds the widths of all pieces in the order of the text, that of tabs, and how much spaces
    /// are widened.
    void MeasurePieces(double justifiedWidth)
    {
        std::size_t spaces = 0;  // that can be widened
        for (Piece& piece : pieces_)
        {
            if (piece.item->kind == ItemKind::Tab)
            {
                piece.width = NextTabStop(options_, x_) - x_;
                x_ += piece.width;
                const bool isTrailing = piece.begin >= textEnd_;
                hanging_ += isTrailing ? piece.width : 0;
                spaces = isTrailing ? spaces : 0;
                widenedFrom_ = isTrailing ? widenedFrom_ : piece.end;
                continue;
            }
            if (piece.item->kind == ItemKind::LineEnd)
            {
                continue;
            }
            const double size = SizeOf(piece);
            for (std::size_t n = piece.firstGlyph; n < piece.lastGlyph; ++n)
            {
                const ShapedGlyph& glyph = (*piece.glyphs)[n];
                const double advance = glyph.advance * size;
                const std::size_t character = piece.firstCharacter + glyph.cluster;
                piece.width += advance;
                hanging_ += character >= textEnd_ ? advance : 0;
                const bool isSpace = character < textEnd_ && StartsSpace(piece, n);
                spaces += isSpace ? 1 : 0;
            }
            x_ += piece.width;
        }
        width_ = x_ - hanging_;
        if (justifiedWidth > width_ && spaces > 0)
        {
            widening_ = (justifiedWidth - width_) / static_cast<double>(spaces);
            width_ = justifiedWidth;
            x_ = justifiedWidth + hanging_;
        }
    }

    /// Whether a glyph is the first of a space that can be widened.
    bool StartsSpace(const Piece& piece, std::size_t glyph) const
    {
        const std::vector<ShapedGlyph>& glyphs = *piece.glyphs;
        const std::size_t character = piece.firstCharacter + glyphs[glyph].cluster;
        const bool isFirst =
            glyph == piece.firstGlyph || glyphs[glyph - 1].cluster != glyphs[glyph].cluster;
        return isFirst && IsWidenedSpace(paragraph_.text[character]);
    }

    void PlacePiece(const Piece& piece, double* x)
    {
        if (piece.item->kind == ItemKind::LineEnd)
        {
            return;
        }
        const std::size_t face = FaceIndex(piece.item->face);
        if (piece.item->kind == ItemKind::Tab)
        {
            ShapedGlyph space;
            space.glyph = piece.item->face->GlyphOf(' ');
            AddGlyph(piece, face, space, piece.begin, piece.end, piece.width, x);
            return;
        }
        const std::vector<ShapedGlyph>& glyphs = *piece.glyphs;
        for (std::size_t n = piece.firstGlyph; n < piece.lastGlyph; ++n)
        {
            const std::size_t begin = piece.firstCharacter + glyphs[n].cluster;
            const bool isWidened =
                begin >= widenedFrom_ && begin < textEnd_ && widening_ > 0 && StartsSpace(piece, n);
            AddGlyph(piece, face, glyphs[n], begin, ClusterEndOf(piece, n),
                     glyphs[n].advance * SizeOf(piece) + (isWidened ? widening_ : 0), x);
        }
    }

    /// The end of the characters that a glyph stands for.
    std::size_t ClusterEndOf(const Piece& piece, std::size_t glyph) const
    {
        const std::vector<ShapedGlyph>& glyphs = *piece.glyphs;
        const std::uint32_t cluster = glyphs[glyph].cluster;
        std::size_t other = glyph;
        if (piece.item->IsRightToLeft())
        {
            while (other > piece.firstGlyph && glyphs[other].cluster == cluster)
            {
                --other;
            }
        }
        else
        {
            while (other + 1 < piece.lastGlyph && glyphs[other].cluster == cluster)
            {
                ++other;
            }
        }
        return glyphs[other].cluster != cluster ? piece.firstCharacter + glyphs[other].cluster
                                                : piece.end;
    }

    /// The place of a face among those of the layout.
    std::size_t FaceIndex(const std::shared_ptr<const ShapingFace>& face)
    {
        const auto known = std::find(layout_.faces.begin(), layout_.faces.end(), face);
        const auto index = static_cast<std::size_t>(known - layout_.faces.begin());
        if (known == layout_.faces.end())
        {
            layout_.faces.push_back(face);
        }
        return index;
    }

    void AddGlyph(const Piece& piece, std::size_t face, const ShapedGlyph& glyph, std::size_t begin,
                  std::size_t end, double advance, double* x)
    {
        const double size = SizeOf(piece);
        const std::size_t style = ready_.styleOf[paragraph_.first + begin];
        PlacedGlyph& added = layout_.glyphs.emplace_back();
        added.face = face;
        added.glyph = glyph.glyph;
        added.textBegin = ready_.text.offsets[paragraph_.first + begin];
        added.textEnd = ready_.text.offsets[paragraph_.first + end];
        added.span = style == 0 ? noSpan : style - 1;
        added.x = *x + glyph.x * size;
        added.y = ready_.styles[piece.item->style].style->rise + glyph.y * size;
        added.advance = advance;
        added.size = size;
        added.isRightToLeft = piece.item->IsRightToLeft();
        *x += advance;
    }

    const ReadyText& ready_;
    const Paragraph& paragraph_;
    const LineRange& line_;
    const LayoutOptions& options_;
    RunCache& cache_;
    TextLayout& layout_;
    std::size_t textEnd_;  // the end of the line's text without the spaces that hang
    std::vector<Piece> pieces_;
    double x_ = 0;        // the width of all pieces
    double hanging_ = 0;  // the width of the spaces that hang
    double width_ = 0;
    double widening_ = 0;          // of each space
    std::size_t widenedFrom_ = 0;  // the first character after the last tab
};

}  // namespace

double PlaceLine(const ReadyText& ready, const Paragraph& paragraph, const LineRange& line,
                 const LayoutOptions& options, double justifiedWidth, RunCache* cache,
                 TextLayout* layout)
{
    return LinePlacer(ready, paragraph, line, options, cache, layout).Place(justifiedWidth);
}

LineExtents ExtentsOf(const ReadyText& ready, const Paragraph& paragraph, const LineRange& line)
{
    LineExtents extents;
    bool isFirst = true;
    const auto add = [&](const ShapingFace& face, const TextStyle& style) {
        const FaceMetrics& metrics = face.Metrics();
        const double ascent = metrics.ascent * style.size + style.rise;
        const double descent = metrics.descent * style.size - style.rise;
        const double gap = metrics.lineGap * style.size;
        extents.size = isFirst ? style.size : std::max(extents.size, style.size);
        extents.ascent = isFirst ? ascent : std::max(extents.ascent, ascent);
        extents.descent = isFirst ? descent : std::max(extents.descent, descent);
        extents.gap = isFirst ? gap : std::max(extents.gap, gap);
        isFirst = false;
    };
    const auto first =
        std::partition_point(paragraph.items.begin(), paragraph.items.end(),
                             [&](const TextItem& item) { return item.end <= line.begin; });
    for (auto item = first; item != paragraph.items.end() && item->begin < line.end; ++item)
    {
        add(*item->face, *ready.styles[item->style].style);
    }
    if (isFirst)
    {
        const TextStyle& style = *ready.styles[paragraph.firstStyle].style;
        add(*style.fonts.faces.front(), style);
    }
    return extents;
}

}  // namespace orvane
