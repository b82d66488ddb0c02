// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Values and options. Every option has a default, so `TextOptions()` describes the look of a text
/// completely. EdgeStyle, BevelSides and Alignment are in extrude/EdgeStyle.h; TextureQuality and
/// BackgroundPlacement are in imaging/TextureSettings.h.

#include "extrude/EdgeStyle.h"
#include "imaging/TextureSettings.h"
#include "platform/Export.h"
#include "platform/Limits.h"
#include "studio/StudioOptions.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane
{

/// Each component is between 0 and 1. A colour with an alpha below 1 is transparent.
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

/// A width and a height in pixels.
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

/// How the nodes of a document are drawn.
enum class DrawingMode
{
    Solid,
    Outline,  ///< wires in the colour of the letters' faces
    Boxes     ///< the box around each node
};

/// Whether the lights turn with the scene or with the camera.
enum class LightsFollow
{
    Scene,
    Camera
};

/// A picture that is laid on a text.
struct TextureOptions
{
    std::string file;  ///< a BMP, PNG, JPEG, WebP or TIFF file
    TextureQuality quality = TextureQuality::Mipmap;
    double repeat = 1;            ///< how often the picture repeats in one em: 0.001 to 1000
    bool scalesWithText = false;  ///< if false, scaling the text keeps the picture's size
};

/// How a text looks. Lengths are in ems.
struct TextOptions
{
    /// The full name of a font, as Fonts() lists it. If it is not set, the default font is used.
    std::optional<std::string> font;
    EdgeStyle edgeStyle = EdgeStyle::Bevel;
    /// The width of bevels and roundings: 0 to 100. The drawn width is limited to the depth, or to
    /// half the depth when both faces have bevels.
    double bevelWidth = 0.035;
    BevelSides bevelSides = BevelSides::Both;
    /// If it is set, the letters are closed solids whose edges have this profile, and edgeStyle is
    /// ignored. Either a name, which may be followed by the width if it is not bevelWidth:
    /// "chamfer", "round", "cove", "step", "ogee", "chisel", "cove -0.03". A profile of a positive
    /// width lies outside of the letter's outline, one of a negative width inside. Or offsets and
    /// heights of the profile's steps, from the face on: "0,0 0.02,-0.01 0.04,-0.04".
    std::optional<std::string> profile;
    /// Of a text with a profile: which letters are joined before their edges are cut.
    LetterFusion fusion = LetterFusion::Separate;
    double depth = 0.3;  ///< from the front face to the back face: 0 to 100
    Alignment alignment = Alignment::Center;
    double characterSpacing = 0;  ///< added between characters: -100 to 100
    double lineSpacing = 0;       ///< added between lines: -100 to 100
    Color faceColor = Rgb(0xF2B333);
    std::optional<Color> edgeColor;   ///< of the sides; if not set, half as bright as the face
    std::optional<Color> bevelColor;  ///< if not set, lighter than the face
    /// Materials by name, built in ("gold", "glass") or saved in the profile, in place of the
    /// colours. Sides and bevels without a material and without a colour have that of the face.
    std::optional<std::string> faceMaterial;
    std::optional<std::string> edgeMaterial;
    std::optional<std::string> bevelMaterial;
    std::optional<TextureOptions> texture;
};

/// How the areas of an SVG file become solids: one for each colour, with a material of that colour.
/// Lengths are in ems.
struct OutlineOptions
{
    /// The width or the height of all that the file draws, 0.001 to 1000; not both. If neither is
    /// set, the height of the file's viewBox is 1.
    std::optional<double> width;
    std::optional<double> height;
    double depth = 0.3;  ///< from the front face to the back face: 0.000001 to 100
    /// The cross section of the edges, as in TextOptions::profile. If it is not set, the walls are
    /// plain. Solids of neighbouring colours overlap where a profile reaches out of the outline.
    std::optional<std::string> profile;
    /// The width of a profile that is named without one; negative inside of the outline.
    double profileWidth = -0.02;
    BevelSides profileSides = BevelSides::Both;  ///< the faces that have the profile
    /// The place for the middle of what the file draws. If it is not set, it stands to the right of
    /// everything that is in the scene already; in an empty scene, around the origin.
    std::optional<Vector3> at;
    Alignment alignment = Alignment::Center;  ///< how it stands at the origin of its node
    std::optional<TextureOptions> texture;
    /// What the colour currentColor of SVG means where the file does not say.
    Color currentColor = Rgb(0xF2B333);
    /// How far straight lines may deviate from the curves that they stand for: 0.000001 to 0.1,
    /// where the height of the viewBox is 1.
    double tolerance = 0.0002;
};

/// How the meshes of a 3D Studio file stand in a scene.
struct MeshOptions
{
    /// The place for the middle of the box around the meshes, in ems. If it is not set, the meshes
    /// stand to the right of everything in the scene.
    std::optional<Vector3> at;
    /// The length of the box's longest edge in ems, 0 to 1000000. 0 keeps the units of the file.
    double size = 2;
    Vector3 turn;  ///< degrees about each axis: first about z, then y, then x
    /// Called with a description of the damage when a part of the file could not be read. The
    /// readable parts are still added to the scene. If no function is set, a damaged file is an
    /// Error.
    std::function<void(const std::string& damage)> warn;
};

/// The direction from which the camera looks at the scene, and the camera's lens.
struct CameraOptions
{
    Vector3 turn{10, 22, 0};  ///< of the scene, degrees about each axis: first z, then y, then x
    double fieldOfView = 20;  ///< vertical, degrees: 0.1 to 170
    /// The length of the lens in millimetres, for film of 35 mm: 1 to 10000. If it is set,
    /// fieldOfView is ignored.
    std::optional<double> lensLength;
    bool orthographic = false;  ///< without perspective
};

/// A change to one of a scene's lights.
struct LightChange
{
    int index = 0;  ///< 0 to 7
    bool on = true;
    std::optional<Color> color;  ///< if not set, the light keeps its colour
};

/// Changes to a scene's lights. Fields that are not set change nothing.
///
/// In a new document light 1 shines from over the camera's left shoulder, and light 7, which is
/// weaker, from the camera's right. The other lights are off. They stand in a ring around the scene
/// and 30 degrees above it: light 0 is in front, and each further number is 45 degrees further to
/// the right.
struct LightOptions
{
    std::optional<LightsFollow> follow;
    std::optional<Color> ambient;  ///< the light that comes from everywhere
    std::vector<LightChange> changes;
};

/// The background of a scene: a colour, or a picture if a file is named.
struct BackgroundOptions
{
    Color color = Rgb(0x141A2B);
    std::string file;  ///< a BMP, PNG, JPEG, WebP or TIFF file, or empty
    BackgroundPlacement placement = BackgroundPlacement::Stretch;
    double x = 0;  ///< left edge of a stretched or tiled picture, in pixels from the left
    double y = 0;  ///< its upper edge, in pixels from the top
};

/// Stops a drawing from another thread. Copies stop the same drawing.
class ORVANE_API Cancellation
{
public:
    Cancellation();
    ~Cancellation();
    Cancellation(const Cancellation&);
    Cancellation& operator=(const Cancellation&);

    /// Stops the drawing, which then throws Cancelled. Stopping takes no longer than drawing one
    /// letter.
    void Cancel();
    bool IsCancelled() const;

private:
    friend void* EventOf(const Cancellation& cancellation);

    std::shared_ptr<void> event_;
};

/// How a scene file is opened. A scene may come from anyone and name any file as a texture or as
/// its background picture. The scene shows only pictures that lie in the folder of the scene file,
/// in the allowed folders, or in folders inside of these; links are followed before that is
/// decided. A picture that lies elsewhere, or is gone, is looked for by its plain name in the
/// folder of the scene file and then in the allowed folders.
struct OpenOptions
{
    /// More folders from which the scene may show pictures. Each of them must exist.
    std::vector<std::string> allowedFolders;
    /// Whether the scene may show a picture from any place. Only for scenes whose author is known.
    bool trust = false;
};

/// A texture or background picture that a scene file names and that the scene does not show.
struct MissingPicture
{
    enum class Reason
    {
        NotFound,    ///< no file of that name is in a folder that OpenOptions allows
        NotAllowed,  ///< the name leads to a place that OpenOptions does not allow
        /// The document showed the picture, but its file could not be read completely while it was
        /// drawn.
        Unreadable
    };

    std::string file;  ///< as the scene names it
    Reason reason = Reason::NotFound;
};

/// A font that a scene file names and that is not installed.
struct MissingFont
{
    std::string name;  ///< the full name in the file
    std::string used;  ///< the font that the texts have instead; empty when no font is installed
};

/// A letter of a text that is left out of pictures, because its font's outline of the letter cannot
/// be read.
struct MissingLetter
{
    std::string font;    ///< the full name
    std::string letter;  ///< in UTF-8
};

/// Is told about a texture or background picture that is missing in a drawing, or in parts of it.
using MissingPictureFunction = std::function<void(const MissingPicture& picture)>;

/// The largest width and the largest height of a picture, in pixels.
constexpr int largestPictureSide = limits::maxPictureSide;

/// The size of a picture, in pixels, if neither the options nor the document give a size.
constexpr Size defaultPictureSize{1280, 720};

/// How a picture file is made.
struct PictureOptions
{
    /// Each side is 1 to largestPictureSide pixels. If no size is set, the picture has the size
    /// that the document was framed for; if the document was never framed, defaultPictureSize.
    std::optional<Size> size;
    /// Of a BMP, the bits per pixel: 8, 16, 24 or 32. BMPs of 8 and 16 bits are dithered. Of other
    /// formats, the bits of each channel: 8 or, in a PNG or TIFF, 16; 24 also means 8 there.
    int bits = 24;
    int dotsPerInch = 0;  ///< written into the file's header: 1 to 100000; 0 writes none
    /// If true, the background is left out of the picture: its pixels are transparent, and those
    /// at the edges of letters partly. For PNG, WebP and TIFF.
    bool transparent = false;
    /// Of a JPEG or a WebP, 1 to 100. A WebP of quality 100 is without loss.
    int quality = 90;
    /// A file with an ICC colour profile of an RGB, grey or CMYK device. The picture is converted
    /// to it, and the profile is stored in the picture; CMYK in TIFF and JPEG only. If it is empty,
    /// the picture is in sRGB. Not for BMP.
    std::string profile;
    /// Samples per pixel in each direction, 1 to 4. With 0 the size of the picture decides: 4
    /// samples up to 4 megapixels, 2 up to 32 megapixels, else 1. BMPs of 8 and 16 bits always have
    /// 1 sample per pixel; for them a larger number is an OptionError.
    int samples = 0;
    /// If it is set, solids are drawn with shaders: with materials and reflections. Needs
    /// OpenGL 3.0.
    std::optional<StudioOptions> studio;
    /// Called now and then, on the thread that called WritePicture, with the share of the picture
    /// that is done, 0 to 1.
    std::function<void(double share)> progress;
    std::optional<Cancellation> cancellation;
    /// Called, when the picture is drawn, for each texture or background picture whose file could
    /// not be read completely meanwhile. If no function is set, that is an Error, and no file
    /// appears.
    MissingPictureFunction warn;
    /// What the picture may cost, for hosts that draw scenes of strangers. A picture that costs
    /// more is LimitExceeded, and no file appears. Without a value there is no limit.
    std::optional<std::uint64_t> maxPixels;  ///< the width times the height, at least 1
    /// Seconds of drawing and writing, above 0. When they are over, stopping takes no longer than
    /// drawing one letter.
    std::optional<double> maxSeconds;
};

/// The formats of files with meshes. docs/exchange.md describes what each of them holds.
enum class MeshFormat
{
    Glb,      ///< glTF 2.0 in one binary file
    Gltf,     ///< glTF 2.0 in one text file
    Stl,      ///< binary STL: triangles only
    ThreeMf,  ///< 3MF, for printers
    Obj,      ///< Wavefront OBJ with its materials in a file beside it
    Ply       ///< binary PLY
};

/// The unit of length in a mesh file.
enum class LengthUnit
{
    Plain,  ///< numbers without a unit; metres where the format demands a unit
    Millimeter,
    Centimeter,
    Inch
};

/// The axis that points up in a mesh file.
enum class UpAxis
{
    Y,  ///< letters stand on the plane of x and z, and lie on their backs for a program with z up
    Z   ///< letters stand on the plane of x and y
};

/// How a mesh file is made.
struct MeshFileOptions
{
    /// If it is not set, the ending of the file's name decides: .glb, .gltf, .stl, .3mf, .obj or
    /// .ply.
    std::optional<MeshFormat> format;
    LengthUnit unit = LengthUnit::Plain;
    double em = 1;  ///< how large one em is, in units: 0.000001 to 1000000
    UpAxis up = UpAxis::Y;
    std::string name;  ///< of the whole, where the format holds one; in UTF-8
    /// Whether the file is to have closed meshes only. Texts with square, bevelled or rounded edges
    /// are then written with the profile of the same measures; the document does not change.
    bool solid = false;
    /// Called with a sentence about the edges that were replaced because of `solid`.
    std::function<void(const std::string& note)> note;
    /// Called with a sentence about meshes that are not closed, or letters without their profile,
    /// although `solid` is set. They are still written. If no function is set, they are an Error.
    std::function<void(const std::string& problem)> warn;
};

/// How a document is drawn into the current OpenGL context.
struct DrawOptions
{
    /// The size of the picture in pixels. The picture begins in the lower left corner of the
    /// viewport. If no size is set, the picture fills the viewport.
    std::optional<Size> size;
    std::optional<StudioOptions> studio;  ///< as in PictureOptions
    /// The same as PictureOptions::warn.
    MissingPictureFunction warn;
};

}  // namespace orvane
