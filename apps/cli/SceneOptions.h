// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/SceneBuilder.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
}  // namespace CLI

/// The options about what is around the text, as they are written.
struct SceneOptions
{
    std::optional<std::string> lightsFollow;
    std::optional<std::string> ambient;
    std::vector<std::string> lights;
    std::optional<std::string> lens;
    std::optional<std::string> fieldOfView;
    std::optional<std::string> turn;
    bool orthographic = false;
    std::optional<std::string> background;
    std::optional<std::string> placement;
    std::optional<std::string> backgroundAt;
    std::string texture;
    std::string textureQuality = "mipmap";
    std::string textureRepeat = "1";
    bool textureScales = false;
};

/// What they ask for; what is not asked for is not there.
struct SceneRequest
{
    LightLook lights;
    std::optional<CameraLook> camera;
    std::optional<BackgroundLook> background;
    std::optional<TextureLook> texture;
};

/// The options that only a new scene takes, and those that frame it anew.
struct SceneOptionGroups
{
    std::vector<CLI::Option*> texture;
    std::vector<CLI::Option*> camera;
};

/// \param options filled when the command line is parsed.
SceneOptionGroups AddSceneOptions(CLI::App& command, SceneOptions& options);

/// Throws UsageError, naming the option.
SceneRequest ParseSceneOptions(const SceneOptions& options);

/// A background of the colour that pictures have when none is asked for.
BackgroundLook DefaultBackground();
