// SPDX-License-Identifier: MIT
#include "apps/cli/commands/MissingParts.h"

#include "apps/cli/Terminal.h"
#include "apps/cli/info/JsonWriter.h"
#if defined(ORVANE_WITH_SHAPING)
#include "apps/cli/shaping/ShapedParts.h"
#endif
#include "document/SceneDocument.h"
#include "document/TextNode.h"
#include "document/meshes/UncutParts.h"
#include "orvane/Error.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>
#include <vector>

namespace orvane
{

namespace
{

std::string PictureText(const MissingPicture& picture)
{
    const std::string name = "the picture " + Quoted(picture.file);
    switch (picture.reason)
    {
        case MissingPicture::Reason::NotFound:
            return name +
                   " is left out: there is no such file, and none of that name beside the scene";
        case MissingPicture::Reason::NotAllowed:
            return name +
                   " is left out: it is not in the folder of the scene; --allow-folder with its "
                   "folder, or --trust, allows it";
        default:
            return name +
                   " is shown only in part or not at all: its file could not be read completely "
                   "while it was drawn";
    }
}

std::string FontText(const MissingFont& font)
{
    return "the font " + Quoted(font.name) + " is not installed, " +
           (font.used.empty() ? "and no other font is; its texts are left out"
                              : Quoted(font.used) + " is used instead");
}

std::string LetterText(const MissingLetter& letter)
{
    return "the letter " + Quoted(letter.letter) + " is left out: the font " + Quoted(letter.font) +
           " has no readable outline of it";
}

void AddProblems(std::vector<std::string>& problems, const SceneDocument& document,
                 MissingKind kind)
{
    const auto add = [&problems](const auto& parts, const auto& textOf) {
        std::transform(parts.begin(), parts.end(), std::back_inserter(problems), textOf);
    };
    const auto sentence = [](const std::string& text) { return text; };
    switch (kind)
    {
        case MissingKind::Picture:
            return add(document.missingPictures, PictureText);
        case MissingKind::Font:
            add(document.missingFonts, FontText);
#if defined(ORVANE_WITH_SHAPING)
            add(FontNoticesOf(document), sentence);
#endif
            return;
        case MissingKind::Letter:
            return add(MissingLettersOf(document), LetterText);
        case MissingKind::Character:
#if defined(ORVANE_WITH_SHAPING)
            add(MissingCharactersOf(document), sentence);
#endif
            return;
        case MissingKind::TextProfile:
            return add(UncutTextsOf(document), sentence);
        case MissingKind::OutlineProfile:
            return add(UncutOutlinesOf(document), sentence);
    }
}

/// The beginning of each message about a document.
std::string PlaceOf(const SceneDocument& document)
{
    return document.path.empty() ? "" : document.path + ": ";
}

}  // namespace

void TellFirst(const std::string& place, const std::vector<std::string>& problems, const char* rest)
{
    constexpr std::size_t mostTold = 10;
    for (std::size_t i = 0; i < std::min(problems.size(), mostTold); ++i)
    {
        Say(place + problems[i]);
    }
    if (problems.size() > mostTold)
    {
        Say(place + std::to_string(problems.size() - mostTold) + rest);
    }
}

void TellMissingParts(const SceneDocument& document, std::initializer_list<MissingKind> kinds,
                      Strictness strictness)
{
    std::vector<std::string> problems;
    for (const MissingKind kind : kinds)
    {
        AddProblems(problems, document, kind);
    }
    TellFirst(PlaceOf(document), problems, " more are missing");
    if (strictness == Strictness::Fail && !problems.empty())
    {
        throw Error(document.path, "--strict: parts of the scene are missing");
    }
}

void TellNotices(const std::string& file, const std::vector<std::string>& notices,
                 Strictness strictness)
{
    TellFirst("", notices, " more parts of the file are not supported");
    if (strictness == Strictness::Fail && !notices.empty())
    {
        throw Error(file, "--strict: parts of the file are not supported");
    }
}

MissingPictureFunction LostPictureTeller(const SceneDocument& document, Strictness strictness)
{
    if (strictness == Strictness::Fail)
    {
        return {};
    }
    return [place = PlaceOf(document)](const MissingPicture& picture) {
        Say(place + PictureText(picture));
    };
}

void AddStrictOption(CLI::App& command, Strictness& strictness, const std::string& description)
{
    command.add_flag_callback(
        "--strict", [&strictness] { strictness = Strictness::Fail; }, description);
}

}  // namespace orvane
