// SPDX-License-Identifier: MIT
#pragma once

#include "material/ColorVector.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class DrawingObject;
class SceneObject;
class ViewObject;

/// A change to a light of the scene's pool.
struct LightChange
{
    int index = 0;
    bool on = true;
    std::optional<ColorVector> color;  ///< as it was when not given
};

/// What is asked of the lights; what is not given stays.
struct LightLook
{
    std::optional<bool> followScene;  ///< else they stay with the camera
    std::optional<ColorVector> ambient;
    std::vector<LightChange> changes;
};

/// A picture laid on a node.
struct TextureLook
{
    std::string file;  ///< a BMP
    int quality = 2;   ///< 0 nearest, 1 linear, 2 mipmapped
    double repeat = 1;
    bool scales = false;  ///< with the node, instead of keeping its size
};

/// What is behind the scene: a picture when a file is given, else a colour.
struct BackgroundLook
{
    ColorVector color;
    std::string file;
    int placement = 0;  ///< of the picture: 0 stretch, 1 tile, 2 centre
    double x = 0;       ///< where it begins, pixels
    double y = 0;
};

/// Where the camera looks from, and its lens.
struct CameraLook
{
    std::array<double, 3> turn = {10, 22, 0};  ///< of the scene, degrees about x, y, z
    double fieldOfView = 20;  ///< degrees, vertical: long enough a lens to keep letters calm
    std::optional<double> lensLength;  ///< millimetres, in place of the field of view
    bool orthographic = false;
};

/// Puts a node into the scene, as it is placed. Everything that a scene is made of comes this way.
/// Returns the node, the scene's now.
DrawingObject& AddNode(SceneObject& scene, std::unique_ptr<DrawingObject> node);

/// Two lights over the camera's shoulders, with which every new scene begins: a warm, strong one
/// from the upper left (number 1) and a cool, weak one from the right (number 7) that keeps the
/// shaded sides readable. The others stand around the scene, every 45 degrees, switched off.
void SetFirstLights(SceneObject& scene);
void ChangeLights(SceneObject& scene, const LightLook& look);

/// Throws Failure when the file is no BMP.
void SetTexture(DrawingObject& node, const TextureLook& look);
void SetBackground(SceneObject& scene, const BackgroundLook& look);

/// Throws Failure when a picture that the scene shows is not there.
void CheckTextures(SceneObject& scene);

/// Points the camera at the scene, which then fills a picture of that size but for a margin.
void FrameScene(ViewObject& view, const CameraLook& look, int width, int height);

/// Gives the view a picture's size. It shows what it showed: a picture narrower than the one that
/// it was framed for shows the same width, a wider one the same height.
void SizeView(ViewObject& view, int width, int height);

/// The size of the picture that the view was framed for; {0, 0} when there was none.
std::array<int, 2> FramedSize(const ViewObject& view);
