// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Solid text and meshes in three dimensions, as documents: build a document, save it, open it
/// again, write a picture or a mesh file of it, draw it into a window, and find the letter or
/// triangle under a pixel.
///
///     orvane::Document document;
///     document.AddText("Hello");
///     orvane::WritePicture(document, "hello.png");
///
/// Strings are UTF-8. A failed call throws an Error and leaves the document as it was. When there
/// is too little memory, it throws std::bad_alloc instead, and when the system has no more files or
/// threads for the process, std::system_error. A document and its nodes are used by one thread at a
/// time, and only one thread at a time may use documents that have texts, because texts share their
/// fonts. Outside of the namespace `orvane` this header adds no names except macros that begin with
/// ORVANE_.

#include "orvane/Error.h"
#include "orvane/Options.h"
#include "orvane/version.h"

#include <memory>
#include <string>
#include <vector>

namespace orvane
{

struct DocumentState;

enum class NodeKind
{
    Text,
    Mesh,
    Group,  ///< has children but draws nothing itself: an imported file, for example
    Other,
    Outlines  ///< solids made of the areas of an SVG file
};

/// A box with edges along the axes.
struct Box
{
    Vector3 minimum;
    Vector3 maximum;
};

/// Names a node of a document: a text, a mesh or a group of nodes. Handles can be copied freely. A
/// handle does not keep its node alive: when the node has been removed or the document no longer
/// exists, IsValid() is false and every other call throws an Error.
class ORVANE_API Node
{
public:
    /// Makes a handle that names no node: IsValid() is false.
    Node();
    ~Node();
    Node(const Node&);
    Node& operator=(const Node&);

    bool IsValid() const;
    NodeKind Kind() const;
    /// The characters of a text, whose lines end with "\n"; empty for other nodes.
    std::string Text() const;
    /// The name that a mesh has in its file, or the name of the SVG file that outlines come from,
    /// as it was given; empty for other nodes.
    std::string Name() const;
    /// The way from the scene down to the node: the index of a child on each level. {0, 2, 1} is
    /// child 1 of child 2 of the scene's child 0; the tool `orvane` writes this path as "0.2.1".
    std::vector<int> Path() const;
    std::vector<Node> Children() const;

    /// The box around the node, in the coordinates of the node's parent.
    Box Bounds() const;
    /// The middle of the bounds.
    Vector3 Position() const;
    /// Moves the middle of the bounds to a place.
    void MoveTo(const Vector3& place);
    void Move(const Vector3& by);
    /// Turns the node about the middle of its bounds, right-handed. The axis is in the coordinates
    /// of the node's parent.
    void Turn(double degrees, const Vector3& axis);
    /// Scales the node about the middle of its bounds. A factor of 0 is an Error.
    void Scale(double factor);
    /// Takes the node out of its document and deletes it, with all nodes below it.
    void Remove();

    ORVANE_API friend bool operator==(const Node& a, const Node& b);
    ORVANE_API friend bool operator!=(const Node& a, const Node& b);

private:
    friend class Document;
    friend struct DocumentState;

    Node(const std::shared_ptr<DocumentState>& state, unsigned number);

    std::weak_ptr<DocumentState> state_;
    unsigned number_ = 0;  ///< of the node in the document's list of handles
};

enum class HitKind
{
    Letter,
    Triangle,  ///< of a mesh
    Node,      ///< a node as a whole, which shows no letters or triangles, such as a box
    Light,     ///< found only when the document shows its lights
    Area       ///< of an SVG file: the solid of one colour
};

enum class LetterPart
{
    Face,
    Edge,
    Bevel,
    Outline  ///< when the document is drawn as outlines
};

/// Something that lies under a pixel.
struct Hit
{
    HitKind kind = HitKind::Node;
    Node node;  ///< IsValid() is false for a light
    /// The index of the letter in Text(), counted in characters; of the triangle in the mesh; of
    /// the light; or of the area, in the order of the colours in the file. 0 for a node as a whole.
    int index = 0;
    std::string letter;                  ///< in UTF-8; empty unless the hit is a letter
    LetterPart part = LetterPart::Face;  ///< of a letter or an area
    double depth = 0;  ///< of the nearest point: 0 at the near clipping plane, 1 at the far one
};

/// What Document::AddOutlines has added.
struct AddedOutlines
{
    Node node;
    /// What the file has and the document does not show as other programs do: each kind once, with
    /// the file and the line where it is first met.
    std::vector<std::string> notices;
};

/// A scene of texts, outlines and meshes with its lights, its background and its camera.
///
/// A new document is empty, with the lights and the background of the default options. The camera
/// of a document that was never framed is placed for each picture so that everything is seen;
/// Frame() places it once and for all.
class ORVANE_API Document
{
public:
    Document();
    ~Document();
    Document(Document&& other) noexcept;
    Document& operator=(Document&& other) noexcept;

