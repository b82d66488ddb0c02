// SPDX-License-Identifier: MIT
// A host that is written against the classes: C++20.
#include <orvane/classes.h>

#include <cstdio>

int main()
{
    SceneObject scene;
    auto* text = new OrvFontString;
    CreateFontList(0, nullptr);
    text->AttachFont(GetFontList()->GetHead());
    text->SetTextString("installed");
    scene.AddChild(text);
    std::printf("%d\n", scene.GetChildByIndex(0) == text ? 1 : 0);
}
