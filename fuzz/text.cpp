// SPDX-License-Identifier: MIT
// Uses the input as the text of a document, in UTF-8 or not.
#include "fuzz/DocumentUse.h"
#include "fuzz/InputFile.h"
#include "orvane/orvane.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static InputFile input;
    input.Fill(bytes, count);
    orvane::Document document;
    try
    {
        document.AddText(std::string(reinterpret_cast<const char*>(bytes), count));
    }
    catch (const orvane::Error&)
    {
        return 0;
    }
    UseDocument(document, input);
    return 0;
}
