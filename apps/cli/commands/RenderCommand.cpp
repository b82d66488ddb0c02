// SPDX-License-Identifier: MIT
#include "apps/cli/Errors.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/commands/Commands.h"
#include "apps/cli/commands/CostOptions.h"
#include "apps/cli/commands/ImportOptions.h"
#include "apps/cli/commands/MissingParts.h"
#include "apps/cli/commands/OptionValues.h"
#include "apps/cli/commands/OutlinesOption.h"
#include "apps/cli/commands/SceneOptions.h"
#include "apps/cli/info/JsonWriter.h"
#include "document/Cancellation.h"
#include "document/DrawingModes.h"
#include "document/FontChoice.h"
#include "document/MeshImport.h"
#include "document/OptionRange.h"
#include "document/OutputFile.h"
#include "document/PictureFormat.h"
#include "document/SceneDocument.h"
#include "document/SceneFraming.h"
#include "document/SceneLights.h"
#include "document/ScenePictures.h"
#include "document/TextEncoding.h"
#include "document/TextNode.h"
#include "document/poster/PosterTarget.h"
#include "orvane/orvane.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "platform/Process.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>

namespace orvane
{

namespace
{

/// The values of the options. CLI11 has checked each value by itself.
struct RenderOptions
{
    std::vector<std::string> texts;
    std::string textFile;
    std::optional<std::string> output;
    std::string sceneFile;
    OpenOptions open;
    std::string view;
    std::string save;
    TextOptions text;
    PictureOptions picture;
    CostLimits costs;
    Strictness strictness = Strictness::GoOn;
    bool outline = false;
    std::unique_ptr<ImportOptions> imports;
    std::unique_ptr<SceneOptions> scene;
};

/// The picture and the scene that the command line asks for. CheckTogether makes a Request from the
/// options.
struct Request
{
    PosterSettings settings;
    bool hasText = false;
    std::vector<Import> imports;
    std::optional<CameraOptions> camera;
    std::optional<BackgroundOptions> background;
    std::optional<TextureOptions> texture;
};

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

Request CheckTogether(const RenderOptions& options)
{
    if (!options.output && options.save.empty())
    {
        throw UsageError("render: nothing to write; --output or --save is required");
    }
    Request request;
    request.hasText = !options.texts.empty() || !options.textFile.empty();
    request.imports = options.imports->Parse();
    const bool hasContent = request.hasText || !request.imports.empty();
    if (options.sceneFile.empty() != hasContent)
    {
        throw UsageError(hasContent
                             ? "render: --scene cannot be combined with a text or --import"
                             : "render: nothing to draw; a text, --import or --scene is required");
    }
    if (!options.save.empty() && !HasExtension(options.save, ".orv"))
    {
        throw UsageError("--save: expected a name that ends in .orv, found \"" + options.save +
                         "\"");
    }
    request.camera = options.scene->Camera();
    request.background = options.scene->Background();
    request.texture = options.scene->Texture();
    if (request.texture && options.sceneFile.empty() && !request.hasText)
    {
        throw UsageError("--texture: a text is required, on which the texture is laid");
    }
    request.settings.options = options.picture;
    // A scene may have its own size, which is checked when the scene is open.
    const Size unasked = options.sceneFile.empty() ? defaultPictureSize : Size{1, 1};
    request.settings.size = options.picture.size.value_or(unasked);
    if (options.output)
    {
        request.settings.output = *options.output;
        CheckPoster(request.settings);
    }
    return request;
}

std::unique_ptr<DrawingObject> BuildText(const RenderOptions& options)
{
    const EncodedText encoded = EncodeLines(GatherLines(options));
    SetProcessCodePage(encoded.codePage);
    LoadFonts(FontProgress());  // after SetProcessCodePage, because fonts keep the code page
    OrvFont* const font = ChooseFont(options.text.font);
    CheckCharacters(*font, encoded.text);
    return MakeTextNode(encoded.text, font, options.text);
}

/// A document with the text and, after it, the imported meshes.
SceneDocument BuildScene(const RenderOptions& options, const Request& request)
{
    std::unique_ptr<DrawingObject> text = request.hasText ? BuildText(options) : nullptr;
    SceneDocument document;
    SetFirstLights(*document.scene);
    if (text != nullptr)
    {
        DrawingObject& node = AddNode(*document.scene, std::move(text));
        if (request.texture)
        {
            SetTexture(node, *request.texture);
            document.view->SetShowTextures();
        }
    }
    for (const Import& import : request.imports)
    {
        MeshOptions meshes = import.options;
        if (options.strictness == Strictness::GoOn)
        {
            meshes.warn = [&import](const std::string& damage) {
                Say(import.file +
                    ": the file is damaged, and only its undamaged parts are drawn: " + damage);
            };
        }
        AddNode(*document.scene, MakeImport(*document.scene, import.file, meshes));
    }
    SetBackground(*document.scene, request.background.value_or(BackgroundOptions()));
    ChangeLights(*document.scene, options.scene->Lights());
    if (options.outline)
    {
        SetDrawingMode(*document.view, DrawingMode::Outline);
    }
    FrameScene(*document.view, request.camera.value_or(CameraOptions()), request.settings.size);
    TellMissingParts(document, {MissingKind::Letter}, options.strictness);
    return document;
}

/// Sets the document's camera to the saved view of a name (in UTF-8).
void TakeSavedView(const SceneDocument& document, const std::string& name)
{
    CheckName("view", name);
    ViewObject& view = *document.view;
    if (view.RestoreSavedView(Utf8ToCodePage(name, document.codePage).text.c_str()))
    {
        view.SaveReferenceAspect();  // the saved view may have another lens
        return;
    }
    const NamedViewList& views = *view.GetSavedViews();
    std::string problem = "no view \"" + name + "\" is saved; saved views:";
    problem += views.IsEmpty() ? " none" : "";
    for (POSITION position = views.GetHeadPosition(); position != nullptr;)
    {
        problem += " \"" + ToUtf8(views.GetNext(position)->GetName());
        problem += position != nullptr ? "\"," : "\"";
    }
    throw Error(document.path, problem);
}

/// A document from a file, changed by the options. Without --size the picture gets the size that
/// the document was framed for.
SceneDocument LoadScene(const RenderOptions& options, Request& request)
{
    SceneDocument document = SceneDocument::Load(options.sceneFile, FontProgress(), options.open);
    document.CheckLevels();
    TellMissingParts(document, {MissingKind::Picture, MissingKind::Font, MissingKind::Letter},
                     options.strictness);
    SceneObject& scene = *document.scene;
    ViewObject& view = *document.view;
    if (const std::optional<Size> framed = FramedSize(view))
    {
        // A view that was just read has the right aspect ratio, but not yet its size in pixels.
        view.SetUnscaledSize(framed->width, framed->height);
    }
    if (!options.picture.size)
    {
        request.settings.size = UnaskedSize(view, options.sceneFile);
    }
    if (!options.view.empty())
    {
        TakeSavedView(document, options.view);
    }
    if (request.background)
    {
        SetBackground(scene, *request.background);
    }
    ChangeLights(scene, options.scene->Lights());
    if (options.outline)
    {
        SetDrawingMode(view, DrawingMode::Outline);
    }
    CheckPictures(scene);
    scene.CalculateBounds();
    if (request.camera)
    {
        FrameScene(view, *request.camera, request.settings.size);
    }
    return document;
}

void DrawDocument(const SceneDocument& document, PosterSettings settings, PosterTarget& target,
                  const CostWatch& watch, Strictness strictness)
{
    watch.LimitTime(settings.options);
    static const Cancellation interruption;
    SignalWhenInterrupted(EventOf(interruption));
    settings.options.cancellation = interruption;
    ProgressBar progress("Drawing");
    settings.options.progress = [&progress](double share) { progress.Show(share); };
    settings.options.warn = LostPictureTeller(document, strictness);
    ViewObject view(*document.view);
    SizeView(view, settings.size);
    DrawUncommittedPoster(view, settings, target);
}

void RenderWithin(const RenderOptions& options, const CostWatch& watch)
{
    // Check the options first, and then whether the files can be made: both checks are quick, while
    // building and drawing the scene may take long.
    Request request = CheckTogether(options);
    const auto saved = options.save.empty() ? nullptr : std::make_unique<OutputFile>(options.save);
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
            CheckPoster(request.settings);  // again, because the scene may have set the size
            target = MakeTarget(request.settings);
        }
        DrawDocument(document, request.settings, *target, watch, options.strictness);
    }
    if (!saved)
    {
        target->Output().Commit();
        return;
    }
    const std::string content = document.Bytes();
    saved->Write(content.data(), content.size());
    if (target == nullptr)
    {
        saved->Commit();
        return;
    }
    OutputFile::CommitAll({&target->Output(), saved.get()});
}

