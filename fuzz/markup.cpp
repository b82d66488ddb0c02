// SPDX-License-Identifier: MIT
// Reads the input as a text with markup and tests what every such text promises.
#include "markup/Markup.h"

#include "fuzz/Check.h"
#include "orvane/Error.h"
#include "platform/Limits.h"

#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    try
    {
        const orvane::MarkedText text =
            orvane::ParseMarkup({reinterpret_cast<const char*>(bytes), count});
        std::size_t end = 0;
        for (const orvane::TextSpan& span : text.spans)
        {
            Check(span.begin == end && span.end > span.begin, "spans touch and are not empty");
            Check(span.style.size >= 0.01 && span.style.size <= 100, "sizes are limited");
            end = span.end;
        }
        Check(end == text.text.size(), "the spans cover the text");
        if (text.text.size() * 5 < orvane::limits::maxMarkupBytes)
        {
            const orvane::MarkedText again = orvane::ParseMarkup(orvane::EscapeMarkup(text.text));
            Check(again.text == text.text, "an escaped text is read as itself");
        }
    }
    catch (const orvane::Error&)
    {}
    return 0;
}
