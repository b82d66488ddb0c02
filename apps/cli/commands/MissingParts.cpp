// SPDX-License-Identifier: MIT
#include "apps/cli/commands/MissingParts.h"

#include "apps/cli/Terminal.h"
#include "apps/cli/info/JsonWriter.h"
#include "document/SceneDocument.h"
#include "document/TextEncoding.h"
#include "orvane/Error.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

namespace orvane
{

namespace
{

/// The messages of letters that could not be built, each once, in the order in which they came.
std::vector<std::string> unbuiltLetters;

/// Tells the first problems, and how many more there are: a file can have a million of them.
/// \param place begins each message
void Tell(const std::string& place, const std::vector<std::string>& problems)
{
    constexpr std::size_t mostTold = 10;
    for (std::size_t i = 0; i < std::min(problems.size(), mostTold); ++i)
    {
        Say(place + problems[i]);
    }
    if (problems.size() > mostTold)
    {
        Say(place + std::to_string(problems.size() - mostTold) + " more are missing");
    }
}

/// The text with each run of white space as one space.
std::string OnOneLine(const char* text)
{
    std::string line;
    for (const char* at = text; *at != 0; ++at)
    {
        const bool isSpace = std::isspace(static_cast<unsigned char>(*at)) != 0;
        if (!isSpace)
        {
            line += *at;
        }
        else if (!line.empty() && line.back() != ' ')
        {
            line += ' ';
        }
    }
    line.resize(line.find_last_not_of(' ') + 1);
    return line;
}

int TakeMessage(HWND, LPCSTR text, LPCSTR, UINT)
{
    const std::string line = ToUtf8(OnOneLine(text).c_str());
    if (std::find(unbuiltLetters.begin(), unbuiltLetters.end(), line) == unbuiltLetters.end())
    {
        unbuiltLetters.push_back(line);
    }
    return IDOK;
}

}  // namespace

void TellMissingParts(const SceneDocument& document, Strictness strictness)
{
    std::vector<std::string> problems;
    for (const MissingPicture& picture : document.missingPictures)
    {
        problems.push_back("the picture " + Quoted(picture.file) + " is left out: " +
                           (picture.reason == MissingPicture::Reason::NotFound
                                ? "there is no such file, and none of that name beside the scene"
                                : "it is not in the folder of the scene; --allow-folder with its "
                                  "folder, or --trust, allows it"));
    }
    for (const MissingFont& font : document.missingFonts)
    {
        problems.push_back("the font " + Quoted(font.name) + " is not installed, " +
                           (font.used.empty() ? "and no other font is; its texts are left out"
                                              : Quoted(font.used) + " is used instead"));
    }
    Tell(document.path + ": ", problems);
    if (strictness == Strictness::Fail && !problems.empty())
    {
        throw Error(document.path, "--strict: parts of the scene are missing");
    }
}

UnbuiltLetters::UnbuiltLetters() : previous_(SetMessageBoxHandler(TakeMessage))
{
    unbuiltLetters.clear();
}

UnbuiltLetters::~UnbuiltLetters()
{
    SetMessageBoxHandler(previous_);
    Tell("", unbuiltLetters);
}

void UnbuiltLetters::ThrowIfAny()
{
    if (!unbuiltLetters.empty())
    {
        throw Error("", "--strict: letters are missing");
    }
}

}  // namespace orvane
