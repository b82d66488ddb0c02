// SPDX-License-Identifier: MIT
#pragma once

#include "shapes/GridEdges.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvane::shapes
{

/// A property and its value, as CSS writes them: "fill: red".
struct CssDeclaration
{
    std::string name;
    std::string value;
    bool isImportant = false;
};

/// Reads declarations that are separated by semicolons. What is none is skipped.
std::vector<CssDeclaration> ParseDeclarations(std::string_view text);

/// What a selector looks at.
struct CssElement
{
    std::string_view name;
    std::string_view id;  ///< empty for none
    std::vector<std::string_view> classes;
};

/// The rules of a document's style elements. Selectors are an element's name or *, with any number
/// of classes and ids, as in "path.thin#first", or lists of those.
class SvgStyleSheet
{
public:
    /// Adds the rules of a style element.
    void Add(std::string_view css);

    /// The declarations that apply to an element, the one that wins last. Owned by the sheet and
    /// valid until rules are added.
    /// \param work counts the rules that are looked at
    std::vector<const CssDeclaration*> DeclarationsFor(const CssElement& element,
                                                       WorkLimit& work) const;

    /// The selectors and rules that were left out because they are of other kinds, such as
    /// "g > path" and "@import"; at most a few of them.
    const std::vector<std::string>& LeftOut() const { return leftOut_; }

private:
    struct Rule
    {
        std::string name;  ///< empty for any element
        std::vector<std::string> ids;
        std::vector<std::string> classes;
        std::size_t block;  ///< the index of its declarations
    };

    void AddSelector(std::string_view selector, std::size_t block);
    void LeaveOut(std::string_view what);
    static bool Matches(const Rule& rule, const CssElement& element);

    std::vector<Rule> rules_;
    std::vector<std::vector<CssDeclaration>> blocks_;
    /// The indices of rules by one thing that they ask for: "#id", ".class", "name" or "*".
    std::unordered_map<std::string, std::vector<std::size_t>> byKey_;
    std::vector<std::string> leftOut_;
};

}  // namespace orvane::shapes
