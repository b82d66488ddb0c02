// SPDX-License-Identifier: MIT
#include "document/TextNode.h"

#include "document/Colors.h"
#include "document/OptionRange.h"
#include "geometry/DVector.h"
#include "material/NamedColor.h"
#include "scene/OrvFontString.h"

namespace orvane
{

namespace
{

/// A material of one colour with a white highlight. Where only ambient light falls on it, it is
/// 15 % darker.
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

void CheckTextOptions(const TextOptions& options)
{
    CheckRange("bevelWidth", options.bevelWidth, 0, 100);
    CheckRange("depth", options.depth, 0, 100);
    CheckRange("characterSpacing", options.characterSpacing, -100, 100);
    CheckRange("lineSpacing", options.lineSpacing, -100, 100);
    if (options.texture)
    {
        CheckRange("repeat", options.texture->repeat, 0.001, 1000);
    }
}

std::unique_ptr<OrvFontString> MakeTextNode(const CString& text, OrvFont* font,
                                            const TextOptions& options)
{
    const ColorVector face = ToColorVector(options.faceColor);
    const ColorVector white(1, 1, 1, face.alpha);
    const ColorVector edge =
        options.edgeColor ? ToColorVector(*options.edgeColor) : Shade(face, 0.5f);
    const ColorVector bevel =
        options.bevelColor ? ToColorVector(*options.bevelColor) : Mix(face, white, 0.3f);

    auto node = std::make_unique<OrvFontString>();
    node->AttachFont(font);
    node->SetTextString(text);
    node->SetBevelStyle(static_cast<int>(options.edgeStyle));
    node->SetBevelLocation(static_cast<int>(options.bevelSides));
    node->SetBevelDepth(static_cast<float>(options.bevelWidth));
    node->SetJustification(static_cast<int>(options.alignment));
    node->SetInterCharacterSpacing(static_cast<float>(options.characterSpacing));
    node->SetInterLineSpacing(static_cast<float>(options.lineSpacing));
    node->SetFaceColor(MakeMaterial("Face", face, 0.1f, 16));
    node->SetEdgeColor(MakeMaterial("Edge", edge, 0.35f, 40));
    node->SetBevelColor(MakeMaterial("Bevel", bevel, 0.6f, 48));
    node->extentsBoxColor = MakeMaterial("Outline", face, 0, 0);
    node->SetScale(DVector(1.0, 1.0, options.depth));
    node->CalculateMaximumBevelDepth();
    return node;
}

}  // namespace orvane