void Render(const RenderOptions& options)
{
    const CostWatch watch(options.costs);
    try
    {
        RenderWithin(options, watch);
    }
    catch (const LimitExceeded& error)
    {
        throw watch.Explain(error);
    }
}

/// Adds options to the command.
class Adder
{
public:
    explicit Adder(CLI::App& command) : command_(command) {}

    template <typename Value>
    CLI::Option* operator()(const char* name, Value& value, const std::string& type,
                            const std::string& description)
    {
        return command_.add_option(name, value, description)->option_text(type);
    }

    /// An option with named values, whose default is shown in the help text.
    template <typename Enum>
    CLI::Option* Choice(const char* name, Enum& value, const std::string& description)
    {
        const std::vector<std::string> names = NamesOf<Enum>();
        return (*this)(name, value, Alternatives(names) + " [" + NameOf(value) + "]", description)
            ->check(CLI::IsMember(names));
    }
    CLI::Option* Length(const char* name, double& value, double least, double most,
                        const std::string& description)
    {
        return (*this)(name, value, "D [" + NumberText(value) + "]", description)
            ->check(NumberBetween(least, most));
    }
    template <typename Value>
    CLI::Option* Colour(const char* name, Value& value, const std::string& type,
                        const std::string& description)
    {
        return (*this)(name, value, type, description)->check(ReadableBy(ParseColor));
    }

private:
    CLI::App& command_;
};

