// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

class OutputFile;
class SceneObject;
class ViewObject;

/// A scene and the camera that looks at it, as they are kept in a file (.orv).
///
/// The file is an archive: a reference to the SceneObject, one to the ViewObject, then a DWORD, the
/// code page that the texts are in. Files that end before it are in the process's code page.
class SceneDocument
{
public:
    /// An empty scene and a new camera.
    SceneDocument();
    ~SceneDocument();
    SceneDocument(SceneDocument&& other) noexcept;
    SceneDocument& operator=(SceneDocument&& other) noexcept;

    /// Reads a file: makes its code page the process's, fills the registry of fonts, loads both
    /// objects and attaches the scene to the view. Textures whose files are gone are looked for by
    /// their names beside the document; nodes lose those that are nowhere. Throws Failure, naming
    /// file, place, what was found and expected.
    static SceneDocument Load(const std::string& path);

    /// The bytes of the file.
    std::string Bytes() const;
    /// Writes and commits them. Throws Failure.
    void Save(OutputFile& file) const;

    std::string path;         ///< that it was loaded from; empty for a new one
    std::uint64_t bytes = 0;  ///< of that file
    /// How many records of each class and version were read from it, those of base classes and
    /// member objects included.
    std::map<std::pair<std::string, DWORD>, int> records;
    std::unique_ptr<SceneObject> scene;
    std::unique_ptr<ViewObject> view;  ///< looks at the scene
};
