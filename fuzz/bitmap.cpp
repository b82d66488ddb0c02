// SPDX-License-Identifier: MIT
// Reads the input as a BMP file in three ways: mapped in place, converted to true colour, and as a
// texture.
#include "fuzz/InputFile.h"
#include "orvane.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static const InputFile input;
    const CString path = input.Fill(bytes, count).c_str();
    MemoryMappedDIB mapped;
    mapped.Open(path);
    mapped.Close();
    MemoryMappedDIB trueColor;
    trueColor.OpenAsTrueColor(path);
    const std::unique_ptr<_RGBImageRecord> image(TextureMap::DIBImageLoad(path));
    return 0;
}