void AddTexts(CLI::App& command, RenderOptions& options)
{
    const int most = CLI::detail::expected_max_vector_size;
    // If an option allows extra arguments, CLI11 reads the text "[a,b]" as a list. So this option
    // expects the largest possible number of texts and allows no extra arguments. The test
    // TextThatLooksLikeAnythingElseIsText checks this.
    command
        .add_option(
            "TEXT", CLI::callback_t([&options](const CLI::results_t& texts) {
                options.texts = texts;
                return true;
            }),
            "Each argument is a line, in UTF-8; put -- before\nlines that begin with a minus")
        ->expected(most, most)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->option_text("...");
}

void AddPicture(Adder& add, RenderOptions& o)
{
    const std::string size =
        std::to_string(defaultPictureSize.width) + "x" + std::to_string(defaultPictureSize.height);
    PictureOptions& picture = o.picture;
    add("-o,--output", o.output, "FILE",
        "The picture file, PNG or BMP by its name;\n- writes a PNG to standard output");
    add("--size", picture.size, "WxH [" + size + "]",
        "Width and height in pixels, each at most " + std::to_string(largestPictureSide))
        ->check(ReadableBy(ParseSize));
    add("--dpi", picture.dotsPerInch, "N", "Dots per inch, stored in the header of the file")
        ->check(IntegerBetween(1, 100000));
    add("--bits", picture.bits, "8|16|24|32 [" + std::to_string(picture.bits) + "]",
        "Bits per pixel of a BMP")
        ->check(CLI::IsMember({"8", "16", "24", "32"}));
    add("--samples", picture.samples, "N [" + std::to_string(picture.samples) + "]",
        "Samples per pixel in each direction, 1 to 4;\n0 chooses by the size")
        ->check(IntegerBetween(0, 4));
    add("--max-pixels", picture.maxPixels, "N",
        "Refuses a picture of more pixels, whether --size or\nthe scene asks for it")
        ->check(IntegerBetween(1, std::int64_t{largestPictureSide} * largestPictureSide));
}

