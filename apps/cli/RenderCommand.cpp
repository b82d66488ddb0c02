// SPDX-License-Identifier: MIT
#include "apps/cli/Colors.h"
#include "apps/cli/Commands.h"
#include "apps/cli/Errors.h"
#include "apps/cli/FontChoice.h"
#include "apps/cli/Picture.h"
#include "apps/cli/Renderer.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/TextCodes.h"
#include "apps/cli/TextNode.h"
#include "scene/OrvFontString.h"

#include <CLI/CLI.hpp>

#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>

namespace
{

struct RenderOptions
{
    std::vector<std::string> lines;
    std::string textFile;
    std::string output;
    std::string font;
    std::string faceColor;
    std::string edgeColor;
    std::string bevelColor;
    std::string background = "#141a2b";
    std::string size = "1280x720";
    std::string turn = "10,22,0";
    bool outline = false;
    int samples = 0;
    TextLook look;
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

std::vector<std::string> ReadLines(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
    {
        throw Failure(path + ": cannot be opened");
    }
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
    {
        if (line.ends_with('\r'))
        {
            line.pop_back();
        }
        lines.push_back(line);
    }
    if (in.bad())
    {
        throw Failure(path + ": cannot be read");
    }
    if (!lines.empty() && lines.front().starts_with("\xEF\xBB\xBF"))
    {
        lines.front().erase(0, 3);
    }
    return lines;
}

void Render(RenderOptions options)
{
    const PictureFormat format = FormatOf(options.output);
    PictureSettings settings;
    ParseSize(options.size, settings);
    settings.background = ParseColor(options.background);
    settings.outline = options.outline;
    settings.samples = options.samples;
    settings.progress = [](double done) {
        ShowProgress("Drawing " + std::to_string(static_cast<int>(done * 100)) + " %");
    };
    if (!options.faceColor.empty())
    {
        options.look.faceColor = ParseColor(options.faceColor);
    }
    if (!options.edgeColor.empty())
    {
        options.look.edgeColor = ParseColor(options.edgeColor);
    }
    if (!options.bevelColor.empty())
    {
        options.look.bevelColor = ParseColor(options.bevelColor);
    }
    const std::array<double, 3> turn = ParseTurn(options.turn);

    if (!options.textFile.empty())
    {
        const std::vector<std::string> more = ReadLines(options.textFile);
        options.lines.insert(options.lines.end(), more.begin(), more.end());
    }
    if (options.lines.empty())
    {
        throw UsageError("render: no text given");
    }

    const CString text = ChooseCodePage(options.lines);  // before the fonts, which take it over
    LoadFonts();
    const auto node = MakeTextNode(text, ChooseFont(options.font), options.look);
    node->Rotate(turn[2], DVector(0.0, 0.0, 1.0));
    node->Rotate(turn[1], DVector(0.0, 1.0, 0.0));
    node->Rotate(turn[0], DVector(1.0, 0.0, 0.0));

    const Picture picture = RenderPicture(*node, settings);
    ClearProgress();
    SavePicture(picture, options.output, format);
}

}  // namespace

void AddRenderCommand(CLI::App& app)
{
    CLI::App& command = *app.add_subcommand("render", "Draw lines of text as solid letters");
    const auto options = std::make_shared<RenderOptions>();
    RenderOptions& o = *options;

    command.add_option("TEXT", o.lines, "The text, in UTF-8; each argument is a line");
    command
        .add_option("-o,--output", o.output,
                    "The picture: .png or .bmp; - is PNG to standard output")
        ->required();
    command.add_option("--text-file", o.textFile, "Take (more) lines from a file");
    command.add_option("--font", o.font,
                       "Full name of an installed font, as \"orvane fonts\" lists it");

    const std::map<std::string, TextLook::Style> styles = {
        {"square", TextLook::square}, {"bevel", TextLook::bevel}, {"round", TextLook::round}};
    command
        .add_option("--style", o.look.style, "How edges are cut: square, bevel (default) or round")
        ->transform(CLI::CheckedTransformer(styles))
        ->option_text("square|bevel|round");
    const std::map<std::string, TextLook::BevelOn> places = {
        {"front", TextLook::front}, {"back", TextLook::back}, {"both", TextLook::both}};
    command.add_option("--bevel-on", o.look.bevelOn, "Which faces have the bevel")
        ->transform(CLI::CheckedTransformer(places))
        ->option_text("front|back|both");
    const std::map<std::string, TextLook::Align> sides = {
        {"left", TextLook::left}, {"center", TextLook::center}, {"right", TextLook::right}};
    command.add_option("--align", o.look.align, "How lines are set against each other")
        ->transform(CLI::CheckedTransformer(sides))
        ->option_text("left|center|right");

    command.add_option("--bevel", o.look.bevelWidth, "Width of the bevel or rounding, in ems")
        ->check(CLI::Range(0.0, 10.0))
        ->capture_default_str();
    command.add_option("--depth", o.look.depth, "Depth of the letters, in ems")
        ->check(CLI::Range(0.0, 100.0))
        ->capture_default_str();
    command
        .add_option("--char-spacing", o.look.characterSpacing, "Space between characters, in ems")
        ->check(CLI::Range(-10.0, 100.0));
    command.add_option("--line-spacing", o.look.lineSpacing, "Space between lines, in ems")
        ->check(CLI::Range(-10.0, 100.0));
    command.add_option("--face-color", o.faceColor, "Front and back: a name, #rgb or #rrggbb");
    command.add_option("--edge-color", o.edgeColor, "Sides; darker than the face when not given");
    command.add_option("--bevel-color", o.bevelColor,
                       "Bevels; lighter than the face when not given");
    command.add_option("--background", o.background, "Behind the text")->capture_default_str();
    command.add_option("--turn", o.turn, "Turn about the three axes, X,Y,Z in degrees")
        ->capture_default_str();
    command.add_option("--size", o.size, "Width and height in pixels")->capture_default_str();
    command
        .add_option("--samples", o.samples,
                    "Samples per pixel and direction; 0 chooses by the size")
        ->check(CLI::Range(0, 4))
        ->capture_default_str();
    command.add_flag("--outline", o.outline, "Draw the letters as wires");
    command.callback([options] { Render(*options); });
}
