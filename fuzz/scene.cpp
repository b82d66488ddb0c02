// SPDX-License-Identifier: MIT
// Opens the input as a scene file, then draws, picks, changes and saves it.
#include "fuzz/DocumentUse.h"
#include "fuzz/InputFile.h"
#include "orvane/orvane.h"

#include <optional>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static const InputFile input("input.orv");
    std::optional<orvane::Document> document;
    try
    {
        document = orvane::Document::Open(input.Fill(bytes, count));
    }
    catch (const orvane::Error&)
    {
        return 0;
    }
    UseDocument(*document, input.Folder());
    return 0;
}
