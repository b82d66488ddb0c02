// SPDX-License-Identifier: MIT
#include "apps/cli/TextNode.h"

#include "apps/cli/Colors.h"
#include "geometry/DVector.h"
#include "material/NamedColor.h"
#include "scene/OrvFontString.h"

namespace
{

/// A material of one colour: a little of it in the shade, a soft highlight in the light.
NamedColor MakeMaterial(const char* name, const ColorVector& color, float highlight,
                        float shininess)
{
    NamedColor material(name);
    material.SetAmbientColor(Shade(color, 0.85f));
    material.SetDiffuseColor(color);
    material.SetSpecularColor({highlight, highlight, highlight, 1});
    material.SetShininess(shininess);
    return material;
}

}  // namespace

std::unique_ptr<OrvFontString> MakeTextNode(const CString& text, OrvFont* font,
                                            const TextLook& look)
{
    const ColorVector white(1, 1, 1, look.faceColor.alpha);
    const ColorVector edge = look.edgeColor.value_or(Shade(look.faceColor, 0.5f));
    const ColorVector bevel = look.bevelColor.value_or(Mix(look.faceColor, white, 0.3f));

    auto node = std::make_unique<OrvFontString>();
    node->AttachFont(font);
    node->SetTextString(text);
    node->SetBevelStyle(look.style);
    node->SetBevelLocation(look.bevelOn);
    node->SetBevelDepth(static_cast<float>(look.bevelWidth));
    node->SetJustification(look.align);
    node->SetInterCharacterSpacing(static_cast<float>(look.characterSpacing));
    node->SetInterLineSpacing(static_cast<float>(look.lineSpacing));
    node->SetFaceColor(MakeMaterial("Face", look.faceColor, 0.1f, 16));
    node->SetEdgeColor(MakeMaterial("Edge", edge, 0.35f, 40));
    node->SetBevelColor(MakeMaterial("Bevel", bevel, 0.6f, 48));
    node->extentsBoxColor = MakeMaterial("Outline", look.faceColor, 0, 0);
    node->SetScale(DVector(1.0, 1.0, look.depth));
    node->CalculateMaximumBevelDepth();
    return node;
}
