// SPDX-License-Identifier: MIT
// Reads the input as a font file: its measures, its first glyphs, and letters built of them. Then
// the file is the only installed font, and a text is made of it, drawn and saved.
#include "extrude/Library.h"
#include "extrude/OrvFontList.h"
#include "fuzz/DocumentUse.h"
#include "fuzz/InputFile.h"
#include "orvane.h"
#include "platform/Fonts.h"
#include "platform/posix/fonts/FontFace.h"
#include "platform/posix/fonts/GlyphPolygons.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <vector>

namespace
{

// Enough for every kind of glyph in a small font; a font may have 65,535.
constexpr UINT maxGlyphs = 24;

void BuildLetter(std::vector<BYTE> polygons)
{
    TTGlyph outline;
    outline.FromGlyphOutline(polygons.data(), static_cast<unsigned long>(polygons.size()));
    OrvGlyph glyph(polygons.size(), GLYPHMETRICS{});
    glyph.ConstructGlyph(outline, 1000.0f);
}

/// Fontconfig's list of the fonts in a folder, which it would not make anew for a file that was
/// changed in the same second.
std::string CacheFolder(const InputFile& input)
{
    return input.Folder() + "/cache";
}

/// Makes the folder of the input the only one with fonts.
void InstallAlone(const InputFile& input)
{
    const std::string configuration = input.Folder() + "/fonts.conf";
    std::ofstream(configuration) << "<fontconfig><dir>" << input.Folder()
                                 << "/fonts</dir><cachedir>" << CacheFolder(input)
                                 << "</cachedir></fontconfig>\n";
    setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
    // Under a root of its own, in which there is only the folder of the input, fontconfig does not
    // find the system's files. To read them takes longer than everything else.
    const std::filesystem::path folder = input.Folder();
    const std::filesystem::path root = folder / "root";
    const std::filesystem::path inside = root / folder.relative_path();
    std::filesystem::create_directories(inside.parent_path());
    std::filesystem::create_directory_symlink(folder, inside);
    setenv("FONTCONFIG_SYSROOT", root.c_str(), 1);
}

/// Returns whether the text was added to the document.
bool AddText(orvane::Document& document, const char* letters, const std::string& font)
{
    orvane::TextOptions text;
    text.font = font;
    try
    {
        document.AddText(letters, text);
        return true;
    }
    catch (const orvane::Error&)
    {
        return false;  // the font lacks the letter, for example
    }
}

/// Makes texts of the installed font and uses them in a document.
void DrawTexts(const InputFile& input)
{
    std::filesystem::remove_all(CacheFolder(input));
    ReloadFonts();
    for (const orvane::FontInfo& font : orvane::Fonts())
    {
        orvane::Document document;
        const bool hasA = AddText(document, "A", font.name);
        const bool hasB = AddText(document, "B", font.name);
        if (hasA || hasB)
        {
            UseDocument(document, input);
        }
    }
    GetFontList()->RemoveAll();
}

/// Returns whether the file is a font of that kind with measures, so that letters can be made of
/// it.
bool ReadFace(const std::string& path, posix::OutlineKind kind)
{
    const auto face = std::make_shared<posix::InstalledFace>();
    face->file = path;
    face->kind = kind;
    const bool hasDesign = posix::DesignOf(face) != nullptr;
    for (UINT index = 0; index < std::min(posix::GlyphCountOf(face), maxGlyphs); ++index)
    {
        posix::InspectGlyph(face, index, [](const auto& own, const auto& provided) {
            BuildLetter(posix::NativePolygons(provided.outline ? *provided.outline : own));
        });
    }
    posix::UseGlyph(face, 64, U'A', 'A', OUTLINES_REPAIRED,
                    [](const posix::GlyphOutline& glyph) { BuildLetter(glyph.polygons); });
    return hasDesign;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static InputFile input("fonts/input.ttf");
    static const bool isAlone = (InstallAlone(input), true);
    static_cast<void>(isAlone);
    const std::string& path = input.Fill(bytes, count);
    const bool isTrueType = ReadFace(path, posix::OutlineKind::TrueType);
    const bool isCubic = ReadFace(path, posix::OutlineKind::Cubic);
    if (isTrueType || isCubic)
    {
        DrawTexts(input);
    }
    return 0;
}
