// SPDX-License-Identifier: MIT
#include "apps/cli/commands/SceneOptions.h"

#include "apps/cli/Errors.h"
#include "apps/cli/commands/OptionValues.h"
#include "apps/cli/pictures/PictureFileOptions.h"
#include "document/SceneLights.h"
#include "geometry/ProjectionData.h"
#include "orvane/orvane.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>

namespace orvane
{

namespace
{

/// The lens whose field of view is the camera's default, in whole millimetres.
long DefaultLensLength()
{
    ProjectionData projection;
    projection.SetFieldOfViewAngle(CameraOptions().fieldOfView);
    return std::lround(projection.GetLensLength());
}

}  // namespace

SceneOptions::SceneOptions(CLI::App& command, SceneUse use)
{
    if (use == SceneUse::Picture)
    {
        AddBackground(command);
    }
    AddTexture(command);
    AddLights(command);
    AddCamera(command);
}

void SceneOptions::AddBackground(CLI::App& command)
{
    command
        .add_option("--background", backgroundText_,
                    "The background: a colour, a picture (BMP, PNG, JPEG,\nWebP or TIFF), or none "
                    "for a transparent picture\n[" +
                        ColorText(background_.color) + "]")
        ->option_text("COLOR|FILE|none")
        ->check(ReadableBy([](const std::string& text) {
            if (!IsNoBackground(text) && !NamesPicture(text))
            {
                ParseOpaqueColor(text);
            }
        }));
    placement_ = command
                     .add_option("--background-placement", background_.placement,
                                 "How a background picture lies: stretch (from its\n"
                                 "place to the lower right corner), tile, center [" +
                                     NameOf(background_.placement) + "]")
                     ->option_text("PLACE")
                     ->check(CLI::IsMember(NamesOf<BackgroundPlacement>()));
    fit_ = command
               .add_option_function<std::string>(
                   "--background-fit",
                   [this](const std::string& fit) { background_.placement = ParseFit(fit); },
                   "How a background picture fills the picture: cover\n(cut off), contain (with "
                   "free edges), stretch, tile")
               ->option_text("FIT")
               ->check(ReadableBy(ParseFit))
               ->excludes(placement_);
    place_ = command
                 .add_option_function<std::string>(
                     "--background-at",
                     [this](const std::string& text) {
                         const std::vector<double> at = ParsePair(text);
                         background_.x = at[0];
                         background_.y = at[1];
                     },
                     "The place of a background picture, in pixels\n[" + NumberText(background_.x) +
                         "," + NumberText(background_.y) + "]")
                 ->option_text("X,Y")
                 ->check(ReadableBy(ParsePair));
}

void SceneOptions::AddTexture(CLI::App& command)
{
    ofTexture = {
        command
            .add_option("--texture", texture_.file,
                        "Lays a picture on the letters: BMP, PNG, JPEG, WebP or\nTIFF")
            ->option_text("FILE"),
        command
            .add_option("--texture-quality", texture_.quality,
                        "How the pixels of the texture are mixed")
            ->option_text(Alternatives(NamesOf<TextureQuality>()) + " [" +
                          NameOf(texture_.quality) + "]")
            ->check(CLI::IsMember(NamesOf<TextureQuality>())),
        command
            .add_option("--texture-repeat", texture_.repeat,
                        "How often the texture lies across an em")
            ->option_text("N [" + NumberText(texture_.repeat) + "]")
            ->check(NumberBetween(0.001, 1000)),
        command.add_flag("--texture-scales", texture_.scalesWithText,
                         "The texture is scaled with the text"),
    };
}

void SceneOptions::AddLights(CLI::App& command)
{
    command
        .add_option("--lights-follow", lights_.follow,
                    "Whether the lights turn with the scene or stay with\nthe camera")
        ->option_text(Alternatives(NamesOf<LightsFollow>()) + " [" + NameOf(firstLightsFollow) +
                      "]")
        ->check(CLI::IsMember(NamesOf<LightsFollow>()));
    command
        .add_option("--ambient", lights_.ambient,
                    "The light that comes from everywhere [" + ColorText(firstAmbientColor) + "]")
        ->option_text("COLOR")
        ->check(ReadableBy(ParseOpaqueColor));
    command
        .add_option("--light", lights_.changes,
                    "Switches or colours a light, 0 to 7; may be repeated.\n"
                    "Lights 1 and 7 are on, the others stand around the\n"
                    "scene")
        ->option_text("INDEX,on|off[,COLOR]")
        ->allow_extra_args(false)
        ->check(ReadableBy(ParseLight));
}

void SceneOptions::AddCamera(CLI::App& command)
{
    const Vector3& turn = camera_.turn;
    ofCamera = {
        command
            .add_option("--turn", camera_.turn,
                        "How the scene is turned, in degrees about each axis:\nfirst about z, then "
                        "y, then x")
            ->option_text("X,Y,Z [" + NumberText(turn.x) + "," + NumberText(turn.y) + "," +
                          NumberText(turn.z) + "]")
            ->check(ReadableBy(ParseAngles)),
        command
            .add_option("--lens", camera_.lensLength,
                        "Focal length of the lens, for film of 35 mm [" +
                            std::to_string(DefaultLensLength()) + "]")
            ->option_text("MM")
            ->check(NumberBetween(1, 10000)),
        command
            .add_option("--fov", camera_.fieldOfView,
                        "Vertical field of view, in place of --lens [" +
                            NumberText(camera_.fieldOfView) + "]")
            ->option_text("DEG")
            ->check(NumberBetween(0.1, 170)),
        command.add_flag("--ortho", camera_.orthographic, "Draws without perspective"),
    };
    ofCamera[1]->excludes(ofCamera[2]);
}

std::optional<CameraOptions> SceneOptions::Camera() const
{
    const bool isGiven = std::any_of(ofCamera.begin(), ofCamera.end(),
                                     [](const CLI::Option* option) { return option->count() > 0; });
    return isGiven ? std::optional(camera_) : std::nullopt;
}

std::optional<BackgroundOptions> SceneOptions::Background() const
{
    const bool isPicture = backgroundText_ && NamesPicture(*backgroundText_);
    for (const CLI::Option* const option : {placement_, fit_, place_})
    {
        if (!isPicture && option != nullptr && option->count() > 0)
        {
            throw UsageError(option->get_name() +
                             ": a background picture is required (--background FILE)");
        }
    }
    if (!backgroundText_ || LeavesBackgroundOut())
    {
        return std::nullopt;
    }
    BackgroundOptions options = background_;
    if (isPicture)
    {
        options.file = *backgroundText_;
    }
    else
    {
        options.color = ParseOpaqueColor(*backgroundText_);
    }
    return options;
}

bool SceneOptions::LeavesBackgroundOut() const
{
    return backgroundText_ && IsNoBackground(*backgroundText_);
}

std::optional<TextureOptions> SceneOptions::Texture() const
{
    return texture_.file.empty() ? std::nullopt : std::optional(texture_);
}

}  // namespace orvane
