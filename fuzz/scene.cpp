// SPDX-License-Identifier: MIT
// Opens the input as a scene file, then draws, picks, changes and saves it. The scene may use a
// picture, texture.bmp, which lies beside it.
#include "fuzz/DocumentUse.h"
#include "fuzz/InputFile.h"
#include "orvane/orvane.h"

#include <optional>

namespace
{

void WriteTexture(const std::string& folder)
{
    orvane::PictureOptions options;
    options.size = orvane::Size{4, 4};
    orvane::WritePicture(orvane::Document(), folder + "/texture.bmp", options);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static InputFile input("input.orv");
    static const bool hasTexture = (WriteTexture(input.Folder()), true);
    static_cast<void>(hasTexture);
    std::optional<orvane::Document> document;
    try
    {
        document = orvane::Document::Open(input.Fill(bytes, count));
    }
    catch (const orvane::Error&)
    {
        return 0;
    }
    UseDocument(*document, input);
    return 0;
}
