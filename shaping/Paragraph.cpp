// SPDX-License-Identifier: MIT
#include "shaping/Paragraph.h"

#include "platform/Limits.h"
#include "shaping/Scripts.h"

#include <algorithm>

namespace orvane
{
namespace
{

constexpr char32_t lineSeparator = 0x2028;
constexpr char32_t noBreakSpace = 0xA0;
constexpr char32_t narrowNoBreakSpace = 0x202F;

bool EndsParagraph(char32_t c)
{
    return c == '\n' || c == '\r' || c == 0x85 || c == 0x2029;
}

/// Whether characters have no face of their own: they go with the letters beside them.
bool GoesWithNeighbours(std::u32string_view cluster)
{
    return std::all_of(cluster.begin(), cluster.end(), [](char32_t c) {
        return HangsAtLineEnd(c) || c == noBreakSpace || c == narrowNoBreakSpace || IsIgnorable(c);
    });
}

/// Splits one paragraph into items.
class Itemizer
{
public:
    Itemizer(const ReadyText& ready, Paragraph* paragraph, FaceFinder* finder,
             std::vector<MissingCharacter>* missing)
        : ready_(ready),
          paragraph_(*paragraph),
          finder_(*finder),
          missing_(*missing),
          scripts_(ResolveScripts(paragraph->text))
    {}

    void Split()
    {
        for (std::size_t begin = 0; begin < paragraph_.text.size();)
        {
            std::size_t end = ExtendLastItem(begin);
            if (end == begin)
            {
                end = NextCluster(begin);
                AddCluster(begin, end);
            }
            begin = end;
        }
        FillSpaces();
        MergeItems();
    }

private:
    const ReadyStyle& StyleOf(std::size_t character) const
    {
        return ready_.styles[ready_.styleOf[paragraph_.first + character]];
    }

    /// Adds the letters to the last item that are like it, with the spaces between them. Most of a
    /// text is added here. Returns the end of what was added.
    std::size_t ExtendLastItem(std::size_t begin)
    {
        if (paragraph_.items.empty())
        {
            return begin;
        }
        TextItem& last = paragraph_.items.back();
        const ReadyStyle& style = ready_.styles[last.style];
        if (last.kind != ItemKind::Text || last.face != style.style->fonts.faces.front())
        {
            return begin;
        }
        std::size_t end = begin;
        for (std::size_t n = begin; n < paragraph_.text.size();)
        {
            const bool isAlike = ready_.styleOf[paragraph_.first + n] == last.style &&
                                 paragraph_.levels.ofCharacters[n] == last.level &&
                                 (style.script || scripts_[n] == last.script);
            if (!isAlike || !IsPlain(*last.face, paragraph_.text[n]))
            {
                break;
            }
            if (paragraph_.text[n] == ' ')
            {
                ++n;
                continue;
            }
            const std::size_t next = NextCluster(n);
            while (++n < next && IsPlain(*last.face, paragraph_.text[n]))
            {}
            if (n < next)
            {
                break;
            }
            end = next;
        }
        last.end = end > begin ? end : last.end;
        return end;
    }

    /// The same as ClusterEnd, quickly before characters that never belong to the one before.
    std::size_t NextCluster(std::size_t begin) const
    {
        const std::size_t next = begin + 1;
        const bool isQuick = next == paragraph_.text.size() || paragraph_.text[next] < firstMark;
        return isQuick ? next : ClusterEnd(paragraph_.text, begin);
    }

    /// Whether a character is a letter of the first face or a common space that the face has.
    bool IsPlain(const ShapingFace& face, char32_t c)
    {
        const bool isAscii = c >= ' ' && c < 0x7F;
        const char32_t character[] = {c};
        const bool isOrdinary =
            isAscii || (!EndsLine(c) && !GoesWithNeighbours({character, 1}) && c != '\t');
        return isOrdinary && finder_.IsInFace(face, c);
    }

