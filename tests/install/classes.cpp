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

    orvane::OrvProfileString solid;
    solid.SetProfile(orvane::ParseProfile("round 0.02"));
    solid.AttachFont(GetFontList()->GetHead());
    solid.SetTextString("solid");
    solid.CalculateBounds();
    const orvane::SolidMesh mesh = orvane::BuildMesh(solid);
    std::printf("%d %d\n", scene.GetChildByIndex(0) == text ? 1 : 0,
                mesh.TriangleCount() > 0 && mesh.nodes[0].name == "solid" ? 1 : 0);
}
