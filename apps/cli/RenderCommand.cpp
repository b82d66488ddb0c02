// SPDX-License-Identifier: MIT
#include "apps/cli/Arguments.h"
#include "apps/cli/Colors.h"
#include "apps/cli/Commands.h"
#include "apps/cli/Errors.h"
#include "apps/cli/FontChoice.h"
#include "apps/cli/ImportOptions.h"
#include "apps/cli/OutputFile.h"
#include "apps/cli/Poster.h"
#include "apps/cli/PosterTarget.h"
#include "apps/cli/SceneBuilder.h"
#include "apps/cli/SceneDocument.h"
#include "apps/cli/SceneOptions.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/TextCodes.h"
#include "apps/cli/TextNode.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "platform/Sync.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <optional>

namespace
{

// In the order of TextLook's values.
const std::vector<std::string> styles = {"square", "bevel", "round"};
const std::vector<std::string> places = {"front", "back", "both"};
const std::vector<std::string> sides = {"left", "center", "right"};

struct RenderOptions
{
    std::vector<std::string> texts;
    std::string textFile;
    std::optional<std::string> output;
    std::string sceneFile;
    std::string view;
    std::string save;
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
    SceneOptions scene;
    std::unique_ptr<ImportOptions> imports;
    bool outline = false;
    std::optional<std::string> size;
    std::optional<std::string> dotsPerInch;
    std::string bits = "24";
    int samples = 0;
};

/// Everything that the command line asks for, which makes sense.
struct Request
{
    PosterSettings settings;
    bool hasSize = false;
    bool hasText = false;
    TextLook text;
    std::vector<ImportLook> imports;
    SceneRequest scene;
};

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

Request ParseRequest(const RenderOptions& options)
{
    if (!options.output && options.save.empty())
    {
        throw UsageError("render: nothing to write: --output or --save is needed");
    }
    Request request;
    request.hasText = !options.texts.empty() || !options.textFile.empty();
    request.imports = options.imports->Parse();
    const bool hasContent = request.hasText || !request.imports.empty();
    if (options.sceneFile.empty() != hasContent)
    {
        throw UsageError(hasContent ? "render: text and --import, or --scene, not both"
                                    : "render: no text given, no --import and no --scene");
    }
    if (!options.save.empty() && !HasEnding(options.save, ".orv"))
    {
        throw UsageError("--save: expected a name that ends in .orv, found \"" + options.save +
                         "\"");
    }
    PosterSettings& settings = request.settings;
    request.hasSize = options.size.has_value();
    if (options.size)
    {
        const std::array<int, 2> size = ParseSize(*options.size);
        settings.width = size[0];
        settings.height = size[1];
    }
    settings.bits = ParseInteger("--bits", options.bits, 8, 32);
    settings.samples = options.samples;
    if (options.dotsPerInch)
    {
        settings.dotsPerInch = ParseInteger("--dpi", *options.dotsPerInch, 1, 100000);
    }
    request.text = ParseLook(options);
    request.scene = ParseSceneOptions(options.scene);
    if (request.scene.texture && options.sceneFile.empty() && !request.hasText)
    {
        throw UsageError("--texture: there is no text to lay it on");
    }
    if (options.output)
    {
        settings.output = *options.output;
        CheckPoster(settings);
    }
    return request;
}

std::unique_ptr<DrawingObject> BuildText(const RenderOptions& options, const TextLook& look)
{
    const CString text = ChooseCodePage(GatherLines(options));  // before the fonts take it over
    LoadFonts();
    OrvFont* const font = ChooseFont(options.font);
    CheckCharacters(*font, text);
    return MakeTextNode(text, font, look);
}

/// A document with the text, then the imports.
SceneDocument BuildScene(const RenderOptions& options, const Request& request)
{
    std::unique_ptr<DrawingObject> text =
        request.hasText ? BuildText(options, request.text) : nullptr;
    SceneDocument document;
    SetFirstLights(*document.scene);
    if (text != nullptr)
    {
        DrawingObject& node = AddNode(*document.scene, std::move(text));
        if (request.scene.texture)
        {
            SetTexture(node, *request.scene.texture);
            document.view->SetShowTextures();
        }
    }
    for (const ImportLook& look : request.imports)
    {
        const std::string damage = AddImport(*document.scene, look);
        if (!damage.empty())
        {
            Say(look.file + ": only what is whole is drawn: " + damage);
        }
    }
    SetBackground(*document.scene, request.scene.background.value_or(DefaultBackground()));
    ChangeLights(*document.scene, request.scene.lights);
    if (options.outline)
    {
        document.view->SetDrawingModeOutline();
    }
    FrameScene(*document.view, request.scene.camera.value_or(CameraLook()), request.settings.width,
               request.settings.height);
    return document;
}

/// Makes the view that which was saved under a name (in UTF-8).
void TakeSavedView(const SceneDocument& document, const std::string& name)
{
    ViewObject& view = *document.view;
    if (view.RestoreSavedView(Utf8ToCodePage(name, GetACP()).text.c_str()))
    {
        view.SaveReferenceAspect();  // with the lens that it has now
        return;
    }
    const NamedViewList& views = *view.GetSavedViews();
    std::string message = document.path + ": no view \"" + name + "\"; the scene has";
    message += views.IsEmpty() ? " none" : "";
    for (POSITION position = views.GetHeadPosition(); position != nullptr;)
    {
        message += "\n  " + ToUtf8(views.GetNext(position)->GetName());
    }
    throw Failure(message);
}

/// A document from a file, changed as it is asked for.
SceneDocument LoadScene(const RenderOptions& options, Request& request)
{
    SceneDocument document = SceneDocument::Load(options.sceneFile);
    SceneObject& scene = *document.scene;
    ViewObject& view = *document.view;
    const auto [width, height] = FramedSize(view);
    if (width > 0)
    {
        // The view itself has forgotten for which picture it was framed.
        view.SetUnscaledSize(width, height);
        if (!request.hasSize)
        {
            request.settings.width = width;
            request.settings.height = height;
        }
    }
    if (!options.view.empty())
    {
        TakeSavedView(document, options.view);
    }
    if (request.scene.background)
    {
        SetBackground(scene, *request.scene.background);
    }
    ChangeLights(scene, request.scene.lights);
    if (options.outline)
    {
        view.SetDrawingModeOutline();
    }
    CheckTextures(scene);
    scene.CalculateBounds();
    if (request.scene.camera)
    {
        FrameScene(view, *request.scene.camera, request.settings.width, request.settings.height);
    }
    return document;
}

void DrawDocument(const SceneDocument& document, PosterSettings settings, PosterTarget& target)
{
    static const HANDLE interrupted = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    settings.stop = interrupted;
    ProgressBar progress("Drawing");
    settings.progress = [&progress](double share) { progress.Show(share); };
    ViewObject view(*document.view);
    SizeView(view, settings.width, settings.height);
    DrawPoster(view, settings, target);
}

void Render(const RenderOptions& options)
{
    // First what is wrong with the command line, then what is wrong with the world, cheapest first.
    Request request = ParseRequest(options);
    const auto kept = options.save.empty() ? nullptr : std::make_unique<OutputFile>(options.save);
    std::unique_ptr<PosterTarget> target;
    if (options.output && options.sceneFile.empty())
    {
        target = MakeTarget(request.settings);
    }
    const SceneDocument document =
        options.sceneFile.empty() ? BuildScene(options, request) : LoadScene(options, request);
    if (options.output)
    {
        if (target == nullptr)
        {
            CheckPoster(request.settings);
            target = MakeTarget(request.settings);
        }
        DrawDocument(document, request.settings, *target);
    }
    if (kept)
    {
        document.Save(*kept);
    }
}

}  // namespace

void AddRenderCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("render", "Draw lines of text as solid letters, and meshes");
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
    std::vector<CLI::Option*> ofTexts = {option("--text-file", o.textFile, "FILE",
                                                "More lines, in UTF-8, after those given as TEXT")};
    option("-o,--output", o.output, "FILE",
           "The picture, PNG or BMP by its name; - is PNG to\n"
           "standard output");
    option("--size", o.size, "WxH [1280x720]", "Width and height in pixels, each at most 100000");
    option("--dpi", o.dotsPerInch, "N", "Dots per inch, for the picture's header");
    option("--bits", o.bits, "8|16|24|32 [24]", "Bits per pixel of a BMP")
        ->check(CLI::IsMember({"8", "16", "24", "32"}));
    command
        .add_option("--samples", o.samples,
                    "Samples per pixel in each direction, 1 to 4;\n0 chooses by the size")
        ->option_text("N [0]")
        ->check(CLI::Range(0, 4));
    AddOutlinesOption(command);
    option("--save", o.save, "FILE", "Keeps the scene and its view in a file (.orv)");
    CLI::Option* const scene =
        option("--scene", o.sceneFile, "FILE", "Draws such a file in place of a text");
    CLI::Option* const view =
        option("--view", o.view, "NAME", "Through a view that is saved in it")->needs(scene);

    for (CLI::Option* const each : {
             option("--font", o.font, "NAME",
                    "Full name as \"orvane fonts\" lists it\n"
                    "[DejaVu Sans Bold, else what there is]"),
             choice("--style", o.style, Alternatives(styles), "How the edges are cut")
                 ->check(CLI::IsMember(styles)),
             choice("--bevel", o.bevel, "D",
                    "Width of bevels and roundings in ems; at most the\n"
                    "depth, or half of it with bevels on both faces"),
             choice("--bevel-on", o.bevelOn, Alternatives(places), "Which faces have them")
                 ->check(CLI::IsMember(places)),
             choice("--depth", o.depth, "D", "Depth of the letters in ems"),
             choice("--align", o.align, Alternatives(sides), "How lines stand to each other")
                 ->check(CLI::IsMember(sides)),
             choice("--char-spacing", o.characterSpacing, "D",
                    "More space between characters, in ems"),
             choice("--line-spacing", o.lineSpacing, "D", "More space between lines, in ems"),
             choice("--face-color", o.faceColor, "COLOR",
                    "Front and back: a name (gold, navy, ...), #rgb,\n#rrggbb or #rrggbbaa"),
             option("--edge-color", o.edgeColor, "COLOR", "Sides [darker than the face]"),
             option("--bevel-color", o.bevelColor, "COLOR", "Bevels [lighter than the face]"),
         })
    {
        ofTexts.push_back(each);
    }
    command.add_flag("--outline", o.outline, "Wires in the face's colour, not solids");

    o.imports = std::make_unique<ImportOptions>(command);
    const SceneOptionGroups groups = AddSceneOptions(command, o.scene);
    ofTexts.insert(ofTexts.end(), groups.texture.begin(), groups.texture.end());
    for (CLI::Option* const ofText : ofTexts)
    {
        ofText->excludes(scene);
    }
    for (CLI::Option* const ofCamera : groups.camera)
    {
        ofCamera->excludes(view);
    }
    command.callback([options] { Render(*options); });
}
