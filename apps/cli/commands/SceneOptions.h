// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
}  // namespace CLI

namespace orvane
{

/// What a command makes of a scene.
enum class SceneUse
{
    Picture,
    Mesh  ///< a file that has no background
};

/// The options about everything around a text: its texture, the background, the lights and the
/// camera. Camera(), Background() and Texture() have a value only if one of their options was
/// given.
class SceneOptions
{
public:
    /// Adds the options to a command, which must live as long as this object.
    SceneOptions(CLI::App& command, SceneUse use);
    SceneOptions(const SceneOptions&) = delete;
    SceneOptions& operator=(const SceneOptions&) = delete;

    const LightOptions& Lights() const { return lights_; }
    std::optional<CameraOptions> Camera() const;
    /// Throws UsageError when an option about the background picture is given without a picture.
    std::optional<BackgroundOptions> Background() const;
    bool LeavesBackgroundOut() const;
    std::optional<TextureOptions> Texture() const;

    std::vector<CLI::Option*> ofTexture;  ///< allowed only for new scenes
    std::vector<CLI::Option*> ofCamera;   ///< any of these frames the scene anew

private:
    void AddBackground(CLI::App& command);
    void AddTexture(CLI::App& command);
    void AddLights(CLI::App& command);
    void AddCamera(CLI::App& command);

    LightOptions lights_;
    CameraOptions camera_;
    BackgroundOptions background_;
    TextureOptions texture_;
    std::optional<std::string> backgroundText_;  ///< a colour, a file, or "none"
    CLI::Option* placement_ = nullptr;
    CLI::Option* fit_ = nullptr;
    CLI::Option* place_ = nullptr;
};

}  // namespace orvane