    void AddCluster(std::size_t begin, std::size_t end)
    {
        const std::u32string_view cluster = paragraph_.text.substr(begin, end - begin);
        TextItem item;
        item.begin = begin;
        item.end = end;
        item.style = ready_.styleOf[paragraph_.first + begin];
        item.level = paragraph_.levels.ofCharacters[begin];
        item.kind = cluster[0] == '\t'     ? ItemKind::Tab
                    : EndsLine(cluster[0]) ? ItemKind::LineEnd
                                           : ItemKind::Text;
        const ReadyStyle& style = StyleOf(begin);
        item.script = style.script.value_or(scripts_[begin]);
        SetLanguage(&item, style);
        if (item.kind == ItemKind::Text && !GoesWithNeighbours(cluster))
        {
            FoundFace found = finder_.Find(style.style->fonts, cluster, item.language);
            item.face = std::move(found.face);
            if (!found.hasAll)
            {
                TellMissing(*item.face, begin, cluster);
            }
        }
        paragraph_.items.push_back(std::move(item));
    }

    void SetLanguage(TextItem* item, const ReadyStyle& style)
    {
        if (!style.style->language.empty())
        {
            item->language = style.style->language;
            return;
        }
        if (!isLikelyKnown_ || likelyScript_ != item->script)
        {
            likelyScript_ = item->script;
            likely_ = LikelyLanguage(item->script, scripts_, ready_.userLanguage);
            isLikelyKnown_ = true;
        }
        item->language = likely_;
    }

    void TellMissing(const ShapingFace& face, std::size_t begin, std::u32string_view cluster)
    {
        for (std::size_t n = 0; n < cluster.size(); ++n)
        {
            const char32_t character = cluster[n];
            const bool isTold = std::any_of(missing_.begin(), missing_.end(),
                                            [character](const MissingCharacter& entry) {
                                                return entry.character == character;
                                            });
            if (!isTold && !IsIgnorable(character) && !face.Covers(&character, 1))
            {
                missing_.push_back({character, ready_.text.offsets[paragraph_.first + begin + n]});
            }
        }
    }

    /// Gives faces to spaces and to what else has none yet. Between letters of one face a space has
    /// that face too, so that words and the spaces between them are shaped together.
    void FillSpaces()
    {
        std::vector<TextItem>& items = paragraph_.items;
        std::shared_ptr<const ShapingFace> before;
        std::size_t first = 0;  // the first of the items without a face before item n
        for (std::size_t n = 0; n <= items.size(); ++n)
        {
            if (n < items.size() && !items[n].face)
            {
                continue;
            }
            const std::shared_ptr<const ShapingFace> after =
                n < items.size() ? items[n].face : nullptr;
            for (; first < n; ++first)
            {
                FillSpace(&items[first], before, after);
            }
            before = after;
            ++first;
        }
    }

    void FillSpace(TextItem* item, const std::shared_ptr<const ShapingFace>& before,
                   const std::shared_ptr<const ShapingFace>& after)
    {
        const FontChain& chain = StyleOf(item->begin).style->fonts;
        const std::shared_ptr<const ShapingFace>& between = before == after || !after ? before
                                                            : !before                 ? after
                                                                      : chain.faces.front();
        const std::u32string_view cluster =
            paragraph_.text.substr(item->begin, item->end - item->begin);
        const bool isCovered = between && (item->kind != ItemKind::Text ||
                                           between->Covers(cluster.data(), cluster.size()));
        item->face = isCovered ? between
                     : item->kind == ItemKind::Text
                         ? finder_.Find(chain, cluster, item->language).face
                         : chain.faces.front();
    }

    bool AreShapedTogether(const TextItem& left, const TextItem& right) const
    {
        return left.kind == ItemKind::Text && right.kind == ItemKind::Text &&
               left.face == right.face && left.script == right.script &&
               left.level == right.level && left.language == right.language &&
               ready_.styles[left.style].alike == ready_.styles[right.style].alike;
    }

