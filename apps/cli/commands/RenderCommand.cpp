// SPDX-License-Identifier: MIT
#include "apps/cli/Errors.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/commands/Commands.h"
#include "apps/cli/commands/CostOptions.h"
#include "apps/cli/commands/OptionAdder.h"
#include "apps/cli/commands/OutlinesOption.h"
#include "apps/cli/commands/SceneSource.h"
#include "apps/cli/commands/StudioArguments.h"
#include "apps/cli/pictures/PictureFileOptions.h"
#include "document/Cancellation.h"
#include "document/OutputFile.h"
#include "document/PictureFormat.h"
#include "document/SceneFraming.h"
#include "document/poster/PosterTarget.h"
#include "orvane/orvane.h"
#include "platform/Process.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace orvane
{

namespace
{

/// The values of the options. CLI11 has checked each value by itself.
struct RenderOptions
{
    explicit RenderOptions(CLI::App& command) : source(command, SceneUse::Picture) {}

    SceneSource source;
    std::optional<std::string> output;
    std::string save;
    PictureOptions picture;
    CostLimits costs;
    StudioArguments studio;
    bool outline = false;
};

/// The picture and the scene that the command line asks for. CheckTogether makes a Request from the
/// options.
struct Request
{
    PosterSettings settings;
    SceneSource::Request scene;
};

Request CheckTogether(const RenderOptions& options)
{
    if (!options.output && options.save.empty())
    {
        throw UsageError("render: nothing to write; --output or --save is required");
    }
    Request request;
    request.scene = options.source.Check();
    if (!options.save.empty() && !HasExtension(options.save, ".orv"))
    {
        throw UsageError("--save: expected a name that ends in .orv, found \"" + options.save +
                         "\"");
    }
    request.settings.options = options.picture;
    request.settings.options.studio = options.studio.Check();
    request.settings.options.transparent = options.source.LeavesBackgroundOut();
    // A scene may have its own size, which is checked when the scene is open.
    const Size unasked = options.source.IsFile() ? Size{1, 1} : defaultPictureSize;
    request.settings.size = options.picture.size.value_or(unasked);
    if (options.output)
    {
        request.settings.output = *options.output;
        CheckPoster(request.settings);
    }
    return request;
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
    if (options.output && !options.source.IsFile())
    {
        target = MakeTarget(request.settings);
    }
    std::optional<Size> size = options.picture.size;
    const SceneDocument document = options.source.Make(request.scene, size, options.outline);
    request.settings.size = *size;
    if (options.output)
    {
        if (target == nullptr)
        {
            CheckPoster(request.settings);  // again, because the scene may have set the size
            target = MakeTarget(request.settings);
        }
        DrawDocument(document, request.settings, *target, watch, options.source.strictness);
    }
    options.source.TellUncutSolids(document);
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

void AddPicture(OptionAdder& add, RenderOptions& o)
{
    const std::string size =
        std::to_string(defaultPictureSize.width) + "x" + std::to_string(defaultPictureSize.height);
    PictureOptions& picture = o.picture;
    add("-o,--output", o.output, "FILE",
        "The picture file: .png, .bmp, .jpg, .webp or .tif;\n- writes a PNG to standard output");
    add("--size", picture.size, "WxH [" + size + "]",
        "Width and height in pixels, each at most " + std::to_string(largestPictureSide))
        ->check(ReadableBy(ParseSize));
    AddPictureFileOptions(add, picture);
    add("--samples", picture.samples, "N [" + std::to_string(picture.samples) + "]",
        "Samples per pixel in each direction, 1 to 4;\n0 chooses by the size")
        ->check(IntegerBetween(0, 4));
    add("--max-pixels", picture.maxPixels, "N",
        "Refuses a picture of more pixels, whether --size or\nthe scene asks for it")
        ->check(IntegerBetween(1, std::int64_t{largestPictureSide} * largestPictureSide));
}

}  // namespace

void AddRenderCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("render", "Draw lines of text as solid letters, and meshes");
    const auto options = std::make_shared<RenderOptions>(command);
    RenderOptions& o = *options;
    OptionAdder add(command);
    o.source.AddTexts();
    AddPicture(add, o);
    o.studio.AddTo(command);
    AddCostOptions(command, o.costs);
    AddOutlinesOption(command);
    add("--save", o.save, "FILE", "Saves the scene and its view in a file (.orv)");
    o.source.AddSceneFileAndLook();
    command.add_flag("--outline", o.outline, "Draws wires in the colour of the face, not solids");
    o.source.AddSurroundings();
    command.callback([options] { Render(*options); });
}

}  // namespace orvane
