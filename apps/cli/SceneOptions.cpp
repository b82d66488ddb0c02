// SPDX-License-Identifier: MIT
#include "apps/cli/SceneOptions.h"

#include "apps/cli/Arguments.h"
#include "apps/cli/Colors.h"
#include "apps/cli/Errors.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace
{

constexpr int lastLight = 7;

// In the order of the values that the library has for them.
const std::vector<std::string> qualities = {"nearest", "linear", "mipmap"};
const std::vector<std::string> placements = {"stretch", "tile", "center"};
const std::vector<std::string> followed = {"scene", "camera"};

ColorVector ParseOpaqueColor(const std::string& option, const std::string& text)
{
    ColorVector color = ParseColor(option, text);
    if (color.alpha < 1)
    {
        throw UsageError(option + ": cannot be transparent, found \"" + text + "\"");
    }
    return color;
}

LightChange ParseLight(const std::string& text)
{
    const std::vector<std::string> parts = SplitAtCommas(text);
    if (parts.size() < 2 || parts.size() > 3 || (parts[1] != "on" && parts[1] != "off"))
    {
        throw UsageError("--light: expected INDEX,on|off[,COLOR], found \"" + text + "\"");
    }
    LightChange change;
    change.index = ParseInteger("--light", parts[0], 0, lastLight);
    change.on = parts[1] == "on";
    if (parts.size() == 3)
    {
        change.color = ParseOpaqueColor("--light", parts[2]);
    }
    return change;
}

LightLook ParseLights(const SceneOptions& options)
{
    LightLook look;
    if (options.lightsFollow)
    {
        look.followScene = *options.lightsFollow == followed[0];
    }
    if (options.ambient)
    {
        look.ambient = ParseOpaqueColor("--ambient", *options.ambient);
    }
    std::transform(options.lights.begin(), options.lights.end(), std::back_inserter(look.changes),
                   ParseLight);
    return look;
}

std::optional<CameraLook> ParseCamera(const SceneOptions& options)
{
    if (!options.lens && !options.fieldOfView && !options.turn && !options.orthographic)
    {
        return std::nullopt;
    }
    CameraLook look;
    if (options.lens)
    {
        look.lensLength = ParseNumber("--lens", *options.lens, 1, 10000);
    }
    if (options.fieldOfView)
    {
        look.fieldOfView = ParseNumber("--fov", *options.fieldOfView, 0.1, 170);
    }
    if (options.turn)
    {
        const std::vector<double> angles =
            ParseNumbers("--turn", *options.turn, 3, "three angles in degrees as X,Y,Z");
        std::copy(angles.begin(), angles.end(), look.turn.begin());
    }
    look.orthographic = options.orthographic;
    return look;
}

std::optional<BackgroundLook> ParseBackground(const SceneOptions& options)
{
    const bool isPicture = options.background && HasEnding(*options.background, ".bmp");
    if (!isPicture && (options.placement || options.backgroundAt))
    {
        throw UsageError(
            std::string(options.placement ? "--background-placement" : "--background-at") +
            ": only a picture has one: --background FILE.bmp");
    }
    if (!options.background)
    {
        return std::nullopt;
    }
    BackgroundLook look = DefaultBackground();
    if (!isPicture)
    {
        look.color = ParseOpaqueColor("--background", *options.background);
        return look;
    }
    look.file = *options.background;
    if (options.placement)
    {
        look.placement = IndexOf(placements, *options.placement);
    }
    if (options.backgroundAt)
    {
        const std::vector<double> at = ParseNumbers("--background-at", *options.backgroundAt, 2,
                                                    "two places in pixels as X,Y");
        look.x = at[0];
        look.y = at[1];
    }
    return look;
}

std::optional<TextureLook> ParseTexture(const SceneOptions& options)
{
    TextureLook look;
    look.file = options.texture;
    look.quality = IndexOf(qualities, options.textureQuality);
    look.repeat = ParseNumber("--texture-repeat", options.textureRepeat, 0.001, 1000);
    look.scales = options.textureScales;
    return look.file.empty() ? std::nullopt : std::optional(look);
}

}  // namespace

BackgroundLook DefaultBackground()
{
    BackgroundLook look;
    look.color = ParseColor("--background", defaultBackground);
    return look;
}

SceneOptionGroups AddSceneOptions(CLI::App& command, SceneOptions& o)
{
    const auto option = [&command](const char* name, auto& value, const char* type,
                                   const char* description) {
        return command.add_option(name, value, description)->option_text(type);
    };
    SceneOptionGroups groups;
    option("--background", o.background, "COLOR|FILE",
           "What is behind the text, a colour or a .bmp picture\n[#141a2b]");
    option("--background-placement", o.placement, "PLACE",
           "How a picture lies there: stretch (from its place to\n"
           "the far corner), tile, center [stretch]")
        ->check(CLI::IsMember(placements));
    option("--background-at", o.backgroundAt, "X,Y", "The picture's place, in pixels [0,0]");

    groups.texture = {
        option("--texture", o.texture, "FILE", "A .bmp picture laid on the letters"),
        option("--texture-quality", o.textureQuality, "nearest|linear|mipmap [mipmap]",
               "How its pixels are mixed")
            ->check(CLI::IsMember(qualities)),
        option("--texture-repeat", o.textureRepeat, "N [1]", "How often it lies across an em"),
        command.add_flag("--texture-scales", o.textureScales,
                         "It is scaled with the text instead of keeping its size"),
    };

    option("--lights-follow", o.lightsFollow, "scene|camera [camera]", "What the lights turn with")
        ->check(CLI::IsMember(followed));
    option("--ambient", o.ambient, "COLOR", "The light that comes from everywhere [#575961]");
    option("--light", o.lights, "INDEX,on|off[,COLOR]",
           "Switches or colours a light, 0 to 7; may be repeated.\n"
           "1 and 7 are on, the others stand around the text")
        ->allow_extra_args(false);

    groups.camera = {
        option("--turn", o.turn, "X,Y,Z [10,22,0]",
               "Degrees about each axis: z first, then y, then x"),
        option("--lens", o.lens, "MM", "The camera's lens, for film of 35 mm [99]"),
        option("--fov", o.fieldOfView, "DEG", "Its field of view instead, vertical [20]"),
        command.add_flag("--ortho", o.orthographic, "Without perspective"),
    };
    groups.camera[1]->excludes(groups.camera[2]);
    return groups;
}

SceneRequest ParseSceneOptions(const SceneOptions& options)
{
    return {ParseLights(options), ParseCamera(options), ParseBackground(options),
            ParseTexture(options)};
}
