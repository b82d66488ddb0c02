// SPDX-License-Identifier: MIT
#include "apps/cli/Terminal.h"
#include "apps/cli/commands/Commands.h"
#include "apps/cli/commands/MissingParts.h"
#include "document/FontChoice.h"
#include "document/SceneDocument.h"
#include "document/SceneFraming.h"
#include "document/SceneLights.h"
#include "document/ScenePictures.h"
#include "document/TextNode.h"
#include "document/poster/PosterTarget.h"
#include "orvane/orvane.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvane
{

namespace
{

struct Word
{
    const char* text;
    EdgeStyle style;
    const char* color;
};

/// Scales a text, moves it to a place and adds it to the scene.
void Place(SceneObject& scene, std::unique_ptr<OrvFontString> node, double x, double y, double size)
{
    DVector scale = node->GetScale();
    scale *= size;
    node->SetScale(scale);
    node->CalculateBounds();
    node->SetTranslation(DVector(x, y, 0.0));
    AddNode(scene, std::move(node));
}

/// Adds the project's name with rounded edges and, below it, the names of the three edge styles,
/// each in its own style.
void BuildShowcase(SceneObject& scene, OrvFont* font)
{
    TextOptions look;
    look.edgeStyle = EdgeStyle::Round;
    look.bevelWidth = 0.05;
    look.faceColor = ParseColor("gold");
    auto title = MakeTextNode("Orvane", font, look);
    title->CalculateBounds();
    const double width = title->GetScaledDimensions().x;
    Place(scene, std::move(title), 0, 0.5, 1);

    constexpr double gap = 0.5;  // between the small words, in their ems
    const Word words[] = {{"square", EdgeStyle::Square, "#e2574c"},
                          {"bevel", EdgeStyle::Bevel, "#3f8fd2"},
                          {"round", EdgeStyle::Round, "#4caf6e"}};
    std::unique_ptr<OrvFontString> nodes[3];
    double total = 2 * gap;
    for (int i = 0; i < 3; ++i)
    {
        look.edgeStyle = words[i].style;
        look.bevelWidth = 0.045;
        look.faceColor = ParseColor(words[i].color);
        nodes[i] = MakeTextNode(words[i].text, font, look);
        nodes[i]->SetScaleBevels();
        nodes[i]->CalculateBounds();
        total += nodes[i]->GetScaledDimensions().x;
    }
    const double size = width / total;
    double x = -width / 2;
    for (std::unique_ptr<OrvFontString>& node : nodes)
    {
        const double half = node->GetScaledDimensions().x * size / 2;
        Place(scene, std::move(node), x + half, -0.42, size);
        x += 2 * half + gap * size;
    }
}

void DrawShowcase(const std::string& output)
{
    const PosterSettings settings(output, PictureOptions(), defaultPictureSize);
    CheckPoster(settings);
    const std::unique_ptr<PosterTarget> target = MakeTarget(settings);
    LoadFonts(FontProgress());
    const SceneDocument document;
    BuildShowcase(*document.scene, ChooseFont(std::nullopt));
    SetFirstLights(*document.scene);
    SetBackground(*document.scene, BackgroundOptions());
    CameraOptions camera;
    camera.turn = {9, 20, 0};
    FrameScene(*document.view, camera, settings.size);
    TellMissingParts(document, {MissingKind::Letter}, Strictness::GoOn);
    DrawPoster(*document.view, settings, *target);
}

}  // namespace

void AddShowcaseCommand(CLI::App& app)
{
    CLI::App& command = *app.add_subcommand("showcase", "Draw the three edge styles side by side");
    const auto output = std::make_shared<std::string>();
    command.add_option("-o,--output", *output, "The picture: .png, .bmp, .jpg, .webp or .tif")
        ->required();
    command.callback([output] { DrawShowcase(*output); });
}

}  // namespace orvane