    void MergeItems()
    {
        std::vector<TextItem>& items = paragraph_.items;
        std::size_t kept = 0;
        for (std::size_t n = 1; n < items.size(); ++n)
        {
            if (AreShapedTogether(items[kept], items[n]))
            {
                items[kept].end = items[n].end;
            }
            else if (++kept != n)
            {
                items[kept] = std::move(items[n]);
            }
        }
        items.resize(std::min(items.size(), kept + 1));
    }

    const ReadyText& ready_;
    Paragraph& paragraph_;
    FaceFinder& finder_;
    std::vector<MissingCharacter>& missing_;
    std::vector<ScriptTag> scripts_;
    bool isLikelyKnown_ = false;
    ScriptTag likelyScript_ = commonScript;
    std::string likely_;
};

/// \param glyphCount of the text so far; the glyphs of the items are added to it
void ShapeItems(const ReadyText& ready, Paragraph* paragraph, RunCache* cache,
                std::size_t* glyphCount)
{
    const std::size_t characters = ready.text.characters.size();
    paragraph->advances.assign(paragraph->text.size(), 0);
    paragraph->isSafeStart.assign(paragraph->text.size(), 0);
    for (TextItem& item : paragraph->items)
    {
        if (item.kind != ItemKind::Text)
        {
            paragraph->isSafeStart[item.begin] = 1;
            continue;
        }
        item.glyphs =
            cache->Shape(*item.face, RunOf(ready, *paragraph, item, item.begin, item.end));
        *glyphCount += item.glyphs->size();
        if (*glyphCount > limits::MaxGlyphs(characters))
        {
            throw TooManyGlyphs(*item.face, characters);
        }
        const double size = ready.styles[item.style].style->size;
        for (const ShapedGlyph& glyph : *item.glyphs)
        {
            const std::size_t at = item.begin + glyph.cluster;
            paragraph->advances[at] += glyph.advance * size;
            paragraph->isSafeStart[at] = glyph.isSafeToBreak ? 1 : 0;
        }
        paragraph->isSafeStart[item.begin] = 1;
    }
}

}  // namespace

bool EndsLine(char32_t character)
{
    return character == lineSeparator || character == '\v' || character == '\f';
}

ShapingRun RunOf(const ReadyText& ready, const Paragraph& paragraph, const TextItem& item,
                 std::size_t begin, std::size_t end)
{
    ShapingRun run;
    run.text = paragraph.text.data();
    run.textSize = paragraph.text.size();
    run.begin = begin;
    run.end = end;
    run.script = item.script;
    run.language = item.language;
    run.isRightToLeft = item.IsRightToLeft();
    run.features = ready.styles[item.style].features;
    return run;
}

std::vector<Paragraph> ShapeParagraphs(const ReadyText& ready, TextDirection direction,
                                       bool findsBreaks, FaceFinder* finder, RunCache* cache,
                                       std::vector<MissingCharacter>* missing)
{
    const std::u32string_view text = ready.text.characters;
    std::vector<Paragraph> paragraphs;
    std::size_t glyphCount = 0;
    for (std::size_t begin = 0;;)
    {
        std::size_t end = begin;
        while (end < text.size() && !EndsParagraph(text[end]))
        {
            ++end;
        }
        Paragraph paragraph;
        paragraph.first = begin;
        paragraph.text = text.substr(begin, end - begin);
        // The end of the text has the style of its last character.
        paragraph.firstStyle =
            ready.styleOf.empty() ? 0 : ready.styleOf[std::min(begin, ready.styleOf.size() - 1)];
        paragraph.levels = FindLevels(paragraph.text, direction);
        if (findsBreaks)
        {
            paragraph.breaks =
                FindLineBreaks(paragraph.text, ready.styles[paragraph.firstStyle].style->language);
        }
        Itemizer(ready, &paragraph, finder, missing).Split();
        ShapeItems(ready, &paragraph, cache, &glyphCount);
        paragraphs.push_back(std::move(paragraph));
        if (end == text.size())
        {
            return paragraphs;
        }
        const bool isPair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
        begin = end + (isPair ? 2 : 1);
    }
}

}  // namespace orvane
