// SPDX-License-Identifier: MIT
#include "bench/Scenes.h"

#include "orvane.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

using orvane::EdgeStyle;

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

std::unique_ptr<OrvFontString> MakeText(int characters, EdgeStyle style)
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
    node->SetBevelStyle(static_cast<int>(style));
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

std::unique_ptr<DrawingObject> MakeTree(int nodes, int children)
{
    constexpr int columns = 100;
    constexpr double spacing = 0.16;
    const auto place = [](int i) {
        return DVector((i % columns - columns / 2) * spacing, (i / columns - columns / 2) * spacing,
                       0.0);
    };
    std::vector<OrvFontString*> made;
    for (int i = 0; i < nodes; ++i)
    {
        auto node = std::make_unique<OrvFontString>();
        node->AttachFont(BenchFont());
        node->SetTextString("o");
        node->SetScale(DVector(0.1, 0.1, 0.02));
        const int parent = (i - 1) / children;
        node->SetTranslation(i == 0 ? place(0) : place(i) - place(parent));
        if (i > 0)
        {
            made[static_cast<std::size_t>(parent)]->AddChild(node.get());
        }
        made.push_back(node.release());
    }
    return std::unique_ptr<DrawingObject>(made.front());
}

namespace
{

struct Word
{
    const char* text;
    EdgeStyle style;
    double size;
    double x;
    double y;
    ColorVector color;
};

NamedColor Material(const ColorVector& color)
{
    NamedColor material;
    material.SetDiffuseColor(color);
    material.SetAmbientColor(color);
    return material;
}

}  // namespace

Showcase::Showcase(int width, int height)
{
    const Word words[] = {{"Orvane", EdgeStyle::Round, 1, 0, 0.5, {0.94f, 0.82f, 0.5f, 1}},
                          {"square", EdgeStyle::Square, 0.35, -1.3, -0.42, {0.89f, 0.34f, 0.3f, 1}},
                          {"bevel", EdgeStyle::Bevel, 0.35, 0.1, -0.42, {0.25f, 0.56f, 0.82f, 1}},
                          {"round", EdgeStyle::Round, 0.35, 1.4, -0.42, {0.3f, 0.69f, 0.43f, 1}}};
    for (const Word& word : words)
    {
        auto node = std::make_unique<OrvFontString>();
        node->AttachFont(BenchFont());
        node->SetTextString(word.text);
        node->SetJustification(static_cast<int>(orvane::Alignment::Center));
        node->SetBevelStyle(static_cast<int>(word.style));
        node->SetBevelDepth(static_cast<float>(0.05 * word.size));
        node->SetScale(DVector(word.size, word.size, 0.3 * word.size));
        for (int surface = 0; surface < 3; ++surface)
        {
            node->SetSurfaceColor(Material(word.color), surface);
        }
        node->SetTranslation(DVector(word.x, word.y, 0.0));
        scene.AddChild(node.release());
    }
    scene.SetBackgroundColor(ColorVector(0.08f, 0.1f, 0.17f, 1));
    scene.Rotate(20, DVector(0.0, 1.0, 0.0));
    scene.Rotate(9, DVector(1.0, 0.0, 0.0));
    view.AttachScene(&scene);
    view.SetProjectionFieldOfViewAngle(20);
    view.SetScaledSize(width, height);
    view.SetViewSize(width, height);
    view.ZoomExtents();
}
