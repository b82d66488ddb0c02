// SPDX-License-Identifier: MIT
// Reads the input as a compound file and loads a bitmap from it.
#include "platform/Storage.h"

#include "fuzz/InputFile.h"
#include "orvane.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static InputFile input;
    const std::string& path = input.Fill(bytes, count);
    const std::u16string name(path.begin(), path.end());
    IStorage* storage = nullptr;
    if (FAILED(StgOpenStorage(name.c_str(), nullptr, STGM_READ, nullptr, 0, &storage)))
    {
        return 0;
    }
    MemoryMappedDIB bitmap;
    bitmap.ReadFromStorage(storage, "Bitmap");
    storage->Release();
    return 0;
}
