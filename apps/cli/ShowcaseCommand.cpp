// SPDX-License-Identifier: MIT
#include "apps/cli/Colors.h"
#include "apps/cli/Commands.h"
#include "apps/cli/FontChoice.h"
#include "apps/cli/Poster.h"
#include "apps/cli/PosterTarget.h"
#include "apps/cli/SceneBuilder.h"
#include "apps/cli/SceneDocument.h"
#include "apps/cli/SceneOptions.h"
#include "apps/cli/TextNode.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace
{

struct Word
{
    const char* text;
    TextLook::Style style;
    const char* color;
};

/// Places a text in the scene and gives it over.
void Place(SceneObject& scene, std::unique_ptr<OrvFontString> node, double x, double y, double size)
{
    DVector scale = node->GetScale();
    scale *= size;
    node->SetScale(scale);
    node->CalculateBounds();
    node->SetTranslation(DVector(x, y, 0.0));
    AddNode(scene, std::move(node));
}

/// The project's name with rounded edges over the names of the three styles, each cut as it says.
void DrawShowcase(const std::string& output)
{
    PosterSettings settings;
    settings.output = output;
    CheckPoster(settings);
    const std::unique_ptr<PosterTarget> target = MakeTarget(settings);
    LoadFonts();
    OrvFont* const font = ChooseFont(std::nullopt);

    const SceneDocument document;
    SceneObject& scene = *document.scene;
    TextLook look;
    look.style = TextLook::round;
    look.bevelWidth = 0.05;
    look.faceColor = ParseColor("gold", "gold");
    auto title = MakeTextNode("Orvane", font, look);
    title->CalculateBounds();
    const double width = title->GetScaledDimensions().x;
    Place(scene, std::move(title), 0, 0.5, 1);

    constexpr double gap = 0.5;  // ems of the small line
    const Word words[] = {{"square", TextLook::square, "#e2574c"},
                          {"bevel", TextLook::bevel, "#3f8fd2"},
                          {"round", TextLook::round, "#4caf6e"}};
    std::unique_ptr<OrvFontString> nodes[3];
    double total = 2 * gap;
    for (int i = 0; i < 3; ++i)
    {
        look.style = words[i].style;
        look.bevelWidth = 0.045;
        look.faceColor = ParseColor(words[i].text, words[i].color);
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

    SetFirstLights(scene);
    SetBackground(scene, DefaultBackground());
    CameraLook camera;
    camera.turn = {9, 20, 0};
    FrameScene(*document.view, camera, settings.width, settings.height);
    DrawPoster(*document.view, settings, *target);
}

}  // namespace

void AddShowcaseCommand(CLI::App& app)
{
    CLI::App& command = *app.add_subcommand("showcase", "Draw the three edge styles side by side");
    const auto output = std::make_shared<std::string>();
    command.add_option("-o,--output", *output, "The picture: .png or .bmp")->required();
    command.callback([output] { DrawShowcase(*output); });
}
