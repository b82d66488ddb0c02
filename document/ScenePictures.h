// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "scene/TextureFinder.h"

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

class DrawingObject;
class SceneObject;

namespace orvane
{

/// Lays a picture on a node as its texture. Throws Error when the file is no readable picture.
ORVANE_API void SetTexture(DrawingObject& node, const TextureOptions& options);

/// Replaces the background of a scene. Throws Error when the file is no readable picture.
ORVANE_API void SetBackground(SceneObject& scene, const BackgroundOptions& options);

/// Whether a picture, and not only a colour, is behind the scene.
bool HasBackgroundPicture(const SceneObject& scene);

/// Throws Error when a picture that the scene shows cannot be read. The text of the Error quotes
/// nothing from a file that is not a picture, because the scene may name any file.
ORVANE_API void CheckPictures(SceneObject& scene);

/// Finds the files of the textures, the background and the fonts of a scene that is being loaded,
/// in the folder of the scene and in the folders that OpenOptions allows. Unless OpenOptions::trust
/// is set, no file outside of these folders is opened or looked at.
class PictureLookup : public TextureFinder
{
public:
    /// \param scene the scene file
    /// Throws OptionError when an allowed folder does not exist.
    PictureLookup(const std::string& scene, const OpenOptions& options);

    /// Gives the texture the file that it names, if that is allowed. Otherwise looks in the allowed
    /// folders for a file with the plain name of the named file, and then for a picture with the
    /// texture's name. If none exists, the texture keeps the name of its file without being Valid.
    void Find(TextureMap& texture) override;

    /// The named file if it is a regular one and allowed, or one with its plain name in the allowed
    /// folders.
    std::string FindFontFile(const std::string& name) override;

    const std::vector<MissingPicture>& Missing() const { return missing_; }

private:
    using Path = std::filesystem::path;

    struct Folder
    {
        Path path;       // absolute
        Path canonical;  // the same folder without symbolic links
        /// The pictures in the folder by their names without extension; read on first use.
        std::optional<std::map<std::string, Path>> pictures;
    };

    enum class Access
    {
        Allowed,
        NotFound,
        NotAllowed
    };

    void AddFolder(const Path& folder);
    Path Whole(const Path& path) const;
    Access AccessTo(const Path& path) const;
    bool IsTaken(TextureMap& texture, const Path& path, bool& isRefused) const;
    bool IsTakenFrom(Folder& folder, TextureMap& texture, const std::string& file,
                     bool& isRefused) const;

    std::vector<Folder> folders_;  // the folder of the scene, then the allowed ones
    bool trust_;
    std::vector<MissingPicture> missing_;
    std::set<std::string> missingNames_;
};

}  // namespace orvane
