// SPDX-License-Identifier: MIT
#include "document/FontChoice.h"

#include "document/OptionRange.h"
#include "document/TextEncoding.h"
#include "extrude/FontDC.h"
#include "extrude/Library.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvFontList.h"
#include "host/AsciiCase.h"
#include "host/CString.h"
#include "host/CWnd.h"
#include "host/SimilarNames.h"
#include "orvane/orvane.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <memory>
#include <utility>

namespace orvane
{

namespace
{

/// The code page that the registry's fonts were loaded in; 0 before that.
UINT registryCodePage = 0;

/// Whether the registry lacks fonts because an exception has ended its filling.
bool isRegistryIncomplete = false;

/// The font registry reports its progress as the text of a window. This window passes the text on
/// to a function.
class StatusLine : public CWnd
{
public:
    explicit StatusLine(const std::function<void(const std::string&)>& progress)
        : CWnd(reinterpret_cast<HWND>(1)), progress_(progress)
    {}
    void SetWindowText(LPCSTR text) override { progress_(ToUtf8(text)); }

private:
    const std::function<void(const std::string&)>& progress_;
};

struct PlatformFont : CFont
{
    explicit PlatformFont(const LOGFONTA& description) { CreateFontIndirect(&description); }
};

/// A font that is selected into a device context for as long as this object lives.
class SelectedFace
{
public:
    explicit SelectedFace(OrvFont& font) : face_(font.GetEnumLogFont()->elfLogFont), dc_(face_) {}