std::vector<CLI::Option*> AddLook(Adder& add, TextOptions& text)
{
    return {
        add("--font", text.font, "NAME",
            "A full name as \"orvane fonts\" lists it [DejaVu Sans\nBold, or the first of some "
            "others]"),
        add.Choice("--style", text.edgeStyle, "How the edges of the letters are cut"),
        add.Length("--bevel", text.bevelWidth, 0, 100,
                   "Width of bevels and roundings in ems; at most the\n"
                   "depth, or half of it with bevels on both faces"),
        add.Choice("--bevel-on", text.bevelSides, "Which faces have bevels"),
        add.Length("--depth", text.depth, 0, 100, "Depth of the letters in ems"),
        add.Choice("--align", text.alignment, "How the lines are aligned"),
        add.Length("--char-spacing", text.characterSpacing, -100, 100,
                   "Space added between characters, in ems"),
        add.Length("--line-spacing", text.lineSpacing, -100, 100,
                   "Space added between lines, in ems"),
        add.Colour("--face-color", text.faceColor, "COLOR [" + ColorText(text.faceColor) + "]",
                   "Colour of the fronts and backs: a name (gold, navy,\n...), #rgb, #rrggbb or "
                   "#rrggbbaa"),
        add.Colour("--edge-color", text.edgeColor, "COLOR",
                   "Colour of the sides [half as bright as the face]"),
        add.Colour("--bevel-color", text.bevelColor, "COLOR",
                   "Colour of the bevels [lighter than the face]"),
    };
}

}  // namespace

void AddRenderCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("render", "Draw lines of text as solid letters, and meshes");
    const auto options = std::make_shared<RenderOptions>();
    RenderOptions& o = *options;
    Adder add(command);
    AddTexts(command, o);
    std::vector<CLI::Option*> ofText = {
        add("--text-file", o.textFile, "FILE", "Reads more lines, in UTF-8; they come after TEXT")};
    AddPicture(add, o);
    AddCostOptions(command, o.costs);
    AddOutlinesOption(command);
    add("--save", o.save, "FILE", "Saves the scene and its view in a file (.orv)");
    CLI::Option* const scene =
        add("--scene", o.sceneFile, "FILE",
            "Draws the scene in a file that --save has written,\ninstead of a text");
    add("--allow-folder", o.open.allowedFolders, "FOLDER",
        "The scene may show pictures from this folder too;\nmay be repeated")
        ->allow_extra_args(false)
        ->check(CLI::ExistingDirectory)
        ->needs(scene);
    command
        .add_flag("--trust", o.open.trust,
                  "The scene may show pictures from anywhere, not only\nfrom its own folder")
        ->needs(scene);
    AddStrictOption(command, o.strictness,
                    "Fails and writes nothing when a picture, a font or a\nletter is missing");
    CLI::Option* const view =
        add("--view", o.view, "NAME", "Draws the scene through a view that is saved in its\nfile")
            ->needs(scene);
    const std::vector<CLI::Option*> ofLook = AddLook(add, o.text);
    command.add_flag("--outline", o.outline, "Draws wires in the colour of the face, not solids");
    o.imports = std::make_unique<ImportOptions>(command);
    o.scene = std::make_unique<SceneOptions>(command);

    ofText.insert(ofText.end(), ofLook.begin(), ofLook.end());
    ofText.insert(ofText.end(), o.scene->ofTexture.begin(), o.scene->ofTexture.end());
    for (CLI::Option* const option : ofText)
    {
        option->excludes(scene);
    }
    for (CLI::Option* const option : o.scene->ofCamera)
    {
        option->excludes(view);
    }
    command.callback([options] { Render(*options); });
}

}  // namespace orvane
