// SPDX-License-Identifier: MIT
#include "apps/cli/Colors.h"
#include "apps/cli/Commands.h"
#include "apps/cli/Errors.h"
#include "apps/cli/FontChoice.h"
#include "apps/cli/OutputFile.h"
#include "apps/cli/Picture.h"
#include "apps/cli/Renderer.h"
#include "apps/cli/SceneDocument.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/TextCodes.h"
#include "apps/cli/TextNode.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>
#include <sstream>

namespace
{

// In the order of TextLook's values.
const std::vector<std::string> styles = {"square", "bevel", "round"};
const std::vector<std::string> places = {"front", "back", "both"};
const std::vector<std::string> sides = {"left", "center", "right"};

int IndexOf(const std::vector<std::string>& names, const std::string& name)
{
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
}

std::string Alternatives(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
    {
        text += (text.empty() ? "" : "|") + name;
    }
    return text;
}

struct RenderOptions
{
    std::vector<std::string> texts;
    std::string textFile;
    std::string output;
    std::optional<std::string> font;
    std::string style = "bevel";
    std::string bevelOn = "both";
    std::string align = "center";
    std::string bevel = "0.035";
    std::string depth = "0.3";
    std::string characterSpacing = "0";
    std::string lineSpacing = "0";
    std::string faceColor = "#f2b333";
    std::optional<std::string> edgeColor;
    std::optional<std::string> bevelColor;
    std::string background = defaultBackground;
    std::string size = "1280x720";
    std::string turn = "10,22,0";
    bool outline = false;
    int samples = 0;
    std::string save;
};

double ParseNumber(const std::string& option, const std::string& text)
{
    std::size_t used = 0;
    double value = 0;
    try
    {
        value = std::stod(text, &used);
    }
    catch (const std::exception&)
    {
        used = std::string::npos;
    }
    if (used != text.size() || !std::isfinite(value))
    {
        throw UsageError(option + ": \"" + text + "\" is not a number");
    }
    return value;
}

double ParseNumber(const std::string& option, const std::string& text, double least, double most)
{
    const double value = ParseNumber(option, text);
    if (value < least || value > most)
    {
        std::ostringstream message;
        message << option << ": expected a number from " << least << " to " << most << ", found "
                << text;
        throw UsageError(message.str());
    }
    return value;
}

std::array<double, 3> ParseTurn(const std::string& text)
{
    std::array<double, 3> angles{};
    std::istringstream in(text);
    std::string part;
    std::size_t count = 0;
    while (std::getline(in, part, ','))
    {
        if (count < angles.size())
        {
            angles[count] = ParseNumber("--turn", part);
        }
        ++count;
    }
    if (count != angles.size())
    {
        throw UsageError("--turn: expected three angles in degrees as X,Y,Z, found \"" + text +
                         "\"");
    }
    return angles;
}

void ParseSize(const std::string& text, PictureSettings& settings)
{
    int used = 0;
    if (std::sscanf(text.c_str(), "%9dx%9d%n", &settings.width, &settings.height, &used) != 2 ||
        used != static_cast<int>(text.size()) || settings.width < 1 || settings.height < 1)
    {
        throw UsageError("--size: expected WIDTHxHEIGHT, both at least 1, found \"" + text + "\"");
    }
    constexpr int limit = 16384;
    if (settings.width > limit || settings.height > limit)
    {
        throw UsageError("--size: at most " + std::to_string(limit) +
                         " in each direction, found \"" + text + "\"");
    }
}

TextLook ParseLook(const RenderOptions& options)
{
    TextLook look;
    look.style = static_cast<TextLook::Style>(IndexOf(styles, options.style));
    look.bevelOn = static_cast<TextLook::BevelOn>(IndexOf(places, options.bevelOn));
    look.align = static_cast<TextLook::Align>(IndexOf(sides, options.align));
    look.bevelWidth = ParseNumber("--bevel", options.bevel, 0, 100);
    look.depth = ParseNumber("--depth", options.depth, 0, 100);
    look.characterSpacing = ParseNumber("--char-spacing", options.characterSpacing, -100, 100);
    look.lineSpacing = ParseNumber("--line-spacing", options.lineSpacing, -100, 100);
    look.faceColor = ParseColor("--face-color", options.faceColor);
    if (options.edgeColor)
    {
        look.edgeColor = ParseColor("--edge-color", *options.edgeColor);
    }
    if (options.bevelColor)
    {
        look.bevelColor = ParseColor("--bevel-color", *options.bevelColor);
    }
    return look;
}

std::vector<std::string> GatherLines(const RenderOptions& options)
{
    std::vector<std::string> lines;
    for (const std::string& text : options.texts)
    {
        const std::vector<std::string> more = SplitLines(text);
        lines.insert(lines.end(), more.begin(), more.end());
        if (more.empty())
        {
            lines.emplace_back();
        }
    }
    if (!options.textFile.empty())
    {
        const std::vector<std::string> more = ReadLines(options.textFile);
        lines.insert(lines.end(), more.begin(), more.end());
    }
    return lines;
}

void Render(const RenderOptions& options)
{
    // First what is wrong with the command line, then what is wrong with the world, cheapest first.
    const PictureFormat format = FormatOf(options.output);
    PictureSettings settings;
    ParseSize(options.size, settings);
    settings.background = ParseColor("--background", options.background);
    settings.outline = options.outline;
    settings.samples = options.samples;
    settings.progress = [](double done) {
        ShowProgress("Drawing " + std::to_string(static_cast<int>(done * 100)) + " %");
    };
    if (settings.background.alpha < 1)
    {
        throw UsageError("--background: a picture is not transparent, found \"" +
                         options.background + "\"");
    }
    const TextLook look = ParseLook(options);
    const std::array<double, 3> turn = ParseTurn(options.turn);
    if (options.texts.empty() && options.textFile.empty())
    {
        throw UsageError("render: no text given");
    }

    OutputFile file(options.output);
    const auto sceneFile =
        options.save.empty() ? nullptr : std::make_unique<OutputFile>(options.save);
    const CString text = ChooseCodePage(GatherLines(options));  // before the fonts take it over
    LoadFonts();
    OrvFont* const font = ChooseFont(options.font);
    CheckCharacters(*font, text);
    auto node = MakeTextNode(text, font, look);
    node->Rotate(turn[2], DVector(0.0, 0.0, 1.0));
    node->Rotate(turn[1], DVector(0.0, 1.0, 0.0));
    node->Rotate(turn[0], DVector(1.0, 0.0, 0.0));

    const Picture picture = RenderPicture(*node, settings);
    ShowProgress("Writing");
    SavePicture(picture, format, file);
    ClearProgress();
    if (sceneFile)
    {
        SceneDocument document;
        document.scene->AddChild(node.release());
        document.view->SetUnscaledSize(settings.width, settings.height);
        document.view->SetViewSize(settings.width, settings.height);
        document.view->ZoomExtents();
        document.view->SaveReferenceAspect();
        document.Save(*sceneFile);
    }
}

}  // namespace

