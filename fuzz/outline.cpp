// SPDX-License-Identifier: MIT
// Any bytes as a native glyph outline, flattened and tessellated.
#include "orvane.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    std::vector<unsigned char> buffer(bytes, bytes + count);
    TTGlyph outline;
    outline.FromGlyphOutline(buffer.data(), static_cast<unsigned long>(buffer.size()));
    OrvGlyph glyph(buffer.size(), GLYPHMETRICS{});
    glyph.ConstructGlyph(outline, 2048.0f);
    return 0;
}
