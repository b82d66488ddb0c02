// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Values and options. Every option has a default: `TextOptions()` is a complete description of a
/// text's look. EdgeStyle, BevelSides and Alignment are in extrude/EdgeStyle.h; TextureQuality and
/// BackgroundPlacement are in imaging/TextureSettings.h.

#include "extrude/EdgeStyle.h"
#include "imaging/TextureSettings.h"
#include "platform/Export.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane
{

/// Each part is between 0 and 1. An alpha below 1 is transparent.
struct Color
{
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 1;
};

/// The opaque colour 0xRRGGBB.
constexpr Color Rgb(unsigned rgb)
{
    return {static_cast<float>(rgb >> 16 & 0xFF) / 255.0f,
            static_cast<float>(rgb >> 8 & 0xFF) / 255.0f, static_cast<float>(rgb & 0xFF) / 255.0f,
            1};
}

/// Pixels.
struct Size
{
    int width = 0;
    int height = 0;
};

/// A point or a direction: x points right, y up and z towards the viewer. The unit is the em, which
/// is the size of a font: capital letters are about 0.7 em high.
struct Vector3
{
    double x = 0;
    double y = 0;
    double z = 0;
};

/// What a document's nodes are drawn as.
enum class DrawingMode
{
    Solid,
    Outline,  ///< wires in the colour of the letters' faces
    Boxes     ///< the box around each node
};

/// What the lights turn with.
enum class LightsFollow
{
    Scene,
    Camera
};

/// A picture that is laid on a text.
struct TextureOptions
{
    std::string file;  ///< a BMP file
    TextureQuality quality = TextureQuality::Mipmap;
    double repeat = 1;            ///< how often the picture lies across an em: 0.001 to 1000
    bool scalesWithText = false;  ///< or else it keeps its size when the text is scaled
};

/// How a text looks. Lengths are in ems.
struct TextOptions
{
    /// A full name as Fonts() lists it; without it, the default font.
    std::optional<std::string> font;
    EdgeStyle edgeStyle = EdgeStyle::Bevel;
    /// Of bevels and roundings: 0 to 100. What is drawn is at most the depth, or half of it when
    /// both faces have bevels.
    double bevelWidth = 0.035;
    BevelSides bevelSides = BevelSides::Both;
    double depth = 0.3;  ///< 0 to 100
    Alignment alignment = Alignment::Center;
    double characterSpacing = 0;  ///< added between characters: -100 to 100
    double lineSpacing = 0;       ///< added between lines: -100 to 100
    Color faceColor = Rgb(0xF2B333);
    std::optional<Color> edgeColor;   ///< of the sides; without it, half as bright as the face
    std::optional<Color> bevelColor;  ///< without it, lighter than the face
    std::optional<TextureOptions> texture;
};

/// How the meshes of a 3D Studio file stand in a scene.
struct MeshOptions
{
    /// Where the middle of their box is, in ems; without it, right of everything in the scene.
    std::optional<Vector3> at;
    double size = 2;  ///< of the box's longest edge, in ems; 0 keeps the units of the file
    Vector3 turn;     ///< degrees about each axis: first about z, then y, then x
    /// Called with the damage when a part of the file could not be read. The other parts are in the
    /// scene then. When it is empty, a damaged file is an Error.
    std::function<void(const std::string& damage)> warn;
};

/// Where the camera looks from, and its lens.
struct CameraOptions
{
    Vector3 turn{10, 22, 0};  ///< of the scene, degrees about each axis: first z, then y, then x
    double fieldOfView = 20;  ///< vertical, degrees: 0.1 to 170
    /// In millimetres for film of 35 mm, 1 to 10000. It takes the place of the field of view.
    std::optional<double> lensLength;
    bool orthographic = false;  ///< without perspective
};

/// A change to one of a scene's lights.
struct LightChange
{
    int index = 0;  ///< 0 to 7
    bool on = true;
    std::optional<Color> color;  ///< without it, the light keeps its colour
};

/// Changes to a scene's lights. What is not given stays as it is.
///
/// In a new document light 1 shines from over the camera's left shoulder and light 7, weaker, from
/// its right. The others are off; they stand in a ring around the scene, 30 degrees above it:
/// 0 in front, then every 45 degrees to the right.
struct LightOptions
{
    std::optional<LightsFollow> follow;
    std::optional<Color> ambient;  ///< the light that comes from everywhere
    std::vector<LightChange> changes;
};

/// What is behind a scene: a colour, or a picture when a file is given.
struct BackgroundOptions
{
    Color color = Rgb(0x141A2B);
    std::string file;  ///< a BMP file, or empty
    BackgroundPlacement placement = BackgroundPlacement::Stretch;
    double x = 0;  ///< where a stretched or tiled picture begins, in pixels from the left
    double y = 0;  ///< the same from the top
};

/// Stops a drawing from another thread. Copies stop the same drawing.
class ORVANE_API Cancellation
{
public:
    Cancellation();
    ~Cancellation();
    Cancellation(const Cancellation&);
    Cancellation& operator=(const Cancellation&);

    /// The drawing ends within the time that one letter takes, by throwing Cancelled.
    void Cancel();
    bool IsCancelled() const;

private:
    friend void* EventOf(const Cancellation& cancellation);

    std::shared_ptr<void> event_;
};

/// Pixels, in each direction.
constexpr int largestPictureSide = 100000;

/// The size of a picture when neither the options nor the document say it.
constexpr Size defaultPictureSize{1280, 720};

/// How a picture file is made.
struct PictureOptions
{
    /// Each side is 1 to largestPictureSide. Without it the picture has the size that the document
    /// was framed for, or defaultPictureSize.
    std::optional<Size> size;
    /// Per pixel. A PNG has 24; a BMP has 8, 16, 24 or 32. 8 and 16 bits are dithered.
    int bits = 24;
    int dotsPerInch = 0;  ///< for the file's header; 0 for no such entry
    /// Per pixel in each direction, 1 to 4. 0 chooses: 4 up to 4 megapixels, 2 up to 32 megapixels,
    /// else 1. Pictures of 8 and 16 bits always have 1.
    int samples = 0;
    /// Called now and then on the calling thread with the share that is done, 0 to 1.
    std::function<void(double share)> progress;
    std::optional<Cancellation> cancellation;
};

/// How a document is drawn into the current OpenGL context.
struct DrawOptions
{
    /// Of the picture, whose lower left corner is that of the viewport. Without it the picture
    /// fills the viewport.
    std::optional<Size> size;
};

}  // namespace orvane