void AddRenderCommand(CLI::App& app)
{
    CLI::App& command = *app.add_subcommand("render", "Draw lines of text as solid letters");
    const auto options = std::make_shared<RenderOptions>();
    RenderOptions& o = *options;
    const auto option = [&command](const char* name, auto& value, const char* type,
                                   const char* description) {
        return command.add_option(name, value, description)->option_text(type);
    };
    // With its default, which is shown in the help text.
    const auto choice = [&option](const char* name, std::string& value, const std::string& type,
                                  const char* description) {
        return option(name, value, (type + " [" + value + "]").c_str(), description);
    };

    const int most = CLI::detail::expected_max_vector_size;
    // CLI11 reads "[a,b]" as a list where it allows extra arguments; so the texts are all expected.
    // TextThatLooksLikeAnythingElseIsText holds this.
    command
        .add_option("TEXT", CLI::callback_t([&o](const CLI::results_t& texts) {
                        o.texts = texts;
                        return true;
                    }),
                    "Each argument is a line, in UTF-8; put -- before\nlines that begin with -")
        ->expected(most, most)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->option_text("...");
    option("--text-file", o.textFile, "FILE", "More lines, in UTF-8, after those given as TEXT");
    option("-o,--output", o.output, "FILE",
           "The picture, PNG or BMP by its name; - is PNG to\n"
           "standard output. Required")
        ->required();
    option("--save", o.save, "FILE", "Keeps the scene and its view in a file (.orv), too");
    choice("--size", o.size, "WxH", "Width and height in pixels, each at most 16384");
    choice("--background", o.background, "COLOR", "What is behind the text");

    option("--font", o.font, "NAME",
           "Full name as \"orvane fonts\" lists it\n"
           "[DejaVu Sans Bold, else what there is]");
    choice("--style", o.style, Alternatives(styles), "How the edges are cut")
        ->check(CLI::IsMember(styles));
    choice("--bevel", o.bevel, "D",
           "Width of bevels and roundings in ems; at most the\n"
           "depth, or half of it with bevels on both faces");
    choice("--bevel-on", o.bevelOn, Alternatives(places), "Which faces have them")
        ->check(CLI::IsMember(places));
    choice("--depth", o.depth, "D", "Depth of the letters in ems");
    choice("--align", o.align, Alternatives(sides), "How lines stand to each other")
        ->check(CLI::IsMember(sides));
    choice("--char-spacing", o.characterSpacing, "D", "More space between characters, in ems");
    choice("--line-spacing", o.lineSpacing, "D", "More space between lines, in ems");
    choice("--face-color", o.faceColor, "COLOR",
           "Front and back: a name (gold, navy, ...), #rgb,\n#rrggbb or #rrggbbaa");
    option("--edge-color", o.edgeColor, "COLOR", "Sides [darker than the face]");
    option("--bevel-color", o.bevelColor, "COLOR", "Bevels [lighter than the face]");
    choice("--turn", o.turn, "X,Y,Z", "Degrees about each axis: z first, then y, then x");
    command.add_flag("--outline", o.outline, "Wires in the face's colour, not solids");
    command
        .add_option("--samples", o.samples,
                    "Samples per pixel in each direction, 1 to 4;\n0 chooses by the size")
        ->option_text("N [0]")
        ->check(CLI::Range(0, 4));
    command.callback([options] { Render(*options); });
}
