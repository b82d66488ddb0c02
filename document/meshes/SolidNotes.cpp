// SPDX-License-Identifier: MIT
#include "document/meshes/SolidNotes.h"

#include "document/meshes/UncutParts.h"
#include "orvane/Error.h"
#include "profiles/EdgeProfile.h"
#include "scene/OrvFontString.h"
#include "solids/ClosedText.h"
#include "solids/MeshMeasures.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <map>
#include <vector>

namespace orvane
{

namespace
{

/// A number with the fewest digits from which the same float is read.
std::string NumberOf(float number)
{
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, number);
    return {digits, result.ptr};
}

/// What happened to the edges of a text.
std::string ReplacementOf(const OrvFontString& text)
{
    const EdgeProfile profile = ClosedProfileOf(text);
    const bool isRound = text.ShouldRoundEdges() != 0;
    if (profile.steps.size() < 2)
    {
        return "square edges became the plain walls of closed solids";
    }
    const std::string width = NumberOf(static_cast<float>(profile.steps.back().offset));
    return std::string(isRound ? "rounded" : "bevelled") + " edges became the profile \"" +
           (isRound ? "round " : "chamfer ") + width + '"';
}

/// Names in quotes: the first few, and how many more there are.
std::string ListOf(const std::vector<std::string>& names)
{
    constexpr std::size_t mostNamed = 5;
    std::string list;
    for (std::size_t i = 0; i < std::min(names.size(), mostNamed); ++i)
    {
        list += (i == 0 ? "\"" : ", \"") + names[i] + '"';
    }
    if (names.size() > mostNamed)
    {
        list += " and " + std::to_string(names.size() - mostNamed) + " more";
    }
    return list;
}

void TellReplacements(const SolidMesh& mesh, const MeshFileOptions& options)
{
    std::map<std::string, std::size_t> texts;  // how many, by what happened to their edges
    for (const MeshNode& node : mesh.nodes)
    {
        const auto* const text = dynamic_cast<const OrvFontString*>(node.object);
        if (text != nullptr && !IsClosedText(*text))
        {
            ++texts[ReplacementOf(*text)];
        }
    }
    for (const auto& each : texts)
    {
        options.note(each.first + " in " + std::to_string(each.second) +
                     (each.second == 1 ? " text" : " texts"));
    }
}

/// What is wrong with the nodes that are not closed; empty when there is none.
std::string OpenNodesOf(const SolidMesh& mesh)
{
    const SolidMeasures measures = MeasureMesh(mesh);
    std::vector<std::string> open;
    for (std::size_t i = 0; i < measures.nodes.size(); ++i)
    {
        if (measures.nodes[i].triangles > 0 && !measures.nodes[i].isClosed)
        {
            open.push_back(mesh.nodes[i].name);
        }
    }
    return open.empty()
               ? ""
               : std::to_string(open.size()) + (open.size() == 1 ? " part is" : " parts are") +
                     " not closed: " + ListOf(open);
}

}  // namespace

void TellSolidNotes(const SolidMesh& mesh, const MeshFileOptions& options, const std::string& path)
{
    if (!options.solid)
    {
        return;
    }
    if (options.note)
    {
        TellReplacements(mesh, options);
    }
    std::vector<std::string> problems = UncutLettersOf(mesh);
    constexpr std::size_t mostTold = 10;
    if (problems.size() > mostTold)
    {
        const std::size_t more = problems.size() - mostTold;
        problems.resize(mostTold);
        problems.push_back(std::to_string(more) + " more letters are not as solids should be");
    }
    if (const std::string open = OpenNodesOf(mesh); !open.empty())
    {
        problems.push_back(open);
    }
    for (const std::string& problem : problems)
    {
        if (!options.warn)
        {
            throw Error(path, problem);
        }
        options.warn(problem);
    }
}

}  // namespace orvane
