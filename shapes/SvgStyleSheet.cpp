// SPDX-License-Identifier: MIT
#include "shapes/SvgStyleSheet.h"

#include "host/AsciiCase.h"
#include "shapes/SvgText.h"

#include <algorithm>
#include <tuple>

namespace orvane::shapes
{

namespace
{

std::string WithoutComments(std::string_view css)
{
    std::string result;
    for (std::size_t at = 0; at < css.size();)
    {
        const std::size_t start = std::min(css.find("/*", at), css.size());
        result.append(css.substr(at, start - at));
        const std::size_t end = css.find("*/", std::min(start + 2, css.size()));
        at = end == std::string_view::npos ? css.size() : end + 2;
    }
    return result;
}

bool IsNameCharacter(char c)
{
    // All bytes of characters outside of ASCII are from 80 hexadecimal up.
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

/// Calls \p use with each part of a text between separators.
template <typename Use>
void ForEachPart(std::string_view text, char separator, Use use)
{
    for (;;)
    {
        const std::size_t end = text.find(separator);
        use(Trimmed(text.substr(0, end)));
        if (end == std::string_view::npos)
        {
            return;
        }
        text.remove_prefix(end + 1);
    }
}

}  // namespace

std::vector<CssDeclaration> ParseDeclarations(std::string_view text)
{
    std::vector<CssDeclaration> declarations;
    ForEachPart(text, ';', [&](std::string_view part) {
        const std::size_t colon = part.find(':');
        if (colon == std::string_view::npos)
        {
            return;
        }
        CssDeclaration declaration;
        declaration.name = LowerAscii(std::string(Trimmed(part.substr(0, colon))));
        std::string_view value = Trimmed(part.substr(colon + 1));
        if (const std::size_t mark = value.rfind('!'); mark != std::string_view::npos)
        {
            declaration.isImportant = Trimmed(value.substr(mark + 1)) == "important";
            value = Trimmed(value.substr(0, mark));
        }
        declaration.value = value;
        declarations.push_back(std::move(declaration));
    });
    return declarations;
}

void SvgStyleSheet::Add(std::string_view css)
{
    const std::string text = WithoutComments(css);
    std::string_view rest = text;
    for (rest = Trimmed(rest); !rest.empty(); rest = Trimmed(rest))
    {
        const std::size_t end = rest.find_first_of("{};");
        const std::string_view head = Trimmed(rest.substr(0, end));
        const bool hasBlock = end != std::string_view::npos && rest[end] == '{';
        if (!hasBlock)
        {
            if (!head.empty())
            {
                LeaveOut(head);
            }
            rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
            continue;
        }
        rest.remove_prefix(end + 1);
        // A rule such as @media has blocks inside of its block.
        std::size_t depth = 1;
        std::size_t at = 0;
        for (; at < rest.size() && depth > 0; ++at)
        {
            depth += rest[at] == '{' ? 1 : 0;
            depth -= rest[at] == '}' ? 1 : 0;
        }
        const std::string_view block = rest.substr(0, depth == 0 ? at - 1 : at);
        rest.remove_prefix(at);
        if (head.starts_with('@'))
        {
            LeaveOut(head);
            continue;
        }
        blocks_.push_back(ParseDeclarations(block));
        ForEachPart(head, ',', [this](std::string_view selector) {
            AddSelector(selector, blocks_.size() - 1);
        });
    }
}

void SvgStyleSheet::AddSelector(std::string_view selector, std::size_t block)
{
    Rule rule;
    rule.block = block;
    std::string_view rest = selector;
    for (bool isFirst = true; !rest.empty(); isFirst = false)
    {
        const char mark = rest[0];
        const bool isMarked = mark == '.' || mark == '#';
        rest.remove_prefix(isMarked ? 1 : 0);
        const auto end = std::find_if_not(rest.begin(), rest.end(), IsNameCharacter);
        const std::string name(rest.begin(), end);
        const bool isAny = isFirst && mark == '*';
        if ((name.empty() && !isAny) || (!isMarked && !isFirst))
        {
            LeaveOut(selector);
            return;
        }
        rest.remove_prefix(isAny ? 1 : name.size());
        (mark == '.'   ? rule.classes.emplace_back()
         : mark == '#' ? rule.ids.emplace_back()
                       : rule.name) = name;
    }
    const std::string key = !rule.ids.empty()       ? "#" + rule.ids[0]
                            : !rule.classes.empty() ? "." + rule.classes[0]
                            : rule.name.empty()     ? "*"
                                                    : rule.name;
    byKey_[key].push_back(rules_.size());
    rules_.push_back(std::move(rule));
}

void SvgStyleSheet::LeaveOut(std::string_view what)
{
    constexpr std::size_t mostNamed = 3;
    constexpr std::size_t mostLetters = 60;
    if (leftOut_.size() < mostNamed)
    {
        leftOut_.emplace_back(what.substr(0, mostLetters));
    }
}

bool SvgStyleSheet::Matches(const Rule& rule, const CssElement& element)
{
    return (rule.name.empty() || rule.name == element.name) &&
           std::all_of(rule.ids.begin(), rule.ids.end(),
                       [&](const std::string& id) { return id == element.id; }) &&
           std::all_of(rule.classes.begin(), rule.classes.end(), [&](const std::string& name) {
               return std::find(element.classes.begin(), element.classes.end(), name) !=
                      element.classes.end();
           });
}

std::vector<const CssDeclaration*> SvgStyleSheet::DeclarationsFor(const CssElement& element,
                                                                  WorkLimit& work) const
{
    std::vector<std::size_t> matching;
    const auto look = [&](const std::string& key) {
        const auto found = byKey_.find(key);
        if (found == byKey_.end())
        {
            return;
        }
        constexpr std::int64_t stepsOfRule = 10;
        work.Add(stepsOfRule *
                 static_cast<std::int64_t>(found->second.size() * (1 + element.classes.size())));
        std::copy_if(found->second.begin(), found->second.end(), std::back_inserter(matching),
                     [&](std::size_t rule) { return Matches(rules_[rule], element); });
    };
    if (!rules_.empty())
    {
        look("*");
        look(std::string(element.name));
        look("#" + std::string(element.id));
        for (const std::string_view name : element.classes)
        {
            look("." + std::string(name));
        }
    }
    // More ids win over fewer, then classes, then names, then the later rule. A class that the
    // element names twice gives its rules twice.
    const auto rankOf = [this](std::size_t index) {
        const Rule& rule = rules_[index];
        return std::tuple(rule.ids.size(), rule.classes.size(), rule.name.empty() ? 0 : 1, index);
    };
    std::sort(matching.begin(), matching.end(),
              [&](std::size_t a, std::size_t b) { return rankOf(a) < rankOf(b); });
    matching.erase(std::unique(matching.begin(), matching.end()), matching.end());
    std::vector<const CssDeclaration*> declarations;
    for (const std::size_t index : matching)
    {
        for (const CssDeclaration& declaration : blocks_[rules_[index].block])
        {
            declarations.push_back(&declaration);
        }
    }
    return declarations;
}

}  // namespace orvane::shapes
