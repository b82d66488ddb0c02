// SPDX-License-Identifier: MIT
// Reads the input as a BMP file: mapped in place, converted to true colour, as the texture of a
// text in each quality, and as a background in each placement.
#include "fuzz/DocumentUse.h"
#include "fuzz/InputFile.h"
#include "orvane.h"

#include <memory>

namespace
{

void ReadInPlace(const CString& path)
{
    MemoryMappedDIB mapped;
    mapped.Open(path);
    mapped.Close();
    MemoryMappedDIB trueColor;
    trueColor.OpenAsTrueColor(path);
    const std::unique_ptr<_RGBImageRecord> image(TextureMap::DIBImageLoad(path));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static InputFile input("input.bmp");
    const std::string& path = input.Fill(bytes, count);
    ReadInPlace(path.c_str());

    // Each input is drawn in one quality and one placement, which its length chooses.
    const unsigned choice = static_cast<unsigned>(count);
    orvane::Document document;
    try
    {
        orvane::TextOptions text;
        text.texture = orvane::TextureOptions{
            .file = path, .quality = static_cast<orvane::TextureQuality>(choice % 3)};
        document.AddText("I", text);
        orvane::BackgroundOptions background;
        background.file = path;
        background.placement = static_cast<orvane::BackgroundPlacement>(choice / 3 % 3);
        document.SetBackground(background);
    }
    catch (const orvane::Error&)
    {
        return 0;
    }
    UseDocument(document, input);
    return 0;
}
