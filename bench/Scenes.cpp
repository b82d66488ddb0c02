// SPDX-License-Identifier: MIT
#include "bench/Scenes.h"

#include "orvane.h"

#include <cstdio>
#include <cstdlib>

OrvFont* BenchFont()
{
    static OrvFont* const font = [] {
        CreateFontList(0, nullptr);
        const POSITION position = GetFontList()->FindName("DejaVu Sans");
        if (position == nullptr)
        {
            std::fprintf(stderr, "bench: the font DejaVu Sans is not installed\n");
            std::exit(1);
        }
        return GetFontList()->GetAt(position);
    }();
    return font;
}

std::unique_ptr<OrvFontString> MakeText(int characters, int style)
{
    static const std::string letters = "Sphinx of black quartz, judge my vow! &@";
    std::string text;
    for (int i = 0; i < characters; ++i)
    {
        if (i > 0 && i % 40 == 0)
        {
            text += '\r';
        }
        text += letters[static_cast<std::size_t>(i) % letters.size()];
    }
    auto node = std::make_unique<OrvFontString>();
    node->AttachFont(BenchFont());
    node->SetTextString(text.c_str());
    node->SetBevelStyle(style);
    node->SetBevelDepth(0.03f);
    node->CalculateBounds();
    return node;
}

DrawingParameters SolidDraw()
{
    DrawingParameters parameters;
    parameters.SetRender();
    parameters.SetShowObject();
    parameters.SetShowChildren();
    return parameters;
}