    HDC Dc() const { return dc_; }

private:
    PlatformFont face_;
    FontDC dc_;
};

std::string PlaceOf(const std::string& fontName)
{
    return "font \"" + fontName + "\"";
}

Error Unreadable(const OrvFont& font)
{
    return Error(PlaceOf(ToUtf8(font.GetFullName())), "the file of the font cannot be read");
}

/// The full name of a registered font in UTF-8.
std::string RegisteredName(const OrvFont& font)
{
    return CodePageToUtf8(static_cast<LPCSTR>(font.GetFullName()), registryCodePage);
}

/// Calls visit(font) for each registered font in the order of the names.
template <typename Visit>
void ForEachFont(Visit visit)
{
    const OrvFontList& fonts = *GetFontList();
    for (POSITION position = fonts.GetHeadPosition(); position != nullptr;)
    {
        visit(*fonts.GetNext(position));
    }
}

OrvFont* ChooseDefaultFont()
{
    const OrvFontList& fonts = *GetFontList();
    for (const char* const wanted : defaultFonts)
    {
        if (const POSITION position = fonts.FindName(wanted))
        {
            return fonts.GetAt(position);
        }
    }
    return fonts.GetHead();
}

/// The face that an enumeration of faces looks for, and the font that is made of the face.
struct FaceSearch
{
    std::string name;  ///< the full name in the process's code page
    std::unique_ptr<OrvFont> font;
};

int CALLBACK TakeWantedFace(const LOGFONTA* record, const TEXTMETRICA* metrics, DWORD, LPARAM data)
{
    auto& search = *reinterpret_cast<FaceSearch*>(data);  // NOLINT(performance-no-int-to-ptr)
    auto font = std::make_unique<OrvFont>();
    if (font->Create(reinterpret_cast<const ENUMLOGFONTA*>(record),
                     reinterpret_cast<const NEWTEXTMETRICA*>(metrics)) != 0 &&
        font->GetFullName() == search.name.c_str())
    {
        search.font = std::move(font);
        return 0;
    }
    return 1;
}

FontInfo Describe(const OrvFont& font)
{
    const ENUMLOGFONTA& record = *font.GetEnumLogFont();
    FontInfo info;
    info.name = RegisteredName(font);
    info.family = CodePageToUtf8(record.elfLogFont.lfFaceName, registryCodePage);
    info.style = CodePageToUtf8(reinterpret_cast<const char*>(record.elfStyle), registryCodePage);
    info.weight = static_cast<int>(record.elfLogFont.lfWeight);
    info.italic = record.elfLogFont.lfItalic != 0;
    return info;
}

}  // namespace

void LoadFonts(const std::function<void(const std::string&)>& progress)
{
    if (!GetFontList()->IsEmpty() && !isRegistryIncomplete)
    {
        registryCodePage = registryCodePage != 0 ? registryCodePage : GetACP();
        return;
    }
    registryCodePage = GetACP();
    isRegistryIncomplete = true;
    StatusLine status(progress);
    CreateFontList(progress ? 1 : 0, &status);
    isRegistryIncomplete = false;
}

OrvFont* ChooseFont(const std::optional<std::string>& wantedName)
{
    if (GetFontList()->IsEmpty())
    {
        throw Error("fonts", "no TrueType font is installed (try the package fonts-dejavu-core)");
    }
    if (!wantedName)
    {
        return ChooseDefaultFont();
    }
    const std::string& name = *wantedName;
    CheckName("font", name);
    OrvFont* sameName = nullptr;
    std::vector<std::string> names;
    std::vector<OrvFont*> sameButForCase;
    ForEachFont([&](OrvFont& font) {
        names.push_back(RegisteredName(font));
        if (names.back() == name)
        {
            sameName = &font;
        }
        if (LowerAscii(names.back()) == LowerAscii(name))
        {
            sameButForCase.push_back(&font);
        }
    });
    if (sameName != nullptr || sameButForCase.size() == 1)
    {
        return sameName != nullptr ? sameName : sameButForCase.front();
    }
    std::string problem = "not installed; near names:";
    for (const std::string& similar : SimilarNames(name, names, 5))
    {
        problem += (problem.back() == ':' ? " \"" : ", \"") + similar + "\"";
    }
    throw Error(PlaceOf(name), problem);
}

OrvFont* FontForCodePage(OrvFont& font, UINT codePage)
{
    if (codePage == registryCodePage)
    {
        return &font;
    }
    // The fonts are never destroyed, because documents may use them until the process ends.
    static auto* const fonts = new std::map<std::pair<UINT, std::string>, std::unique_ptr<OrvFont>>;
    const std::string name = RegisteredName(font);
    std::unique_ptr<OrvFont>& known = (*fonts)[{codePage, name}];
    if (known == nullptr)
    {
        const CodePageText encoded = Utf8ToCodePage(name, codePage);
        FaceSearch search{encoded.text, nullptr};
        if (encoded.Fits())
        {
            const CodePageScope scope(codePage);
            const HDC dc = CreateCompatibleDC(nullptr);
            EnumFontFamiliesA(dc, search.name.c_str(), TakeWantedFace,
                              reinterpret_cast<LPARAM>(&search));
            DeleteDC(dc);
        }
        if (search.font == nullptr)
        {
            throw Error(PlaceOf(name), "the font cannot be found by its name in code page " +
                                           std::to_string(codePage));
        }
        known = std::move(search.font);
    }
    return known.get();
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
    int line = 1;
    for (int i = 0; i < text.GetLength(); ++i)
    {
        line += text[i] == '\r' ? 1 : 0;
        if (text[i] != '\r' && text[i] != '\n' && glyphs[i] == 0xFFFF)
        {
            const std::string character = CodePageToUtf8(std::string(1, text[i]), GetACP());
            throw Error(
                "text, line " + std::to_string(line),
                "the font \"" + ToUtf8(font.GetFullName()) + "\" lacks " + Describe(character));
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

std::vector<FontInfo> Fonts()
{
    LoadFonts();
    std::vector<FontInfo> fonts;
    ForEachFont([&fonts](const OrvFont& font) { fonts.push_back(Describe(font)); });
    return fonts;
}

FontInfo DefaultFont()
{
    LoadFonts();
    return Describe(*ChooseFont(std::nullopt));
}

FontInfo FindFont(const std::string& name)
{
    LoadFonts();
    return Describe(*ChooseFont(name));
}

}  // namespace orvane