    /// Reads a scene file (.orv). The options say from which folders the scene may show pictures.
    /// A picture that is missing or not allowed is left out; see MissingPictures, and see
    /// PictureOptions::warn for a picture that goes missing later. A scene whose nodes nest deeper
    /// than limits::maxDrawnLevels is opened, but to draw it or to pick in it is an Error.
    static Document Open(const std::string& path, const OpenOptions& options = {});
    /// Writes a scene file, which appears under its name only when it is complete.
    void Save(const std::string& path);
    /// The pictures that the file named when it was opened and that the document does not show,
    /// each once. Save() writes their names again.
    const std::vector<MissingPicture>& MissingPictures() const;
    /// The fonts that the file named when it was opened and that are not installed, each once. When
    /// no font is installed at all, the texts are not drawn. Save() writes their names again.
    const std::vector<MissingFont>& MissingFonts() const;
    /// The letters of the document's texts that are left out of pictures, because their outlines
    /// cannot be read: each letter once for each font.
    std::vector<MissingLetter> MissingLetters() const;
    /// The file that the document was read from or saved to last; empty when there is none.
    const std::string& Path() const;

    /// Adds lines of text, which are separated by "\n", "\r\n" or "\r". A tab becomes four spaces.
    /// The text stands around the origin.
    ///
    /// All texts of a document together must fit into one of six code pages: western, central
    /// European, Baltic, Turkish, Cyrillic or Greek. The font must have all characters.
    Node AddText(const std::string& text, const TextOptions& options = {});
    /// Adds the meshes of a 3D Studio file (.3ds) with their materials.
    Node AddMesh(const std::string& path, const MeshOptions& options = {});
    /// Adds the areas of an SVG file as solids, one for each colour. The node keeps the areas, so
    /// that a saved document does not need the file.
    [[nodiscard]] AddedOutlines AddOutlines(const std::string& path,
                                            const OutlineOptions& options = {});
    /// The nodes that stand directly in the scene.
    std::vector<Node> Nodes() const;

    void SetBackground(const BackgroundOptions& options);
    void ChangeLights(const LightOptions& options);
    DrawingMode GetDrawingMode() const;
    void SetDrawingMode(DrawingMode mode);

    /// Points the camera at the scene. In a picture of that size, the scene is then in the middle
    /// and as large as possible, while at least 8 % of the width or height stays free on each side.
    /// If the scene shows nothing, the camera is turned and stands at the origin.
    void Frame(const Size& size, const CameraOptions& options = {});
    /// The size of the picture that the document was framed for. Has no value if the document was
    /// never framed.
    std::optional<Size> FramedSize() const;

    /// Saves the camera as a view with a name, and replaces an older view of that name. Save()
    /// writes the views into the scene file.
    void SaveView(const std::string& name);
    void RestoreView(const std::string& name);
    void DeleteView(const std::string& name);
    std::vector<std::string> ViewNames() const;

    /// Finds everything that lies under a pixel of a picture of that size, nearest first. The
    /// pixel's centre decides. If nothing lies there, anything that touches the pixel is reported.
    /// If nothing touches the pixel of a document that is drawn as outlines, outlines up to two
    /// pixels away are reported. The host's OpenGL context is current again afterwards.
    /// \param x, y in pixels from the left and the top; the upper left pixel is 0, 0
    std::vector<Hit> Pick(const Size& size, int x, int y) const;

private:
    friend struct DocumentState;

    explicit Document(std::shared_ptr<DocumentState> state);

    std::shared_ptr<DocumentState> state_;
};

/// Writes a picture of a document. The ending of the name, .png or .bmp, decides the format. The
/// file appears under its name only when it is complete. The memory that is needed does not grow
/// with the picture's height, because the picture is drawn in strips. No window is needed; the
/// host's OpenGL context is current again afterwards.
ORVANE_API void WritePicture(const Document& document, const std::string& path,
                             const PictureOptions& options = {});

/// Writes the triangles of a document's texts and meshes into a file for other programs: printers,
/// viewers, engines. The format follows from the ending of the name: .glb, .gltf, .stl, .3mf, .obj
/// or .ply. Files that belong to it, such as the materials of an .obj, are put beside it. The files
/// appear under their names together when they are complete. The path "-" is standard output,
/// which needs MeshFileOptions::format. glTF files also get the document's camera and lights.
ORVANE_API void WriteMesh(const Document& document, const std::string& path,
                          const MeshFileOptions& options = {});

/// Draws a document into the viewport of the current OpenGL context, which must have the
/// compatibility profile and a depth buffer. The colours and depths in the viewport are replaced;
/// afterwards OpenGL's state is the same as before. Throws an Error when no context is current,
/// when the current context cannot draw letters, or when the document has a background picture and
/// the context was made through neither EGL nor GLX.
ORVANE_API void Draw(const Document& document, const DrawOptions& options = {});

/// An installed font that letters can be made of.
struct FontInfo
{
    std::string name;  ///< the full name, as TextOptions::font takes it
    std::string family;
    std::string style;
    int weight = 0;  ///< 400 regular, 700 bold
    bool italic = false;
};

/// All installed fonts that letters can be made of, in the order of their names.
ORVANE_API std::vector<FontInfo> Fonts();

/// The font with a full name. Upper and lower case do not matter when only one font fits. The Error
/// for an unknown name suggests similar names.
ORVANE_API FontInfo FindFont(const std::string& name);

/// The font of a text whose options name no font: DejaVu Sans Bold, else Liberation Sans Bold, else
/// DejaVu Serif Bold, else the first installed font.
ORVANE_API FontInfo DefaultFont();

/// A colour as people write it: a name (navy, gold and others), #rgb, #rrggbb or #rrggbbaa.
ORVANE_API Color ParseColor(const std::string& text);

/// The colour as #rrggbb, or as #rrggbbaa when it is transparent.
ORVANE_API std::string ColorText(const Color& color);

}  // namespace orvane
