// SPDX-License-Identifier: MIT
#include <orvane/orvane.h>

int main()
{
    orvane::Document document;
    orvane::TextOptions look;
    look.edgeStyle = orvane::EdgeStyle::Round;
    document.AddText("Orvane", look);
    orvane::WritePicture(document, "word.png");
}
