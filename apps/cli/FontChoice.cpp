// SPDX-License-Identifier: MIT
#include "apps/cli/FontChoice.h"

#include "apps/cli/Errors.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/TextCodes.h"
#include "extrude/Library.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvFontList.h"
#include "host/CString.h"
#include "host/CWnd.h"
#include "platform/CodePages.h"
#include "platform/DeviceContexts.h"
#include "platform/Fonts.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cctype>
#include <numeric>

namespace
{

/// Shows the registry's status text as progress.
class StatusLine : public CWnd
{
public:
    StatusLine() : CWnd(reinterpret_cast<HWND>(1)) {}
    void SetWindowText(LPCSTR text) override { ShowProgress(ToUtf8(text)); }
};

// Wide and heavy faces make the best solids. The packages that the project needs install the first.
constexpr std::array defaultFonts = {"DejaVu Sans Bold", "Liberation Sans Bold",
                                     "DejaVu Serif Bold"};

/// A font selected into a device context while it lives.
class SelectedFace
{
public:
    explicit SelectedFace(OrvFont& font)
        : dc_(CreateCompatibleDC(nullptr)),
          face_(CreateFontIndirectA(&font.GetEnumLogFont()->elfLogFont)),
          previous_(SelectObject(dc_, face_))
    {}
    ~SelectedFace()
    {
        SelectObject(dc_, previous_);
        DeleteObject(face_);
        DeleteDC(dc_);
    }
    SelectedFace(const SelectedFace&) = delete;
    SelectedFace& operator=(const SelectedFace&) = delete;

    HDC Dc() const { return dc_; }

private:
    HDC dc_;
    HFONT face_;
    HGDIOBJ previous_;
};

Failure Unreadable(OrvFont& font)
{
    return Failure("font \"" + ToUtf8(font.GetFullName()) + "\": its file cannot be read");
}

std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// The number of single-character changes that turn one text into the other.
std::size_t Distance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i)
    {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j)
        {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, replaced});
        }
    }
    return row.back();
}

}  // namespace

void AddOutlinesOption(CLI::App& command)
{
    static const std::vector<std::string> names = {"as-is", "repaired"};
    command
        .add_option_function<std::string>(
            "--outlines",
            [](const std::string& name) {
                SetProcessOutlines(name == names[0] ? OUTLINES_AS_IS : OUTLINES_REPAIRED);
            },
            "What is taken of the fonts: their outlines as they\n"
            "are, or with overlaps, directions and cubic curves\n"
            "put right")
        ->option_text("as-is|repaired [repaired]")
        ->check(CLI::IsMember(names));
}

void LoadFonts()
{
    StatusLine status;
    CreateFontList(IsErrorTerminal() ? 1 : 0, &status);
    ClearProgress();
}

OrvFont* ChooseFont(const std::optional<std::string>& wantedName)
{
    const OrvFontList& fonts = *GetFontList();
    if (fonts.IsEmpty())
    {
        throw Failure("fonts: no TrueType font is installed (try the package fonts-dejavu-core)");
    }
    if (!wantedName)
    {
        for (const char* const wanted : defaultFonts)
        {
            if (const POSITION position = fonts.FindName(wanted))
            {
                return fonts.GetAt(position);
            }
        }
        return fonts.GetHead();
    }

    const std::string& name = *wantedName;
    std::vector<std::string> names;
    std::vector<OrvFont*> sameButForCase;
    for (POSITION position = fonts.GetHeadPosition(); position != nullptr;)
    {
        OrvFont* const font = fonts.GetNext(position);
        names.push_back(ToUtf8(font->GetFullName()));
        if (names.back() == name)
        {
            return font;
        }
        if (Lower(names.back()) == Lower(name))
        {
            sameButForCase.push_back(font);
        }
    }
    if (sameButForCase.size() == 1)
    {
        return sameButForCase.front();
    }
    std::string message = "font \"" + name + "\": not installed; near names:";
    for (const std::string& near : NearNames(name, names, 5))
    {
        message += "\n  " + near;
    }
    throw Failure(message + "\n\"orvane fonts\" lists all " + std::to_string(names.size()));
}

void CheckCharacters(OrvFont& font, const CString& text)
{
    if (text.IsEmpty())
    {
        return;
    }
    std::vector<WORD> glyphs(text.GetLength());
    const DWORD known = GetGlyphIndicesA(SelectedFace(font).Dc(), text, text.GetLength(),
                                         glyphs.data(), GGI_MARK_NONEXISTING_GLYPHS);
    if (known == GDI_ERROR)
    {
        throw Unreadable(font);
    }
    const std::string name = ToUtf8(font.GetFullName());
    int line = 1;
    for (int i = 0; i < text.GetLength(); ++i)
    {
        line += text[i] == '\r' ? 1 : 0;
        if (text[i] != '\r' && text[i] != '\n' && glyphs[i] == 0xFFFF)
        {
            const std::string character = CodePageToUtf8(std::string(1, text[i]), GetACP());
            throw Failure("text, line " + std::to_string(line) + ": the font \"" + name +
                          "\" lacks " + Describe(character));
        }
    }
}

OUTLINECHECK CheckOutlines(OrvFont& font)
{
    OUTLINECHECK check = {};
    if (!CheckFontOutlines(SelectedFace(font).Dc(), &check))
    {
        throw Unreadable(font);
    }
    return check;
}

std::vector<std::string> NearNames(const std::string& name, const std::vector<std::string>& names,
                                   std::size_t most)
{
    std::vector<std::pair<std::size_t, std::string>> ranked;
    const std::string wanted = Lower(name);
    for (const std::string& candidate : names)
    {
        const std::string lower = Lower(candidate);
        // A name that begins with or contains what was asked for is nearer than any misspelling.
        const std::size_t found = lower.find(wanted);
        ranked.emplace_back(found == std::string::npos ? 100 + Distance(wanted, lower) : found,
                            candidate);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> nearest;
    for (std::size_t i = 0; i < ranked.size() && i < most; ++i)
    {
        nearest.push_back(ranked[i].second);
    }
    return nearest;
}
