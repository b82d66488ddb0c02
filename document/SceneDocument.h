// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class DrawingObject;
class SceneObject;
class ViewObject;

namespace orvane
{

class OutputFile;
struct KeptFonts;

/// A scene and the camera that looks at it, as a file (.orv) holds them.
///
/// The file is an archive: a reference to the SceneObject, a reference to the ViewObject, and a
/// DWORD, the code page of the texts. The texts of a file without the DWORD are in the process's
/// code page. A file may also end after the SceneObject; its view is then framed for a picture of
/// defaultPictureSize.
class ORVANE_API SceneDocument
{
public:
    /// An empty scene and a new camera, for texts in the process's code page.
    SceneDocument();
    ~SceneDocument();
    SceneDocument(SceneDocument&& other) noexcept;
    SceneDocument& operator=(SceneDocument&& other) noexcept;

    /// Reads a file. Makes the file's code page the code page of the process, and loads the fonts.
    /// A picture that is missing or not allowed is left out, but keeps its name in the document.
    /// Throws Error when the file cannot be read, and when a text in it is longer than
    /// limits::maxTextBytes.
    /// \param progress called with a line about each font that is loaded; may be empty
    static SceneDocument Load(const std::string& path,
                              const std::function<void(const std::string&)>& progress = {},
                              const OpenOptions& options = {});

    /// How many levels of nodes are drawn, as limits::maxDrawnLevels counts them.
    int Levels() const;
    /// Throws Error when the nodes nest deeper than limits::maxDrawnLevels, so that they cannot be
    /// drawn.
    void CheckLevels() const;

    /// To be called before a node is deleted: forgets the fonts that the texts in the node and
    /// below it name and that are not installed.
    void ForgetFonts(const DrawingObject& node);

    /// The document as the bytes of a scene file. A text whose font is not installed is stored with
    /// the font that its file named, unless it was given another font.
    std::string Bytes() const;
    /// Writes the bytes and commits the file. Throws Error when it cannot.
    void Save(OutputFile& file) const;

    /// The path of the file that the document was loaded from or last saved to; may be empty.
    std::string path;
    std::uint64_t bytes = 0;  ///< the length of the file that the document was loaded from
    /// How many records of each class and version were read from the file, including the records of
    /// base classes and member objects.
    std::map<std::pair<std::string, DWORD>, int> records;
    std::vector<MissingPicture> missingPictures;  ///< each file once, in the order of the nodes
    std::vector<MissingFont> missingFonts;        ///< each name once, in the order of the nodes
    UINT codePage;                                ///< of the texts and names in the scene
    std::unique_ptr<SceneObject> scene;
    std::unique_ptr<ViewObject> view;  ///< attached to the scene

private:
    std::unique_ptr<KeptFonts> keptFonts_;
};

}  // namespace orvane
